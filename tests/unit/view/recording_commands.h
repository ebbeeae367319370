#pragma once

#include <string>
#include <vector>

#include "view/page_commands.h"

namespace kitbay::view {

/// Records every command, in order: the procedure, a blank, and its arguments joined by "|".
class RecordingCommands : public PageCommands {
 public:
  void UpdateInstalledAddon() override { calls.emplace_back("UpdateInstalledAddon"); }
  void UpdateInstalledTransport() override { calls.emplace_back("UpdateInstalledTransport"); }
  void UpdateInstalledChannel() override { calls.emplace_back("UpdateInstalledChannel"); }
  void RemoveAddon(const std::string& action, const std::string& kind) override {
    calls.push_back("RemoveAddon " + action + "|" + kind);
  }
  bool InstallNewAddons(const std::string& container, const std::string& name) override {
    calls.push_back("InstallNewAddons " + container + "|" + name);
    return is_sent;
  }

  bool is_sent = true;
  std::vector<std::string> calls;
};

}  // namespace kitbay::view
