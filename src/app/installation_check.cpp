#include "app/installation_check.h"

#include "base/guarded.h"
#include "base/text.h"

namespace kitbay::app {

using base::guarded;

void InstallationCheck::CheckInstallation(platform::FileSystemObject* file_system) {
  guarded(log_, "Kitbay::CheckInstallation", [&] {
    if (desktop_.PlatformId() != platform::kPlatformNt) {
      settings_.IsNotNT = true;
    }
    const std::string key_name = ApplicationKeyName(file_system);
    const auto opened =
        keys_.Open(platform::kLocalMachine,
                   R"(SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall\)" + key_name,
                   platform::kKeyReadWrite);
    if (opened.code == platform::kRegistrySuccess) {
      ReadEntry(opened.key, key_name);
      return;
    }
    const std::string& client = settings_.MainAppName;
    desktop_.ShowMessage("Kitbay has detected that " + client +
                             " has not been installed properly. Please reinstall " + client + ".",
                         platform::kMessageTitle, platform::kOkOnly);
    window_.Unload();
  });
}

std::string InstallationCheck::ApplicationKeyName(platform::FileSystemObject* file_system) const {
  const std::string path = settings_.program_folder + "\\install.txt";
  if (file_system != nullptr && file_system->FileExists(path)) {
    const auto stream = file_system->OpenTextFile(path);
    const std::string first = stream->ReadLine();
    std::string second = stream->ReadLine();
    if (!base::Trim(first).empty()) {
      return second;
    }
  }
  return "Tessel";
}

void InstallationCheck::ReadEntry(platform::RegistryKey key, const std::string& key_name) {
  std::string location;
  ReadRegistryValue(key, "InstallLocation", location);
  ReadNonBlank(key, "Displayname", key_name, settings_.MainAppName);
  ReadNonBlank(key, "ApplicationEXE", "Tessel.exe", settings_.MainAppExe);
  keys_.Close(key);
  settings_.InstallFolder = location;
}

void InstallationCheck::ReadNonBlank(platform::RegistryKey key, const std::string& name,
                                     const std::string& otherwise, std::string& text) {
  if (ReadRegistryValue(key, name, text) != platform::kRegistrySuccess &&
      base::Trim(text).empty()) {
    text = otherwise;
  }
}

std::int32_t InstallationCheck::ReadRegistryValue(platform::RegistryKey key,
                                                  const std::string& name, std::string& text) {
  constexpr std::uint32_t kCapacity = 100;
  std::int32_t code = platform::kRegistrySuccess;
  guarded(log_, "Kitbay::ReadRegistryValue", [&] {
    const auto value = keys_.Query(key, name, kCapacity);
    code = value.code;
    text = value.bytes.substr(0, value.bytes.empty() ? 0 : value.bytes.size() - 1);
  });
  return code;
}

}  // namespace kitbay::app
