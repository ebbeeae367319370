#include "source_tool/manifest_rules.h"

#include <algorithm>
#include <map>
#include <string_view>
#include <utility>

#include "base/failure.h"
#include "base/file_name.h"
#include "base/text.h"
#include "catalog/kind_tables.h"
#include "catalog/manifest_file.h"
#include "catalog/package_digest.h"
#include "catalog/registry_files.h"
#include "catalog/version_rule.h"
#include "catalog/xml_file.h"
#include "install/component_record.h"
#include "source_tool/disk.h"

namespace kitbay::source_tool {
namespace {

using base::ComponentKind;

constexpr base::PerKind<const char*> kLibraryLists = {
    .addon = "dependencies", .transport = "filename", .channel = "dependencies"};

/// Collects the findings of one manifest.
class Findings {
 public:
  explicit Findings(const ManifestText& manifest) : manifest_(manifest) {}

  void Add(Rule rule, const pugi::xml_node& node, std::string what, std::string shows,
           std::string todo) {
    found_.push_back({.rule = rule,
                      .file = manifest_.file,
                      .place = manifest_.PlaceOf(node),
                      .what = std::move(what),
                      .shows = std::move(shows),
                      .todo = std::move(todo)});
  }
  std::vector<Finding> Take() { return std::move(found_); }

 private:
  const ManifestText& manifest_;
  std::vector<Finding> found_;
};

std::string Quoted(const std::string& text) { return "\"" + text + "\""; }

std::size_t PartsOf(const std::string& version) {
  return static_cast<std::size_t>(std::ranges::count(version, '.')) + 1;
}

// The child, or the entry itself if it has none.
pugi::xml_node ChildOr(const ManifestEntry& entry, const char* name) {
  const pugi::xml_node child = entry.node.child(name);
  return child ? child : entry.node;
}

void CheckId(const ManifestEntry& entry, Findings& findings) {
  const std::string id = entry.id();
  if (std::string_view(entry.node.first_attribute().name()) != "id") {
    findings.Add(Rule::kIdNotFirst, entry.node, "the id is not the first attribute",
                 "is offered the component as a new one although it is installed",
                 "put id before the other attributes");
  }
  if (!base::IsPlainLongName(id)) {
    findings.Add(
        Rule::kName, entry.node,
        "the id " + Quoted(id) + " is not a name that Windows keeps unchanged, or contains \"~\"",
        "clicks on the button, and nothing is downloaded",
        "choose another id: it names the package and the component's folder");
  }
}

void CheckName(const ManifestEntry& entry, Findings& findings) {
  const std::string name = entry.Text("name");
  if (base::ToLower(name) != base::ToLower(entry.id())) {
    findings.Add(Rule::kNameIsNotId, ChildOr(entry, "name"),
                 "the name " + Quoted(name) + " is not the id " + Quoted(entry.id()),
                 "clicks on Update, the main client closes, and nothing is downloaded",
                 "give name and id the same text (case does not matter): an update looks for an id "
                 "that equals the name in the row");
  }
  if (name.find("Version") != std::string::npos) {
    findings.Add(Rule::kVersionInName, ChildOr(entry, "name"),
                 "the name " + Quoted(name) + " contains \"Version\"",
                 "clicks on the button, and nothing is downloaded: the name in a row ends there",
                 "choose another name");
  }
}

void CheckVersion(const ManifestEntry& entry, Findings& findings) {
  constexpr std::size_t kLibraryParts = 4;
  const std::string version = entry.Text("version");
  if (entry.kind != ComponentKind::kChannel && PartsOf(version) < kLibraryParts) {
    findings.Add(Rule::kVersion, ChildOr(entry, "version"),
                 "the version " + Quoted(version) + " has fewer than the four parts of a library's",
                 "is offered no updates from this entry on: the manifest's list ends there",
                 "give it four parts");
  }
}

// "0.4.1.0", "1.0.0.0": nobody has an older version.
bool IsOfFirstRelease(const std::string& version) {
  return version.starts_with("0.") ||
         (version.starts_with("1.") && version.find_first_not_of(".0", 1) == std::string::npos);
}

bool IsSigned(const ManifestText& manifest) {
  try {
    return catalog::FindSignature(manifest.bytes).has_value();
  } catch (const base::Failure&) {
    return true;
  }
}

void CheckAnnounced(const ManifestText& manifest, const ManifestEntry& entry, Findings& findings) {
  const catalog::PackageDigest digest = catalog::ReadDigest(manifest.file, entry.node);
  if (!catalog::SizeIn(digest) || digest.sha256.empty()) {
    findings.Add(Rule::kDigest, entry.node, "the manifest is signed, and size or sha256 is missing",
                 "is told that the download is corrupt", "run kitbay-source add again, and sign");
  }
}

// A single library does not register itself: the component's own does.
void CheckLibraries(const ManifestEntry& entry, Findings& findings) {
  const std::string list = entry.Text(kLibraryLists[entry.kind]);
  const std::string own = entry.Text("filename");
  if (!list.empty() && list.find(',') == std::string::npos &&
      base::ToLower(list) != base::ToLower(own)) {
    findings.Add(Rule::kOneLibrary, ChildOr(entry, kLibraryLists[entry.kind]),
                 "the list of libraries is " + Quoted(list) + " alone",
                 own.empty() ? "installs the component, and no library registers itself"
                             : "installs the component, and " + own + " registers itself instead",
                 "name the component's own library as well, or only that");
  }
}

void CheckCategory(const ManifestEntry& entry, Findings& findings) {
  if (!entry.Text("category").empty()) {
    findings.Add(Rule::kCategory, ChildOr(entry, "category"),
                 "there is a category, " + Quoted(entry.Text("category")),
                 "finds no Remove button: the component belongs to the suite's core",
                 "leave the category empty, unless that is what you want");
  }
}

void CheckMissing(const ManifestEntry& entry, Findings& findings) {
  try {
    catalog::FirstAttributeText(entry.node);
    for (const char* listed : {"name", "url", "version", "description"}) {
      catalog::ChildText(entry.node, listed);
    }
    install::ReadRecord(entry.kind, entry.node);
    install::ReadLibraryList(entry.kind, entry.node);
  } catch (const base::Failure&) {
    findings.Add(Rule::kMissing, entry.node, "an element or attribute is missing",
                 "sees the list end before this entry, or downloads it and cannot install it",
                 "compare the entry with docs/schemas/manifest.xsd");
  }
}

void CheckEntry(const ManifestEntry& entry, Findings& findings) {
  CheckId(entry, findings);
  CheckName(entry, findings);
  CheckVersion(entry, findings);
  CheckLibraries(entry, findings);
  CheckCategory(entry, findings);
  CheckMissing(entry, findings);
}

}  // namespace

TextPlace ManifestText::PlaceOf(const pugi::xml_node& node) const {
  const std::ptrdiff_t offset = node.offset_debug();
  // The parser reports where a name begins, after its "<".
  return offset > 0 ? source_tool::PlaceOf(bytes, static_cast<std::size_t>(offset) - 1)
                    : TextPlace{};
}

std::string ManifestEntry::Text(const char* name) const {
  const pugi::xml_node child = node.child(name);
  return child ? catalog::ElementText(child) : "";
}

std::vector<Finding> Parse(ManifestText& manifest) {
  Findings findings(manifest);
  std::string why;
  try {
    catalog::ParseXml(manifest.bytes, manifest.file, manifest.document);
    if (!manifest.document.child("components")) {
      why = "the document element is not \"components\"";
    }
  } catch (const base::Failure& failure) {
    why = failure.description();
  }
  if (!why.empty()) {
    findings.Add(Rule::kNoManifest, {}, why, "is told that the source's answer is no list",
                 "correct the file");
  }
  return findings.Take();
}

std::vector<ManifestEntry> EntriesOf(const ManifestText& manifest) {
  std::vector<ManifestEntry> entries;
  for (const ComponentKind kind : base::kComponentKinds) {
    for (const pugi::xpath_node& selected :
         catalog::SelectNodes(manifest.document, catalog::kKindTables[kind].offers)) {
      entries.push_back({.kind = kind, .node = selected.node()});
    }
  }
  return entries;
}

std::vector<Finding> CheckEntries(const ManifestText& manifest) {
  Findings findings(manifest);
  const bool is_signed = IsSigned(manifest);
  std::map<std::pair<ComponentKind, std::string>, TextPlace> ids;
  for (const ManifestEntry& entry : EntriesOf(manifest)) {
    CheckEntry(entry, findings);
    if (is_signed) {
      CheckAnnounced(manifest, entry, findings);
    }
    const auto [before, is_new] =
        ids.try_emplace({entry.kind, base::ToLower(entry.id())}, manifest.PlaceOf(entry.node));
    if (!is_new) {
      findings.Add(Rule::kSameId, entry.node,
                   "line " + std::to_string(before->second.line) + " has the id " +
                       Quoted(entry.id()) + " already",
                   "sees two rows, and gets what the first one says", "remove one of the entries");
    }
  }
  return findings.Take();
}

std::vector<Finding> CheckLastParts(const ManifestText& manifest) {
  Findings findings(manifest);
  for (const ManifestEntry& entry : EntriesOf(manifest)) {
    const std::string version = entry.Text("version");
    if (catalog::LeadingNumber(version.substr(version.rfind('.') + 1)) == 0 &&
        !IsOfFirstRelease(version)) {
      findings.Add(Rule::kVersion, ChildOr(entry, "version"),
                   "the last part of the version " + Quoted(version) + " is 0",
                   "is offered no update, whatever is installed: only the last part is compared",
                   "raise the last part with every release; if this is the first one, say "
                   "--previous");
    }
  }
  return findings.Take();
}

std::vector<Finding> CheckVersionsSince(const ManifestText& manifest,
                                        const ManifestText& previous) {
  Findings findings(manifest);
  const std::vector<ManifestEntry> before = EntriesOf(previous);
  for (const ManifestEntry& entry : EntriesOf(manifest)) {
    for (const ManifestEntry& old : before) {
      const std::string was = old.Text("version");
      const std::string is = entry.Text("version");
      if (old.kind == entry.kind && old.id() == entry.id() && was != is &&
          PartsOf(is) >= PartsOf(was) && !catalog::IsNewer(was, is)) {
        findings.Add(
            Rule::kVersion, ChildOr(entry, "version"),
            std::string("version ").append(is).append(" does not count as newer than ").append(was),
            "is offered no update: only the last part is compared",
            "raise the last part with every release");
      }
    }
  }
  return findings.Take();
}

std::vector<Finding> CheckSignature(const ManifestText& manifest, const catalog::PublicKey& key,
                                    std::chrono::sys_days today) {
  std::string why;
  try {
    const auto signature = catalog::FindSignature(manifest.bytes);
    if (!signature) {
      why = "the manifest is not signed";
    } else if (signature->key_id != catalog::KeyId(key)) {
      why = "the manifest is signed with another key";
    } else if (!catalog::IsSignedWith(manifest.bytes, *signature, key)) {
      why = "the manifest was changed after it was signed";
    } else if (base::ToLower(signature->file) != base::ToLower(FileNameOf(manifest.file))) {
      why = "the manifest is signed as " + signature->file;
    } else if (today > signature->until) {
      why = "the manifest held until " + catalog::DateText(signature->until) + " only";
    }
  } catch (const base::Failure& failure) {
    why = failure.description();
  }
  Findings findings(manifest);
  if (!why.empty()) {
    findings.Add(Rule::kSignature, {}, why,
                 "is told so, and sees the previous manifest or nothing from the source",
                 "run kitbay-source sign last, and serve the file byte for byte");
  }
  return findings.Take();
}

}  // namespace kitbay::source_tool
