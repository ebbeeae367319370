#pragma once

#include <algorithm>
#include <string>
#include <vector>

#include "base/failure.h"
#include "fakes/fake_main_window.h"
#include "platform/preference_window.h"

namespace kitbay::fakes {

/// The dialog's window without a screen. Its user types, selects and presses keys.
class FakePreferenceWindow : public platform::PreferenceWindow {
 public:
  bool IsLoaded() const override { return events_ != nullptr; }

  void Load(platform::PreferenceWindowEvents& events, platform::WindowHandle owner) override {
    if (IsLoaded()) {
      return;
    }
    calls_.Enter("Load", std::to_string(owner.value));
    events_ = &events;
    shown_ = remove_enabled_ = false;
    url_text_ = status_text_ = focus_ = "";
    items_.clear();
    selected_ = 0;
  }

  void Unload() override {
    calls_.Enter("Unload");
    if (!IsLoaded() || unloading_) {
      return;
    }
    unloading_ = true;
    events_->Form_Unload();
    unloading_ = false;
    events_ = nullptr;
  }

  void Show() override {
    Enter("Show");
    shown_ = true;
  }

  std::string UrlText() const override {
    CheckLoaded();
    return url_text_;
  }
  void SetUrlText(const std::string& text) override {
    Enter("SetUrlText", text);
    url_text_ = text;
  }
  void FocusUrlBox() override {
    Enter("FocusUrlBox");
    focus_ = "txtPrefUrl";
  }
  void FocusAddButton() override {
    Enter("FocusAddButton");
    focus_ = "cmdPrefOk";
  }
  void EnableRemoveButton(bool enabled) override {
    Enter("EnableRemoveButton", enabled ? "true" : "false");
    remove_enabled_ = enabled;
    if (!enabled && focus_ == "Command1") {
      focus_ = "lstPrefURL";
    }
  }

  int ItemCount() const override {
    CheckLoaded();
    return static_cast<int>(items_.size());
  }
  std::string ItemText(int position) const override { return items_[IndexOf(position)]; }
  void AddItem(const std::string& text) override {
    Enter("AddItem", text);
    items_.push_back(text);
  }
  void RemoveItem(int position) override {
    Enter("RemoveItem", std::to_string(position));
    items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(IndexOf(position)));
    if (position == selected_) {
      Select(std::min(selected_, ItemCount()));
    } else if (position < selected_) {
      --selected_;
    }
  }
  int SelectedItem() const override {
    CheckLoaded();
    return selected_;
  }
  void SetStatusText(const std::string& text) override {
    Enter("SetStatusText", text);
    status_text_ = text;
  }

  // What the user does.

  void Type(const std::string& text) { url_text_ = text; }
  void FocusRemoveButton() { focus_ = "Command1"; }

  /// Selects with the keyboard; 0 for no item.
  void Select(int position) {
    selected_ = position;
    events_->lstPrefURL_SelectionChange();
  }

  /// Selects with the mouse.
  void Click(int position) {
    Select(position);
    events_->lstPrefURL_MouseUp();
  }

  void PressRemove() {
    if (remove_enabled_) {
      events_->Command1_Click();
    }
  }

  // For tests to inspect.

  platform::PreferenceWindowEvents* events() const { return events_; }
  const std::vector<std::string>& items() const { return items_; }
  const std::string& status_text() const { return status_text_; }
  const std::string& focus() const { return focus_; }
  bool remove_enabled() const { return remove_enabled_; }
  bool shown() const { return shown_; }
  WindowCalls& calls() { return calls_; }

 private:
  void CheckLoaded() const {
    if (!IsLoaded()) {
      throw base::Failure(base::RuntimeError::kObjectVariableNotSet);
    }
  }

  void Enter(const std::string& member, const std::string& arguments = "") {
    CheckLoaded();
    calls_.Enter(member, arguments);
  }

  std::size_t IndexOf(int position) const {
    CheckLoaded();
    if (position < 1 || position > ItemCount()) {
      throw base::Failure(base::RuntimeError::kSubscriptOutOfRange);
    }
    return static_cast<std::size_t>(position - 1);
  }

  WindowCalls calls_;
  platform::PreferenceWindowEvents* events_ = nullptr;
  bool unloading_ = false;
  bool shown_ = false;
  bool remove_enabled_ = false;
  std::string url_text_;
  std::string status_text_;
  std::string focus_;
  std::vector<std::string> items_;
  int selected_ = 0;
};

}  // namespace kitbay::fakes
