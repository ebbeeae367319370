#include "install/registry.h"

#include "base/guarded.h"
#include "base/text.h"

namespace kitbay::install {
namespace {

using base::guarded;
using platform::RegistryKey;

constexpr const char* kProtocolKey = "ovl";

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
  // Key handles are small numbers, also in 64-bit programs.
  return static_cast<std::int32_t>(root_.handle);
}

void Registry::RegisterUrlHandler() {
  guarded(log_, "Kitbay::RegisterUrlHandler", [&] {
    const std::string executable = settings_.program_name + ".exe";
    SetDefaultValue(platform::kClassesRoot, kProtocolKey, "URL:ovl Protocol");
    SetDefaultValue(platform::kClassesRoot, "ovl\\DefaultIcon", executable);
    SetDefaultValue(platform::kClassesRoot, R"(ovl\shell\open\command)",
                    "\"" + settings_.program_folder + "\\" + executable + "\" %1");
    const RegistryKey key =
        keys_.Open(platform::kClassesRoot, kProtocolKey, platform::kKeyReadWrite).key;
    keys_.SetText(key, "URL Protocol", "");
    keys_.Close(key);
  });
}

// The handle that is closed is the hive's, as clients of the class have always seen it.
void Registry::SetDefaultValue(RegistryKey hive, const std::string& name, const std::string& data) {
  if (name.empty()) {
    return;
  }
  const RegistryKey key = keys_.Create(hive, name, platform::kKeyReadWrite).key;
  if (!data.empty()) {
    keys_.SetText(key, "", data);
  }
  keys_.Close(hive);
}

}  // namespace kitbay::install
