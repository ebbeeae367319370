#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <queue>
#include <string>
#include <utility>
#include <vector>

#include "base/failure.h"
#include "fakes/fake_html_document.h"
#include "platform/main_window.h"

namespace kitbay::fakes {

/// The calls that the window and its parts received, in order, as text: "SetPanelText 2 Ready".
class WindowCalls {
 public:
  /// Records the call, then throws if a test has arranged that calls of that member fail.
  void Enter(const std::string& member, const std::string& arguments = "") {
    calls_.push_back(member + (arguments.empty() ? "" : " " + arguments));
    if (failing_ && failing_->first == member) {
      throw base::Failure(failing_->second);
    }
  }

  const std::vector<std::string>& all() const { return calls_; }
  void Clear() { calls_.clear(); }

  /// From now on each call of `member` fails.
  void FailMember(const std::string& member, const base::Failure& failure) {
    failing_.emplace(member, failure);
  }
  void FailNothing() { failing_.reset(); }

 private:
  std::vector<std::string> calls_;
  std::optional<std::pair<std::string, base::Failure>> failing_;
};

class FakeStatusBar : public platform::StatusBar {
 public:
  explicit FakeStatusBar(WindowCalls& calls) : calls_(calls) {}

  std::string PanelText(int panel) const override { return Text(panel); }

  void SetPanelText(int panel, const std::string& text) override {
    calls_.Enter("SetPanelText", std::to_string(panel) + " " + text);
    Text(panel);
    texts_[static_cast<std::size_t>(panel - 1)] = text;
  }

  void Announce(int panel) override { announced.push_back(Text(panel)); }

  /// What screen readers were given to announce, in order.
  std::vector<std::string> announced;

  platform::Rectangle PanelRectangle(int panel) const override {
    Text(panel);
    return {100 * (panel - 1), 2, 100 * panel, 20};
  }

  void Clear() { texts_.assign(2, ""); }

 private:
  const std::string& Text(int panel) const {
    if (panel < 1 || static_cast<std::size_t>(panel) > texts_.size()) {
      throw base::Failure(base::RuntimeError::kSubscriptOutOfRange);
    }
    return texts_[static_cast<std::size_t>(panel - 1)];
  }

  WindowCalls& calls_;
  std::vector<std::string> texts_ = std::vector<std::string>(2);
};

class FakeProgressBar : public platform::ProgressBar {
 public:
  explicit FakeProgressBar(WindowCalls& calls) : calls_(calls) {}

  void SetParent(bool status_bar) override {
    calls_.Enter("SetParent", status_bar ? "status bar" : "window");
    in_status_bar_ = status_bar;
  }

  void Move(const platform::Rectangle& place) override {
    calls_.Enter("Move", std::to_string(place.left) + " " + std::to_string(place.top) + " " +
                             std::to_string(place.right) + " " + std::to_string(place.bottom));
    place_ = place;
  }

  void SetVisible(bool visible) override {
    calls_.Enter("SetVisible", visible ? "true" : "false");
    visible_ = visible;
  }

  void SetValue(int percent) override {
    calls_.Enter("SetValue", std::to_string(percent));
    value_ = percent < 0 ? 0 : percent > 100 ? 100 : percent;
  }

  bool in_status_bar() const { return in_status_bar_; }
  const platform::Rectangle& place() const { return place_; }
  bool visible() const { return visible_; }
  int value() const { return value_; }

 private:
  WindowCalls& calls_;
  bool in_status_bar_ = false;
  platform::Rectangle place_;
  bool visible_ = false;
  int value_ = 0;
};

/// A message loop whose messages are functions that a test posts. It ends when none is left, even
/// if it was not told to quit.
class FakeMessageLoop : public platform::MessageLoop {
 public:
  explicit FakeMessageLoop(WindowCalls& calls) : calls_(calls) {}

  void Run() override {
    calls_.Enter("Run");
    while (!messages_.empty()) {
      const std::function<void()> message = std::move(messages_.front());
      messages_.pop();
      message();
    }
  }

  void Quit() override {
    calls_.Enter("Quit");
    quit_ = true;
  }

  void Post(std::function<void()> message) { messages_.push(std::move(message)); }

  /// Whether it was told to quit.
  bool quit() const { return quit_; }

 private:
  WindowCalls& calls_;
  std::queue<std::function<void()>> messages_;
  bool quit_ = false;
};

/// A main window without a screen. Its page is the markup it was created with, whatever file is
/// shown; each `Navigate` starts a new document and makes the previous one stale. Tests raise the
/// window's events by calling `events()`, those of the page by `document()->Click`. A test that
/// needs no events may omit `Load`: the parts of the window exist from the start.
class FakeMainWindow : public platform::MainWindow {
 public:
  explicit FakeMainWindow(std::string page_markup) : page_markup_(std::move(page_markup)) {}

  platform::WindowHandle Handle() const override {
    return events_ == nullptr ? platform::WindowHandle{} : platform::WindowHandle{0x10042};
  }

  void Load(platform::MainWindowEvents& events) override {
    calls_.Enter("Load");
    if (events_ != nullptr) {
      return;
    }
    events_ = &events;
    is_unloaded_ = false;
    status_bar_.Clear();
  }

  void Unload() override {
    calls_.Enter("Unload");
    if (events_ == nullptr || unloading_) {
      return;
    }
    unloading_ = true;
    events_->Form_Unload();
    unloading_ = false;
    events_ = nullptr;
    is_unloaded_ = true;
    shown_ = false;
    LeavePage();
  }

  void Show() override {
    calls_.Enter("Show");
    RequireParts();
    shown_ = true;
  }

  void Navigate(const std::string& path) override {
    calls_.Enter("Navigate", path);
    RequireParts();
    LeavePage();
    document_ = std::make_shared<FakeHtmlDocument>(page_markup_, FolderUrl(path));
  }

  void FitBrowser() override {
    calls_.Enter("FitBrowser");
    RequireParts();
  }

  std::shared_ptr<platform::HtmlDocument> ConnectDocument(
      platform::HtmlDocumentEvents& events) override {
    calls_.Enter("ConnectDocument");
    if (!document_) {
      throw base::Failure(base::RuntimeError::kObjectVariableNotSet);
    }
    document_->SetEvents(&events);
    return document_;
  }

  void DisconnectDocument() override {
    calls_.Enter("DisconnectDocument");
    if (document_) {
      document_->SetEvents(nullptr);
    }
  }

  void SetHelpCursor(const std::string& path) override {
    calls_.Enter("SetHelpCursor", path);
    RequireParts();
  }
  platform::Looks CurrentLooks() const override { return looks; }
  platform::Looks looks;

  void SetHelpFile(const std::string& topic) override { calls_.Enter("SetHelpFile", topic); }

  FakeStatusBar& status_bar() override {
    RequireParts();
    return status_bar_;
  }
  FakeProgressBar& progress_bar() override {
    RequireParts();
    return progress_bar_;
  }
  FakeMessageLoop& message_loop() { return message_loop_; }

  WindowCalls& calls() { return calls_; }

  /// The receiver of the window's events; null while the window is not loaded.
  platform::MainWindowEvents* events() const { return events_; }

  /// The document of the page that is shown; null before `Navigate` and after `Unload`.
  const std::shared_ptr<FakeHtmlDocument>& document() const { return document_; }
  bool shown() const { return shown_; }

 private:
  void RequireParts() const {
    if (is_unloaded_) {
      throw base::Failure(base::RuntimeError::kObjectVariableNotSet);
    }
  }

  void LeavePage() {
    if (document_) {
      document_->MakeStale();
    }
    document_.reset();
  }

  static std::string FolderUrl(std::string path) {
    for (char& c : path) {
      if (c == '\\') {
        c = '/';
      }
    }
    return "file:///" + path.substr(0, path.rfind('/') + 1);
  }

  WindowCalls calls_;
  FakeStatusBar status_bar_{calls_};
  FakeProgressBar progress_bar_{calls_};
  FakeMessageLoop message_loop_{calls_};
  std::string page_markup_;
  platform::MainWindowEvents* events_ = nullptr;
  bool unloading_ = false;
  bool is_unloaded_ = false;
  bool shown_ = false;
  std::shared_ptr<FakeHtmlDocument> document_;
};

}  // namespace kitbay::fakes
