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
    const bool is_64 = settings_.program_bits == 64;
    auto opened = OpenEntry(key_name, 0);
    entry_bits_ = settings_.program_bits;
    if (opened.code == platform::kRegistryFileNotFound) {
      opened = OpenEntry(key_name, is_64 ? platform::kView32 : platform::kView64);
      entry_bits_ = is_64 ? 32 : 64;
    }
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

// Standard users may read the machine's keys but not write them, and the check only reads.
platform::RegistryKeys::KeyResult InstallationCheck::OpenEntry(const std::string& key_name,
                                                               std::uint32_t view) {
  const std::string path = R"(SOFTWARE\Microsoft\Windows\CurrentVersion\Uninstall\)" + key_name;
  const auto opened = keys_.Open(platform::kLocalMachine, path, platform::kKeyReadWrite | view);
  return opened.code == platform::kRegistryAccessDenied
             ? keys_.Open(platform::kLocalMachine, path, platform::kKeyQueryValue | view)
             : opened;
}

// The executable is more reliable than the entry: a 32-bit installer may install a 64-bit suite.
void InstallationCheck::TellOtherBitness() {
  guarded(log_, "Kitbay::CheckInstallation", [&] {
    const std::string client = settings_.InstallFolder + "\\" + settings_.MainAppExe;
    const int suite_bits = desktop_.ProgramBits(client).value_or(entry_bits_);
    if (suite_bits == settings_.program_bits) {
      return;
    }
    const std::string fitting = std::to_string(suite_bits) + "-bit";
    desktop_.ShowMessage(settings_.MainAppName + " is a " + fitting + " program, but this is the " +
                             std::to_string(settings_.program_bits) +
                             "-bit Kitbay. It cannot register the libraries of components; the " +
                             fitting + " Kitbay can. To get it, run Kitbay's installer again.",
                         platform::kMessageTitle, platform::kOkOnly);
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
