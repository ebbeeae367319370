#pragma once

#include <memory>
#include <string>

#include "platform/desktop.h"
#include "platform/html_document.h"

namespace kitbay::platform {

/// A rectangle in pixels.
struct Rectangle {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;
  friend bool operator==(const Rectangle&, const Rectangle&) = default;
};

/// The main window's status bar. Panels count from 1: the progress bar lies on the first, the
/// second shows status texts.
inline constexpr int kProgressPanel = 1;
inline constexpr int kStatusPanel = 2;

/// The main window's status bar.
class StatusBar {
 public:
  virtual ~StatusBar() = default;
  virtual std::string PanelText(int panel) const = 0;
  virtual void SetPanelText(int panel, const std::string& text) = 0;

  /// Makes screen readers announce what the panel shows.
  virtual void Announce(int panel) = 0;

  /// The panel's place within the status bar.
  virtual Rectangle PanelRectangle(int panel) const = 0;
};

/// Where the progress bar lies on its panel of the status bar: slim and vertically centred, so that
/// at rest it looks like a groove and not an empty box.
inline Rectangle ProgressBarPlace(const Rectangle& panel) {
  const int room = (panel.bottom - panel.top) / 3;
  return {panel.left + room, panel.top + room, panel.right - room, panel.bottom - room};
}

/// The main window's progress bar.
class ProgressBar {
 public:
  virtual ~ProgressBar() = default;

  /// Makes the bar a child of the status bar, or of the main window again.
  virtual void SetParent(bool status_bar) = 0;
  virtual void Move(const Rectangle& place) = 0;
  virtual void SetVisible(bool visible) = 0;

  /// Takes 0 to 100; values outside are clamped.
  virtual void SetValue(int percent) = 0;
};

/// How windows currently look: whether the user's colours are light text on a dark background, and
/// the resolution of the window's screen.
struct Looks {
  bool has_dark_colours = false;
  int dots_per_inch = 96;
};

/// Receives the events of the main window, on the user-interface thread.
class MainWindowEvents {
 public:
  virtual ~MainWindowEvents() = default;
  virtual void Form_Unload() = 0;
  virtual void CmdClose_Click() = 0;
  virtual void cmdPreference_Click() = 0;

  /// A key was pressed anywhere in the window; called before the window's controls see it.
  virtual void Form_KeyDown(int key_code) = 0;
  virtual void lblHelp_Click() = 0;
  virtual void lblHelp_MouseMove() = 0;
  virtual void WebBrowser1_DocumentComplete() = 0;

  /// The page file cannot be shown; the control shows its own error page.
  virtual void WebBrowser1_NavigateError() = 0;

  /// The user's colours or the window's resolution have changed.
  virtual void LooksChanged() = 0;
};

/// The main window with its browser control, status bar, progress bar, buttons and help label.
/// Failures are `base::Failure`.
class MainWindow {
 public:
  virtual ~MainWindow() = default;

  virtual WindowHandle Handle() const = 0;

  /// Creates the window, hidden, and its controls; events go to `events` from then on.
  virtual void Load(MainWindowEvents& events) = 0;

  /// Calls `MainWindowEvents::Form_Unload`, then destroys the window. Does nothing if the window is
  /// not loaded or is already being unloaded.
  virtual void Unload() = 0;

  virtual void Show() = 0;

  /// Shows the page file at `path` in the browser control, which follows no other address.
  virtual void Navigate(const std::string& path) = 0;

  /// Fits the browser control to the window.
  virtual void FitBrowser() = 0;

  /// The document of the page being shown. Its events go to `events` until the next page, or until
  /// the window is unloaded.
  virtual std::shared_ptr<HtmlDocument> ConnectDocument(HtmlDocumentEvents& events) = 0;
  virtual void DisconnectDocument() = 0;

  /// Loads the cursor file at `path` and shows it over the help label. Fails with 53 if there is no
  /// such file, with 481 if it is not a cursor.
  virtual void SetHelpCursor(const std::string& path) = 0;

  virtual Looks CurrentLooks() const = 0;

  /// The topic that F1 opens.
  virtual void SetHelpFile(const std::string& topic) = 0;

  virtual StatusBar& status_bar() = 0;
  virtual ProgressBar& progress_bar() = 0;
};

/// The program's message loop.
class MessageLoop {
 public:
  virtual ~MessageLoop() = default;

  /// Handles messages until `Quit`.
  virtual void Run() = 0;
  virtual void Quit() = 0;
};

}  // namespace kitbay::platform
