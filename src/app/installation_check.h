#pragma once

#include <cstdint>
#include <string>

#include "base/error_log.h"
#include "base/settings.h"
#include "platform/desktop.h"
#include "platform/file_system_object.h"
#include "platform/main_window.h"
#include "platform/registry_keys.h"

namespace kitbay::app {

/// Finds the suite's installation through the main client's uninstall entry.
class InstallationCheck {
 public:
  InstallationCheck(base::ErrorLog& log, platform::Desktop& desktop, platform::RegistryKeys& keys,
                    platform::MainWindow& window, base::Settings& settings)
      : log_(log), desktop_(desktop), keys_(keys), window_(window), settings_(settings) {}

  /// Fills the settings from the uninstall entry. If no entry can be read, tells the user and
  /// unloads the main window. Without a `file_system`, no `install.txt` is looked for.
  void CheckInstallation(platform::FileSystemObject* file_system);

  /// Tells the user if the suite has another bitness than Kitbay, which then cannot load its
  /// libraries.
  void TellOtherBitness();

 private:
  std::string ApplicationKeyName(platform::FileSystemObject* file_system) const;
  platform::RegistryKeys::KeyResult OpenEntry(const std::string& key_name, std::uint32_t view);
  void ReadEntry(platform::RegistryKey key, const std::string& key_name);
  std::int32_t ReadRegistryValue(platform::RegistryKey key, const std::string& name,
                                 std::string& text);
  void ReadNonBlank(platform::RegistryKey key, const std::string& name,
                    const std::string& otherwise, std::string& text);

  base::ErrorLog& log_;
  platform::Desktop& desktop_;
  platform::RegistryKeys& keys_;
  platform::MainWindow& window_;
  base::Settings& settings_;
  int entry_bits_ = 0;  ///< of the registry view with the uninstall entry; 0 until it is found
};

}  // namespace kitbay::app
