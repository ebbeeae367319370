#pragma once

#include <windows.h>

#include <memory>
#include <optional>
#include <string>

#include "platform/main_window.h"
#include "platform/win32/browser/browser_host.h"
#include "platform/win32/window/form_controls.h"
#include "platform/win32/window/message_loop.h"

namespace kitbay::platform::win32 {

/// Initialises OLE for the thread, because in-place activation needs more than COM.
class OleSession {
 public:
  OleSession();
  ~OleSession();
  OleSession(const OleSession&) = delete;
  OleSession& operator=(const OleSession&) = delete;
};

class Win32MainWindow final : public MainWindow, private KeyFilter, private BrowserOwner {
 public:
  explicit Win32MainWindow(Win32MessageLoop& loop);
  ~Win32MainWindow() override;

  WindowHandle Handle() const override;
  void Load(MainWindowEvents& events) override;
  void Unload() override;
  void Show() override;
  void Navigate(const std::string& path) override;
  void FitBrowser() override;
  std::shared_ptr<HtmlDocument> ConnectDocument(HtmlDocumentEvents& events) override;
  void DisconnectDocument() override;
  void SetHelpCursor(const std::string& path) override;
  Looks CurrentLooks() const override;
  void SetHelpFile(const std::string& topic) override;
  StatusBar& status_bar() override;
  ProgressBar& progress_bar() override;

 private:
  static LRESULT CALLBACK WindowProcedure(HWND window, UINT message, WPARAM wparam, LPARAM lparam);
  LRESULT HandleMessage(UINT message, WPARAM wparam, LPARAM lparam);
  void OnCommand(WPARAM wparam);
  void OnActivate(bool active);
  void OnFocus();
  void OnDpiChanged(int dpi, const RECT& suggested);
  void OnColoursChanged(UINT message, WPARAM wparam, LPARAM lparam);
  void OnMinMaxInfo(MINMAXINFO& info) const;

  bool HandleKey(MSG& message) override;
  bool HandleWheel(const MSG& message) override;
  bool HandleOwnKey(MSG& message);
  void MoveFocus(MSG& tab);

  void ZoomPage(int dpi);
  void PageComplete() override;
  void PageFailed() override;
  void FocusLeftPage(bool backwards) override;
  void FocusControl(HWND control);

  void CreateFormWindow();
  void Destroy();
  FormControls& LoadedControls();
  BrowserHost& LoadedBrowser();

  OleSession ole_;
  Win32MessageLoop& loop_;
  MainWindowEvents* events_ = nullptr;
  HWND window_ = nullptr;
  HWND last_focus_ = nullptr;
  bool is_unloading_ = false;
  int dots_per_inch_ = 0;
  std::optional<FormControls> controls_;
  std::unique_ptr<BrowserHost> browser_;
  std::string help_file_;
};

}  // namespace kitbay::platform::win32
