#include "install/registry.h"

#include "base/guarded.h"
#include "base/text.h"

namespace kitbay::install {
namespace {

using base::guarded;
using platform::RegistryKey;

constexpr const char* kProtocolKey = "ovl";

// Below the current user's hive: the user's own part of HKEY_CLASSES_ROOT.
constexpr const char* kUserClasses = "Software\\Classes\\";

}  // namespace

Registry::Registry(base::ErrorLog& log, platform::RegistryKeys& keys,
                   const base::Settings& settings)
    : log_(log), keys_(keys), settings_(settings) {
  guarded(log_, "Kitbay::Class_Initialize", [&] { OpenRootKey(); });
}

Registry::~Registry() {
  guarded(log_, "Kitbay::Class_Terminate", [&] { keys_.Close(root_); });
}

void Registry::OpenRootKey() {
  constexpr const char* kRootKey = "software\\Ovalink";
  const auto opened = keys_.Open(platform::kCurrentUser, kRootKey, platform::kKeyReadWrite);
  if (opened.code == platform::kRegistrySuccess) {
    root_ = opened.key;
    return;
  }
  const auto created = keys_.Create(platform::kCurrentUser, kRootKey, platform::kKeyReadWrite);
  if (created.code == platform::kRegistrySuccess) {
    root_ = created.key;
    keys_.SetText(root_, "", "Ovalink");
  }
}

std::string Registry::GetAppDataPath() {
  std::string path;
  guarded(log_, "Kitbay::GetAppDataPath", [&] {
    constexpr const char* kFolders =
        R"(Software\Microsoft\Windows\CurrentVersion\Explorer\Shell Folders)";
    constexpr const char* kName = "AppData";
    const auto folders = keys_.Open(platform::kCurrentUser, kFolders, platform::kKeyQueryValue);
    const std::uint32_t byte_count = keys_.Query(folders.key, kName, 0).byte_count;
    const std::string bytes = keys_.Query(folders.key, kName, byte_count).bytes;
    keys_.Close(folders.key);
    path = base::Trim(bytes.substr(0, bytes.empty() ? 0 : bytes.size() - 1));
  });
  return path;
}

std::int32_t Registry::ROOT_REGISTRY_KEY() {
  // Key handles are small numbers, even in 64-bit programs.
  return static_cast<std::int32_t>(root_.handle);
}

void Registry::RegisterUrlHandler() {
  guarded(log_, "Kitbay::RegisterUrlHandler", [&] {
    const std::string executable = settings_.program_name + ".exe";
    SetClassText(kProtocolKey, "URL:ovl Protocol");
    SetClassText("ovl\\DefaultIcon", executable);
    SetClassText(R"(ovl\shell\open\command)",
                 "\"" + settings_.program_folder + "\\" + executable + "\" %1");
    const RegistryKey key = OpenProtocolKey();
    keys_.SetText(key, "URL Protocol", "");
    keys_.Close(key);
  });
}

void Registry::SetClassText(const std::string& name, const std::string& data) {
  if (SetDefaultValue(platform::kClassesRoot, name, data) == platform::kRegistryAccessDenied) {
    SetDefaultValue(platform::kCurrentUser, kUserClasses + name, data);
  }
}

RegistryKey Registry::OpenProtocolKey() {
  const auto opened = keys_.Open(platform::kClassesRoot, kProtocolKey, platform::kKeyReadWrite);
  if (opened.code != platform::kRegistryAccessDenied) {
    return opened.key;
  }
  return keys_
      .Open(platform::kCurrentUser, std::string(kUserClasses) + kProtocolKey,
            platform::kKeyReadWrite)
      .key;
}

// Closes the handle of the hive, as clients of the class have always seen it.
std::int32_t Registry::SetDefaultValue(RegistryKey hive, const std::string& name,
                                       const std::string& data) {
  if (name.empty()) {
    return platform::kRegistrySuccess;
  }
  const auto created = keys_.Create(hive, name, platform::kKeyReadWrite);
  if (!data.empty()) {
    keys_.SetText(created.key, "", data);
  }
  keys_.Close(hive);
  return created.code;
}

}  // namespace kitbay::install
