#pragma once

#include <cstdint>
#include <deque>
#include <map>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/failure.h"
#include "platform/desktop.h"

namespace kitbay::fakes {

/// A desktop that only records its calls, with windows and answers that a test adds.
class RecordingDesktop : public platform::Desktop {
 public:
  int PlatformId() const override;
  int ShowMessage(const std::string& text, const std::string& title, int style) override;
  void DisplayHelpTopic(const std::string& topic) override;
  void CloseAllHelp() override;
  void PassForegroundRight() override;
  void SetWindowPos(platform::WindowHandle window, std::intptr_t insert_after,
                    unsigned flags) override;
  void ShowWindow(platform::WindowHandle window, int command) override;
  void SetActiveWindow(platform::WindowHandle window) override;
  platform::WindowHandle FindTopWindow(const std::string& window_class,
                                       const std::string& caption) override;
  void SendClose(platform::WindowHandle window) override;
  std::optional<int> ProgramBits(const std::string& path) const override;
  void StartProgram(const std::string& path) override;
  void StartProgramAsUser(const std::string& path) override;

  // For tests to arrange.

  void SetPlatformId(int platform_id) { platform_id_ = platform_id; }

  /// Adds a program with that bitness at `path`; other paths have none. Queries are not recorded.
  void AddProgram(const std::string& path, int bits) { programs_[path] = bits; }

  /// Adds an answer for the next message box without one; without an answer, the user presses OK.
  void AddAnswer(int answer) { answers_.push_back(answer); }

  /// Adds a top-level window to the desktop.
  platform::WindowHandle AddWindow(const std::string& window_class, const std::string& caption);

  /// The window ignores the close message.
  void IgnoreClose(platform::WindowHandle window) { windows_.at(window.value).stays = true; }

  /// From now on, showing help or starting a program fails with `failure`.
  void FailHelp(const base::Failure& failure) { help_failure_ = failure; }
  void FailStartProgram(const base::Failure& failure) { start_failure_ = failure; }

  // For tests to inspect.

  bool HasWindow(platform::WindowHandle window) const { return windows_.contains(window.value); }

  /// Every call in order, its name and then its arguments: texts in "[" and "]", numbers in
  /// decimal. For example "PlatformId", "ShowMessage [text] [title] 1", "DisplayHelpTopic [topic]",
  /// "SetWindowPos 1 -1 3", "ShowWindow 1 9", "FindTopWindow [class] [caption]", "SendClose 1".
  const std::vector<std::string>& calls() const { return calls_; }

 private:
  struct Window {
    std::string window_class;
    std::string caption;
    bool stays = false;
  };

  int platform_id_ = platform::kPlatformNt;
  std::map<std::string, int> programs_;  ///< bitness by path
  std::deque<int> answers_;
  std::map<std::uintptr_t, Window> windows_;
  std::uintptr_t next_window_ = 0x10001;
  std::optional<base::Failure> help_failure_;
  std::optional<base::Failure> start_failure_;
  mutable std::vector<std::string> calls_;
};

}  // namespace kitbay::fakes
