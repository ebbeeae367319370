#pragma once

#include <cstdint>
#include <optional>
#include <string>

namespace kitbay::platform {

/// A top-level window of any process; 0 is none.
struct WindowHandle {
  std::uintptr_t value = 0;
  friend bool operator==(const WindowHandle&, const WindowHandle&) = default;
};

/// Styles and answers of message boxes.
inline constexpr int kOkOnly = 0;
inline constexpr int kOkCancel = 1;
inline constexpr int kInformation = 64;
inline constexpr int kAnswerOk = 1;
inline constexpr int kAnswerCancel = 2;

/// The title of every message box.
inline constexpr const char* kMessageTitle = "Kitbay";

/// Window positions, commands and flags, with the system's own values.
inline constexpr std::intptr_t kTopmost = -1;
inline constexpr std::intptr_t kNotTopmost = -2;
inline constexpr unsigned kNoSize = 1;
inline constexpr unsigned kNoMove = 2;
inline constexpr int kShow = 5;
inline constexpr int kRestore = 9;

inline constexpr int kPlatformNt = 2;

/// How long the caller waits for a window to handle the close message.
inline constexpr unsigned kClosePatienceMs = 3000;

/// How long the caller waits for a program to end whose window has closed.
inline constexpr unsigned kEndPatienceMs = 10000;

/// What Kitbay needs from the desktop and from other programs.
class Desktop {
 public:
  virtual ~Desktop() = default;

  /// The platform identifier of the operating system's version.
  virtual int PlatformId() const = 0;

  /// Shows a message box over the program's active window and waits for the answer.
  virtual int ShowMessage(const std::string& text, const std::string& title, int style) = 0;

  /// Opens a help topic ("file.chm::/page.html") with the desktop as owner. Throws `base::Failure`
  /// if the system has no help viewer or the topic cannot be shown.
  virtual void DisplayHelpTopic(const std::string& topic) = 0;
  virtual void CloseAllHelp() = 0;

  /// Lets any process take the foreground, if this one may.
  virtual void PassForegroundRight() = 0;

  virtual void SetWindowPos(WindowHandle window, std::intptr_t insert_after, unsigned flags) = 0;
  virtual void ShowWindow(WindowHandle window, int command) = 0;
  virtual void SetActiveWindow(WindowHandle window) = 0;

  /// The top-level window of that class and caption; 0 if there is none.
  virtual WindowHandle FindTopWindow(const std::string& window_class,
                                     const std::string& caption) = 0;

  /// Sends the close message and waits up to `kClosePatienceMs` until the window has handled it: a
  /// window may hang, or ask its user first. If the window has disappeared by then and belongs to
  /// another program, waits up to `kEndPatienceMs` for that program to end.
  virtual void SendClose(WindowHandle window) = 0;

  /// The bitness of the program at `path`, 32 or 64; empty if there is no such program.
  virtual std::optional<int> ProgramBits(const std::string& path) const = 0;

  /// Starts a program, shown normally and with focus, without waiting. Throws `base::Failure` if it
  /// cannot be started (53 if there is no such file).
  virtual void StartProgram(const std::string& path) = 0;

  /// Does the same with the rights of the desktop's user, for an elevated process. Also throws
  /// `base::Failure` if the desktop's shell does not do it.
  virtual void StartProgramAsUser(const std::string& path) = 0;
};

}  // namespace kitbay::platform
