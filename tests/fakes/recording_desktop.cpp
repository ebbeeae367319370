#include "fakes/recording_desktop.h"

#include "fakes/call_text.h"
#include "fakes/windows_path.h"

namespace kitbay::fakes {

using platform::WindowHandle;

namespace {

template <typename Number>
std::string Spaced(Number number) {
  return " " + std::to_string(number);
}

}  // namespace

int RecordingDesktop::PlatformId() const {
  calls_.emplace_back("PlatformId");
  return platform_id_;
}

int RecordingDesktop::ShowMessage(const std::string& text, const std::string& title, int style) {
  calls_.push_back("ShowMessage" + Bracketed(text) + Bracketed(title) + Spaced(style));
  if (answers_.empty()) {
    return platform::kAnswerOk;
  }
  const int answer = answers_.front();
  answers_.pop_front();
  return answer;
}

void RecordingDesktop::DisplayHelpTopic(const std::string& topic) {
  calls_.push_back("DisplayHelpTopic" + Bracketed(topic));
  if (help_failure_) {
    throw *help_failure_;
  }
}

void RecordingDesktop::CloseAllHelp() { calls_.emplace_back("CloseAllHelp"); }

void RecordingDesktop::PassForegroundRight() { calls_.emplace_back("PassForegroundRight"); }

void RecordingDesktop::SetWindowPos(WindowHandle window, std::intptr_t insert_after,
                                    unsigned flags) {
  calls_.push_back("SetWindowPos" + Spaced(window.value) + Spaced(insert_after) + Spaced(flags));
}

void RecordingDesktop::ShowWindow(WindowHandle window, int command) {
  calls_.push_back("ShowWindow" + Spaced(window.value) + Spaced(command));
}

void RecordingDesktop::SetActiveWindow(WindowHandle window) {
  calls_.push_back("SetActiveWindow" + Spaced(window.value));
}

WindowHandle RecordingDesktop::FindTopWindow(const std::string& window_class,
                                             const std::string& caption) {
  calls_.push_back("FindTopWindow" + Bracketed(window_class) + Bracketed(caption));
  for (const auto& [handle, window] : windows_) {
    if (FoldCase(window.window_class) == FoldCase(window_class) &&
        FoldCase(window.caption) == FoldCase(caption)) {
      return {handle};
    }
  }
  return {};
}

void RecordingDesktop::SendClose(WindowHandle window) {
  calls_.push_back("SendClose" + Spaced(window.value));
  const auto at = windows_.find(window.value);
  if (at != windows_.end() && !at->second.stays) {
    windows_.erase(at);
  }
}

std::optional<int> RecordingDesktop::ProgramBits(const std::string& path) const {
  const auto program = programs_.find(path);
  return program == programs_.end() ? std::nullopt : std::optional(program->second);
}

void RecordingDesktop::StartProgram(const std::string& path) {
  calls_.push_back("StartProgram" + Bracketed(path));
  if (start_failure_) {
    throw *start_failure_;
  }
}

void RecordingDesktop::StartProgramAsUser(const std::string& path) {
  calls_.push_back("StartProgramAsUser" + Bracketed(path));
  if (start_failure_) {
    throw *start_failure_;
  }
}

WindowHandle RecordingDesktop::AddWindow(const std::string& window_class,
                                         const std::string& caption) {
  const WindowHandle window{next_window_};
  next_window_ += 2;
  windows_[window.value] = {window_class, caption};
  return window;
}

}  // namespace kitbay::fakes
