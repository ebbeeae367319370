#pragma once

#include <memory>
#include <string>

#include "platform/html_document.h"
#include "platform/main_window.h"

namespace kitbay::fakes {

/// A page without elements, for programs that only need procedures to find nothing.
class BlankDocument : public platform::HtmlDocument {
 public:
  platform::HtmlNodeRef AllItem(const std::string& /*id*/) const override { return nullptr; }
  std::unique_ptr<platform::HtmlNodeList> GetElementsByName(
      const std::string& /*name*/) const override {
    return std::make_unique<NoNodes>();
  }
  platform::HtmlNodeRef CreateElement(const std::string& /*start_tag*/) override { return nullptr; }
  int DocumentMode() const override { return 5; }
  int BodyClientHeight() const override { return 0; }
  platform::HtmlNodeRef ActiveElement() const override { return nullptr; }
  platform::HtmlNodeRef EventSource() const override { return nullptr; }
  platform::KeyPress EventKey() const override { return {}; }

 private:
  class NoNodes : public platform::HtmlNodeList {
   public:
    int Length() const override { return 0; }
    platform::HtmlNodeRef Item(int /*index*/) const override { return nullptr; }
  };
};

/// A main window that shows nothing.
class BlankWindow : public platform::MainWindow {
 public:
  platform::WindowHandle Handle() const override { return {}; }
  void Load(platform::MainWindowEvents& /*events*/) override {}
  void Unload() override {}
  void Show() override {}
  void Navigate(const std::string& /*path*/) override {}
  void FitBrowser() override {}
  std::shared_ptr<platform::HtmlDocument> ConnectDocument(
      platform::HtmlDocumentEvents& /*events*/) override {
    return std::make_shared<BlankDocument>();
  }
  void DisconnectDocument() override {}
  void SetHelpCursor(const std::string& /*path*/) override {}
  void SetHelpFile(const std::string& /*topic*/) override {}
  platform::Looks CurrentLooks() const override { return {}; }
  platform::StatusBar& status_bar() override { return status_bar_; }
  platform::ProgressBar& progress_bar() override { return progress_bar_; }

 private:
  class BlankStatusBar : public platform::StatusBar {
   public:
    std::string PanelText(int /*panel*/) const override { return {}; }
    void SetPanelText(int /*panel*/, const std::string& /*text*/) override {}
    void Announce(int /*panel*/) override {}
    platform::Rectangle PanelRectangle(int /*panel*/) const override { return {}; }
  };
  class BlankProgressBar : public platform::ProgressBar {
   public:
    void SetParent(bool /*status_bar*/) override {}
    void Move(const platform::Rectangle& /*place*/) override {}
    void SetVisible(bool /*visible*/) override {}
    void SetValue(int /*percent*/) override {}
  };

  BlankStatusBar status_bar_;
  BlankProgressBar progress_bar_;
};

}  // namespace kitbay::fakes
