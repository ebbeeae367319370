#pragma once

#include <functional>
#include <string>
#include <vector>

#include "platform/preference_window.h"

namespace kitbay::contract {

/// Records the events of the dialog's window.
class RecordingPreferenceEvents : public platform::PreferenceWindowEvents {
 public:
  void Form_Unload() override { Tell("Form_Unload"); }
  void cmdPrefOk_Click() override { Tell("cmdPrefOk_Click"); }
  void Command1_Click() override { Tell("Command1_Click"); }
  void cmdPrefClose_Click() override { Tell("cmdPrefClose_Click"); }
  void txtPrefUrl_KeyDown(int key_code) override {
    Tell("txtPrefUrl_KeyDown " + std::to_string(key_code));
  }
  void lstPrefURL_KeyDown(int key_code) override {
    Tell("lstPrefURL_KeyDown " + std::to_string(key_code));
  }
  void lstPrefURL_MouseUp() override { Tell("lstPrefURL_MouseUp"); }
  void lstPrefURL_SelectionChange() override { Tell("lstPrefURL_SelectionChange"); }

  std::vector<std::string> told;
  std::function<void(const std::string&)> on_told = [](const std::string&) {};

 private:
  void Tell(const std::string& what) {
    told.push_back(what);
    on_told(what);
  }
};

/// A window of the dialog to test, with its owner and its user.
class PreferenceWindowWorld {
 public:
  virtual ~PreferenceWindowWorld() = default;
  virtual platform::PreferenceWindow& window() = 0;
  virtual platform::WindowHandle owner() const = 0;

  /// Destroys the owner.
  virtual void EndOwner() = 0;

  virtual bool IsShown() const = 0;
  virtual bool IsRemoveEnabled() const = 0;
  virtual std::string StatusText() const = 0;

  /// The name of the focused control; empty if none of the dialog's controls has the focus.
  virtual std::string Focus() const = 0;
  virtual void FocusRemoveButton() = 0;

  /// The user types into the text box, selects an item with the keyboard, or with the mouse.
  virtual void Type(const std::string& text) = 0;
  virtual void Select(int position) = 0;
  virtual void Click(int position) = 0;
};

}  // namespace kitbay::contract
