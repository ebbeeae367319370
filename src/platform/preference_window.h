#pragma once

#include <string>

#include "platform/desktop.h"

namespace kitbay::platform {

/// Receives the events of the dialog of update sources, on the user-interface thread.
class PreferenceWindowEvents {
 public:
  virtual ~PreferenceWindowEvents() = default;

  /// The window is being closed, by whatever means. Its controls can be read for the last time.
  virtual void Form_Unload() = 0;
  virtual void cmdPrefOk_Click() = 0;
  virtual void Command1_Click() = 0;
  virtual void cmdPrefClose_Click() = 0;

  /// A key was pressed in the text box; called before the box sees it.
  virtual void txtPrefUrl_KeyDown(int key_code) = 0;

  /// A key was pressed in the list.
  virtual void lstPrefURL_KeyDown(int key_code) = 0;

  /// A mouse button was released over the list.
  virtual void lstPrefURL_MouseUp() = 0;

  /// The selection changed, by whatever means: another item is selected, or none.
  virtual void lstPrefURL_SelectionChange() = 0;
};

/// The window of the dialog of update sources `frmPreference`: a text box, a list and three buttons
/// above a status bar. While it is not loaded, every member but `IsLoaded`, `Load` and `Unload`
/// fails with 91. Other failures are `base::Failure` too.
class PreferenceWindow {
 public:
  virtual ~PreferenceWindow() = default;

  virtual bool IsLoaded() const = 0;

  /// Creates the window, hidden and owned by `owner`, with which it is destroyed; events go to
  /// `events` from then on. The list is empty and the Remove button disabled. Does nothing if the
  /// window is loaded.
  virtual void Load(PreferenceWindowEvents& events, WindowHandle owner) = 0;

  /// Calls `PreferenceWindowEvents::Form_Unload` and destroys the window. Does nothing if the
  /// window is not loaded or is already being unloaded.
  virtual void Unload() = 0;

  /// Shows the window above the others, modeless.
  virtual void Show() = 0;

  virtual std::string UrlText() const = 0;
  virtual void SetUrlText(const std::string& text) = 0;
  virtual void FocusUrlBox() = 0;
  virtual void FocusAddButton() = 0;

  /// A disabled Remove button cannot keep the focus; the list gets it.
  virtual void EnableRemoveButton(bool enabled) = 0;

  /// Positions in the list count from 1; positions beyond its end fail with 9.
  virtual int ItemCount() const = 0;
  virtual std::string ItemText(int position) const = 0;
  virtual void AddItem(const std::string& text) = 0;

  /// If the item was selected, the item that takes its place is selected next, or the last one.
  virtual void RemoveItem(int position) = 0;

  /// The position of the selected item; 0 if none is selected.
  virtual int SelectedItem() const = 0;

  virtual void SetStatusText(const std::string& text) = 0;
};

}  // namespace kitbay::platform
