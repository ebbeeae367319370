#pragma once

#include <string>

#include "platform/desktop.h"

namespace kitbay::platform {

/// Receives the events of the dialog of update sources, on the user-interface thread.
class PreferenceWindowEvents {
 public:
  virtual ~PreferenceWindowEvents() = default;

  /// The window goes, whoever closed it. Its controls can be asked for the last time.
  virtual void Form_Unload() = 0;
  virtual void cmdPrefOk_Click() = 0;
  virtual void Command1_Click() = 0;
  virtual void cmdPrefClose_Click() = 0;

  /// A key went down in the text box, before the box sees it.
  virtual void txtPrefUrl_KeyDown(int key_code) = 0;

  /// A key went down in the list.
  virtual void lstPrefURL_KeyDown(int key_code) = 0;

  /// A mouse button was let go over the list.
  virtual void lstPrefURL_MouseUp() = 0;

  /// Another item of the list was selected, or none is any more; by whatever means.
  virtual void lstPrefURL_SelectionChange() = 0;
};

/// The window of the dialog of update sources `frmPreference`: a text box, a list and three buttons
/// over a status bar. Every member but `IsLoaded`, `Load` and `Unload` fails with 91 while it is
/// not loaded; other failures are `base::Failure` too.
class PreferenceWindow {
 public:
  virtual ~PreferenceWindow() = default;

  virtual bool IsLoaded() const = 0;

  /// Creates the window, hidden and owned by `owner`, with which it goes; events go to `events`
  /// from then on. The list is empty, and the Remove button disabled. Does nothing when it is
  /// loaded.
  virtual void Load(PreferenceWindowEvents& events, WindowHandle owner) = 0;

  /// Tells `PreferenceWindowEvents::Form_Unload` and destroys the window. Does nothing when the
  /// window is not loaded or is being unloaded already.
  virtual void Unload() = 0;

  /// Shows the window above the others, not modal.
  virtual void Show() = 0;

  virtual std::string UrlText() const = 0;
  virtual void SetUrlText(const std::string& text) = 0;
  virtual void FocusUrlBox() = 0;
  virtual void FocusAddButton() = 0;

  /// While it is disabled the Remove button cannot hold the focus; the list gets it.
  virtual void EnableRemoveButton(bool enabled) = 0;

  /// The items of the list count from 1. Positions beyond fail with 9.
  virtual int ItemCount() const = 0;
  virtual std::string ItemText(int position) const = 0;
  virtual void AddItem(const std::string& text) = 0;

  /// When the item was selected, the one that takes its place is, or the last one.
  virtual void RemoveItem(int position) = 0;

  /// The position of the selected item; 0 when none is.
  virtual int SelectedItem() const = 0;

  virtual void SetStatusText(const std::string& text) = 0;
};

}  // namespace kitbay::platform
