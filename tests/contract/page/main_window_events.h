#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/main_window.h"

namespace kitbay::contract {

/// Records the main window's events.
class RecordingMainWindowEvents : public platform::MainWindowEvents {
 public:
  void Form_Unload() override { Tell("Form_Unload"); }
  void CmdClose_Click() override { Tell("CmdClose_Click"); }
  void cmdPreference_Click() override { Tell("cmdPreference_Click"); }
  void Form_KeyDown(int key_code) override { Tell("Form_KeyDown " + std::to_string(key_code)); }
  void lblHelp_Click() override { Tell("lblHelp_Click"); }
  void lblHelp_MouseMove() override { Tell("lblHelp_MouseMove"); }
  void WebBrowser1_NavigateError() override { Tell("WebBrowser1_NavigateError"); }
  void LooksChanged() override { Tell("LooksChanged"); }
  void WebBrowser1_DocumentComplete() override { Tell("WebBrowser1_DocumentComplete"); }

  /// The names of the handlers with their arguments.
  std::vector<std::string> told;

  /// Called after each entry.
  std::function<void(const std::string&)> on_told = [](const std::string&) {};

 private:
  void Tell(const std::string& what) {
    told.push_back(what);
    on_told(what);
  }
};

}  // namespace kitbay::contract
