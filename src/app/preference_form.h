#pragma once

namespace kitbay::app {

/// The dialog in which the user edits the update sources, as the main window uses it.
class PreferenceForm {
 public:
  virtual ~PreferenceForm() = default;

  /// Shows the dialog, modeless and owned by the main window.
  virtual void Show() = 0;
  virtual void FocusUrlBox() = 0;

  /// Closes the dialog if it is open.
  virtual void Unload() = 0;
};

}  // namespace kitbay::app
