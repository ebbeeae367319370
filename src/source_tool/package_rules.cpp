#include "source_tool/package_rules.h"

#include <limits>
#include <utility>

#include "base/failure.h"
#include "base/text.h"
#include "catalog/package_digest.h"
#include "catalog/version_rule.h"
#include "install/entry_names.h"
#include "install/zip_archive.h"
#include "source_tool/library_header.h"

namespace kitbay::source_tool {
namespace {

// The most that Kitbay can read in one call.
constexpr std::uint64_t kLargestFile = std::numeric_limits<std::int32_t>::max();

// Why Kitbay would refuse the whole package because of that entry; empty if it would not.
std::string RefusalOf(const install::ZipEntry& entry) {
  try {
    install::EntryNames::DemandPlain(entry.name, entry.size == 0);
  } catch (const base::Failure&) {
    return "the name " + install::Printable(entry.name) +
           " is not one that Windows keeps unchanged";
  }
  if (entry.size > 0 && entry.method != install::kStored && entry.method != install::kDeflated) {
    return entry.name + " is neither stored nor deflated";
  }
  return "";
}

PackageLibrary ReadLibrary(install::ZipArchive& archive, const install::ZipEntry& entry) {
  std::string bytes(static_cast<std::size_t>(entry.size), '\0');
  archive.Read(bytes);
  archive.CloseEntry();
  const auto header = ReadLibraryHeader(bytes);
  return header
             ? PackageLibrary{.name = entry.name, .bits = header->bits, .version = header->version}
             : PackageLibrary{.name = entry.name, .version = ""};
}

/// The findings about one entry's package.
class PackageCheck {
 public:
  PackageCheck(const ManifestText& manifest, const ManifestEntry& entry, const std::string& package,
               std::vector<Finding>& findings)
      : manifest_(manifest), entry_(entry), package_(package), findings_(findings) {}

  void Check(const platform::Files& files, const std::string& path, int bits) {
    if (!files.Exists(path)) {
      Add(Rule::kNoPackage, "is not there", "is told that the server has no such file",
          "put the package there, or correct the URL");
      return;
    }
    CheckDigest(*files.Open(path));
    try {
      CheckContents(ReadPackage(files, path), bits);
    } catch (const base::Failure& failure) {
      Add(Rule::kNoPackage, "cannot be read: " + failure.description(),
          "is told that the download is corrupt", "make the package again");
    }
  }

 private:
  void CheckDigest(const platform::FileReader& package) {
    const catalog::PackageDigest digest = catalog::ReadDigest(manifest_.file, entry_.node);
    if (digest.size.empty() && digest.sha256.empty()) {
      return;
    }
    try {
      catalog::CheckDigest(package, digest);
    } catch (const base::Failure& failure) {
      Add(Rule::kDigest, "is not what was announced: " + failure.description(),
          "is told that the download is corrupt, if the manifest is signed",
          "run kitbay-source add again, and sign");
    }
  }

  void CheckContents(const PackageContents& contents, int bits) {
    if (!contents.refusal.empty()) {
      Add(Rule::kName, "would not be expanded: " + contents.refusal,
          "is told that the download is corrupt, and nothing is written", "rename the file");
    }
    for (const PackageFile& file : contents.files) {
      CheckFile(file);
    }
    for (const PackageLibrary& library : contents.libraries) {
      CheckLibrary(library, bits);
    }
  }

  void CheckFile(const PackageFile& file) {
    const std::string name = install::Printable(file.name);
    if (file.size == 0 && !file.name.ends_with('\\')) {
      Add(Rule::kEmptyFile, "has the empty file " + name, "does not get that file",
          "put at least one byte into it");
    }
    if (file.size > kLargestFile) {
      Add(Rule::kTooLarge, "has a file of more than 2 GB, " + name,
          "is told that the download is corrupt, and nothing is written", "split the file");
    }
  }

  void CheckLibrary(const PackageLibrary& library, int bits) {
    if (library.bits != 0 && library.bits != bits) {
      Add(Rule::kBitness,
          "has a library of " + std::to_string(library.bits) + " bits, " + library.name,
          "installs the component, but the library does not register itself, or the suite cannot "
          "load it",
          "build it for " + std::to_string(bits) + " bits, or use --bits");
    }
    const std::string offered = entry_.Text("version");
    const bool is_own = base::ToLower(library.name) == base::ToLower(entry_.Text("filename"));
    if (is_own && !library.version.empty() && library.version != offered &&
        entry_.kind != base::ComponentKind::kChannel) {
      CheckOwnVersion(library, offered);
    }
  }

  void CheckOwnVersion(const PackageLibrary& library, const std::string& offered) {
    bool is_newer = false;
    try {
      is_newer = catalog::IsNewer(library.version, offered);
    } catch (const base::Failure&) {
      return;  // it has too few parts, which is a finding already
    }
    Add(Rule::kVersion,
        "has version " + library.version + " of " + library.name + ", and version " + offered +
            " is offered",
        is_newer ? "is offered the update again and again"
                 : "sees another version when it is installed",
        "offer the version of the component's own library");
  }

  void Add(Rule rule, const std::string& what, std::string shows, std::string todo) {
    const pugi::xml_node url = entry_.node.child("url");
    findings_.push_back({.rule = rule,
                         .file = manifest_.file,
                         .place = manifest_.PlaceOf(url ? url : entry_.node),
                         .what = "the package " + package_ + " " + what,
                         .shows = std::move(shows),
                         .todo = std::move(todo)});
  }

  const ManifestText& manifest_;
  const ManifestEntry& entry_;
  const std::string& package_;
  std::vector<Finding>& findings_;
};

}  // namespace

PackageContents ReadPackage(const platform::Files& files, const std::string& path) {
  install::ZipArchive archive(files, path);
  if (!archive.is_open()) {
    throw base::Failure(base::RuntimeError::kPathFileAccessError, "it is not a zip archive");
  }
  PackageContents contents;
  for (bool there = archive.GoToFirst(); there; there = archive.GoToNext()) {
    const install::ZipEntry entry = archive.Entry();
    contents.files.push_back({.name = entry.name, .size = entry.size});
    if (contents.refusal.empty()) {
      contents.refusal = RefusalOf(entry);
    }
    if (base::ToLower(entry.name).ends_with(".dll") && entry.size > 0 &&
        entry.size <= kLargestFile) {
      contents.libraries.push_back(ReadLibrary(archive, entry));
    }
  }
  return contents;
}

std::vector<Finding> CheckPackages(const platform::Files& files, const ManifestText& manifest,
                                   const std::string& folder, int bits, const Progress& progress) {
  std::vector<Finding> findings;
  const std::vector<ManifestEntry> entries = EntriesOf(manifest);
  for (std::size_t i = 0; i < entries.size(); ++i) {
    progress(static_cast<double>(i) / static_cast<double>(entries.size()));
    const std::string package = base::AfterLastSlash(entries[i].Text("url"));
    PackageCheck(manifest, entries[i], package, findings)
        .Check(files, std::string(folder).append("/").append(package), bits);
  }
  progress(1);
  return findings;
}

}  // namespace kitbay::source_tool
