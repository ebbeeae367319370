#pragma once

#include <string>

namespace kitbay::base {

/// What the program knows about its suite, filled in while the main window loads. Folders are UTF-8
/// and end without a separator, except `InstallFolder` after a transport was installed.
struct Settings {
  std::string MainAppExe;        ///< file name of the main client's executable
  std::string MainAppName;       ///< display name of the main client
  std::string InstallFolder;     ///< the suite's installation folder; empty if none was found
  std::string CustomDataFolder;  ///< the user's folder of custom components
  bool IsNotNT = false;          ///< whether the system is not of the NT family

  bool is_administrator = false;  ///< whether the process is elevated
  bool may_change_suite = true;   ///< whether the user may write to the suite's folders

  std::string program_folder;  ///< the folder of the running executable
  std::string program_name;    ///< the executable's file name without ".exe"
  int program_bits = 64;       ///< the program's own bitness
};

}  // namespace kitbay::base
