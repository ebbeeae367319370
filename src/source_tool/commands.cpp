#include "source_tool/commands.h"

#include <charconv>
#include <exception>
#include <iterator>
#include <map>
#include <system_error>
#include <utility>

#include "base/failure.h"
#include "base/text.h"
#include "source_tool/arguments.h"
#include "source_tool/disk.h"
#include "source_tool/finding.h"
#include "source_tool/keys.h"
#include "source_tool/manifest_editing.h"
#include "source_tool/manifest_rules.h"
#include "source_tool/package_rules.h"
#include "source_tool/rehearsal.h"
#include "source_tool/source_rules.h"

namespace kitbay::source_tool {
namespace {

using base::ComponentKind;
using base::Failure;
using base::RuntimeError;

constexpr const char* kUsageText =
    "usage: kitbay-source COMMAND ...\n"
    "  init MANIFEST [--key FILE]                     a new key and an empty manifest\n"
    "  add MANIFEST PACKAGE.zip [--url FOLDER] [--kind addon|transport|channel]\n"
    "      [--name T] [--version T] [--description T] [--progid T]\n"
    "                                                 enters a package, or its next release\n"
    "  sign MANIFEST [--key FILE] [--days N]          signs it for N days, 90 by default\n"
    "  check MANIFEST [--packages FOLDER] [--previous MANIFEST] [--sources FILE] [--public KEY]\n"
    "      [--bits 32|64] [--json] [--quiet]          finds what would fail on users' machines\n"
    "  rehearse MANIFEST... --registry FILE [--custom FILE] [--installed ID=VERSION]... [--json]\n"
    "                                                 shows what that user would be offered\n"
    "The key is in MANIFEST.key by default. The exit code is 0 if all is well, 1 if there are\n"
    "findings, 2 if the arguments are wrong, 3 if a file cannot be read or written.\n";

constexpr int kDefaultDays = 90;

/// What every command works with.
struct Place : Surroundings {
  Disk disk = {};
};

std::string KeyFileOf(const Arguments& arguments) {
  return arguments.Value("--key", arguments.files().front() + ".key");
}

int Number(const std::string& text, const std::string& option) {
  int number = 0;
  const char* const end = text.c_str() + text.size();
  const auto [stop, error] = std::from_chars(text.c_str(), end, number);
  if (error != std::errc() || stop != end || number <= 0) {
    throw WrongUsage(option + " needs a number");
  }
  return number;
}

int Init(Place& place, const std::vector<std::string>& words) {
  const Arguments arguments(words, {"--key"}, {});
  const std::string& manifest = arguments.OnlyFile();
  const std::string key_file = KeyFileOf(arguments);
  for (const std::string& file : {manifest, key_file}) {
    if (place.disk.Exists(file)) {
      throw Failure(RuntimeError::kFileAlreadyExists, file);
    }
  }
  const catalog::SecretKey key = MakeSecretKey();
  WriteKeyFile(place.disk, key_file, key);
  place.disk.Replace(manifest, EmptyManifest());
  place.out << manifest << " has no entries yet; add packages and sign it.\n"
            << key_file
            << " signs it. Keep it secret, keep a copy, and never put it on the server.\n"
            << "Users add the source as URL#" << catalog::KeyDigits(PublicKeyOf(key)) << "\n";
  return kDone;
}

ComponentKind KindOf(const std::string& text) {
  const std::map<std::string, ComponentKind> kinds = {{"addon", ComponentKind::kAddon},
                                                      {"transport", ComponentKind::kTransport},
                                                      {"channel", ComponentKind::kChannel}};
  const auto kind = kinds.find(text);
  if (kind == kinds.end()) {
    throw WrongUsage("--kind is addon, transport or channel");
  }
  return kind->second;
}

int Add(Place& place, const std::vector<std::string>& words) {
  const std::vector<std::string> elements = {"name", "version", "description", "progid"};
  const Arguments arguments(
      words, {"--url", "--kind", "--name", "--version", "--description", "--progid"}, {});
  if (arguments.files().size() != 2) {
    throw WrongUsage("a manifest and a package are needed");
  }
  const std::string& file = arguments.files()[0];
  Addition addition{.package = arguments.files()[1],
                    .kind = KindOf(arguments.Value("--kind", "addon")),
                    .url_folder = arguments.Value("--url")};
  for (const std::string& element : elements) {
    if (arguments.Has("--" + element)) {
      addition.texts[element] = arguments.Value("--" + element);
    }
  }
  ManifestText before{.file = file, .bytes = place.disk.Read(file), .document = {}};
  ManifestText after{.file = file, .bytes = before.bytes, .document = {}};
  const Entered entered = AddPackage(place.disk, addition, after.bytes);
  place.disk.Replace(file, after.bytes);
  place.out << (entered.is_new ? "Added " : "Updated ") << entered.id << ", version "
            << entered.version << ". The manifest must be signed again.\n";
  Parse(before);
  Parse(after);
  const std::vector<Finding> findings = CheckVersionsSince(after, before);
  if (!findings.empty()) {
    WriteFindings(place.out, findings);
  }
  return findings.empty() ? kDone : kFound;
}

int Sign(Place& place, const std::vector<std::string>& words) {
  const Arguments arguments(words, {"--key", "--days"}, {});
  const std::string& file = arguments.OnlyFile();
  const int days = Number(arguments.Value("--days", std::to_string(kDefaultDays)), "--days");
  const catalog::SecretKey key = ReadKeyFile(place.disk, KeyFileOf(arguments));
  const std::string manifest = place.disk.Read(file);
  const auto before = catalog::FindSignature(manifest);
  const std::uint64_t serial = before ? before->serial + 1 : 1;
  const std::chrono::sys_days until = place.today + std::chrono::days(days);
  place.disk.Replace(file, catalog::SignManifest(manifest, FileNameOf(file), key, serial, until));
  place.out << "Signed as number " << serial << "; it holds until " << catalog::DateText(until)
            << ".\n";
  return kDone;
}

void Append(std::vector<Finding>& findings, std::vector<Finding> more) {
  findings.insert(findings.end(), std::move_iterator(more.begin()), std::move_iterator(more.end()));
}

/// A bar of 40 marks, redrawn in place.
Progress ProgressBar(std::ostream& err, bool is_shown) {
  return [&err, is_shown](double done) {
    constexpr int kMarks = 40;
    if (is_shown) {
      const int marks = static_cast<int>(done * kMarks);
      err << "\r[" << std::string(static_cast<std::size_t>(marks), '#')
          << std::string(static_cast<std::size_t>(kMarks - marks), ' ') << "]"
          << (done == 1 ? "\n" : "") << std::flush;
    }
  };
}

std::vector<Finding> CheckKey(const ManifestText& manifest, const std::string& digits,
                              std::chrono::sys_days today) {
  const auto key = catalog::ReadKey(digits);
  if (!key) {
    throw WrongUsage("--public needs a key of 64 digits");
  }
  return CheckSignature(manifest, *key, today);
}

std::vector<Finding> CheckAll(Place& place, const Arguments& arguments) {
  ManifestText manifest{.file = arguments.OnlyFile(), .bytes = {}, .document = {}};
  manifest.bytes = place.disk.Read(manifest.file);
  std::vector<Finding> findings = Parse(manifest);
  if (!findings.empty()) {
    return findings;
  }
  Append(findings, CheckEntries(manifest));
  if (arguments.Has("--previous")) {
    ManifestText previous{.file = arguments.Value("--previous"), .bytes = {}, .document = {}};
    previous.bytes = place.disk.Read(previous.file);
    if (Parse(previous).empty()) {
      Append(findings, CheckVersionsSince(manifest, previous));
    }
  } else {
    Append(findings, CheckLastParts(manifest));
  }
  if (arguments.Has("--packages")) {
    Append(findings,
           CheckPackages(place.disk, manifest, arguments.Value("--packages"),
                         Number(arguments.Value("--bits", "32"), "--bits"),
                         ProgressBar(place.err, place.is_err_shown && !arguments.Has("--quiet"))));
  }
  if (arguments.Has("--public")) {
    Append(findings, CheckKey(manifest, arguments.Value("--public"), place.today));
  }
  if (arguments.Has("--sources")) {
    Append(findings, CheckSources(place.disk, arguments.Value("--sources")));
  }
  return findings;
}

int Check(Place& place, const std::vector<std::string>& words) {
  const Arguments arguments(words, {"--packages", "--previous", "--sources", "--public", "--bits"},
                            {"--json", "--quiet"});
  const std::vector<Finding> findings = CheckAll(place, arguments);
  (arguments.Has("--json") ? WriteFindingsAsJson : WriteFindings)(place.out, findings);
  return findings.empty() ? kDone : kFound;
}

int RehearseFor(Place& place, const std::vector<std::string>& words) {
  const Arguments arguments(words, {"--registry", "--custom", "--installed"}, {"--json"});
  if (arguments.files().empty() || !arguments.Has("--registry")) {
    throw WrongUsage("a manifest and --registry are needed");
  }
  RehearsedUser user{.registry = arguments.Value("--registry"),
                     .custom_registry = arguments.Value("--custom"),
                     .manifests = arguments.files()};
  for (const std::string& installed : arguments.Values("--installed")) {
    const std::size_t mark = installed.find('=');
    if (mark == std::string::npos) {
      throw WrongUsage("--installed needs ID=VERSION");
    }
    user.versions[installed.substr(0, mark)] = installed.substr(mark + 1);
  }
  return Rehearse(user, arguments.Has("--json"), place.out) ? kDone : kFound;
}

int RunCommand(Place& place, const std::vector<std::string>& words) {
  const std::map<std::string, int (*)(Place&, const std::vector<std::string>&)> commands = {
      {"init", Init}, {"add", Add}, {"sign", Sign}, {"check", Check}, {"rehearse", RehearseFor}};
  if (words.size() == 1 && words[0] == "--help") {
    place.out << kUsageText;
    return kDone;
  }
  const auto command = words.empty() ? commands.end() : commands.find(words[0]);
  if (command == commands.end()) {
    throw WrongUsage("a command is needed");
  }
  return command->second(place, {words.begin() + 1, words.end()});
}

}  // namespace

int Run(const std::vector<std::string>& words, const Surroundings& surroundings) {
  Place place{surroundings};
  std::ostream& err = surroundings.err;
  try {
    return RunCommand(place, words);
  } catch (const WrongUsage& wrong) {
    err << "kitbay-source: " << wrong.what() << "\n" << kUsageText;
    return kUsage;
  } catch (const std::exception& failure) {
    err << "kitbay-source: " << failure.what() << "\n";
    return kFailed;
  }
}

}  // namespace kitbay::source_tool
