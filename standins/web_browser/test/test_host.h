#pragma once

#include <exdisp.h>
#include <mshtmhst.h>
#include <oleidl.h>
#include <windows.h>
#include <wrl/client.h>

#include <functional>
#include <string>
#include <vector>

#include "com_object.h"

namespace kitbay::web_browser {

/** Images are allowed, but not scripts, Java, ActiveX or frames. */
inline constexpr int kMarkupOnly = 0x10 | 0x80 | 0x100 | 0x200 | 0x400 | 0x1000;

/** What a host answers when the control asks. */
struct HostAnswers {
  int download_control = kMarkupOnly;
  DWORD flags = DOCHOSTUIFLAG_NO3DBORDER;
  bool is_in_use = true;
  bool shows_menu = false;             // In place of the control's own.
  IDropTarget* drop_target = nullptr;  // None: the control's own.
};

/** A sink that records its events, and answers as a test requires. */
class EventSink final : public ComObject<IDispatch> {
 public:
  struct Heard {
    DISPID id;
    std::wstring url;
    IDispatch* browser;  // Only to compare.
  };
  /** Called for each event; its result is the event's result. */
  using Answer = std::function<bool(DISPID, DISPPARAMS*)>;

  explicit EventSink(Answer answer) : answer_(std::move(answer)) {}
  const std::vector<Heard>& heard() const { return heard_; }
  bool HasHeard(DISPID id) const;
  /** The thread on which the last event came. */
  DWORD thread() const { return thread_; }

  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override { return E_NOTIMPL; }
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO*, UINT*) override;

 private:
  Answer answer_;
  std::vector<Heard> heard_;
  DWORD thread_ = 0;
};

/** A sink that listens to a source for as long as the object lives. */
class Listening {
 public:
  /** `source` is the browser or a document. Throws std::runtime_error if it has no such events. */
  Listening(IUnknown* source, REFIID events, EventSink::Answer answer = nullptr);
  ~Listening();
  Listening(const Listening&) = delete;
  Listening& operator=(const Listening&) = delete;

  const EventSink* operator->() const { return sink_.Get(); }

 private:
  Microsoft::WRL::ComPtr<EventSink> sink_;
  Microsoft::WRL::ComPtr<IConnectionPoint> point_;
  DWORD cookie_ = 0;
};

/** A window that hosts the control, which need not be registered. */
class TestHost {
 public:
  static constexpr int kWidth = 640;
  static constexpr int kHeight = 480;

  explicit TestHost(const HostAnswers& answers = {});
  ~TestHost();
  TestHost(const TestHost&) = delete;
  TestHost& operator=(const TestHost&) = delete;

  IWebBrowser2* browser() const { return browser_.Get(); }
  HWND control_window() const;
  Microsoft::WRL::ComPtr<IDispatch> Document() const;

  /** Handles messages until the condition holds; throws std::runtime_error after 300 s. */
  static void Until(const std::function<bool()>& holds);

  /** Navigates to a file with that markup and waits until it is complete. */
  void Load(const std::string& markup);
  /** Creates a file in the host's own folder and returns its path. */
  std::wstring Write(const wchar_t* name, const std::string& content) const;

  /**
   * Presses and releases the left button at the middle of an element, as messages to the window.
   */
  void Click(IDispatch* element) const;
  void Mouse(UINT message, POINT point) const;
  static POINT Middle(IDispatch* element);

 private:
  class Site;

  std::wstring folder_;
  HWND window_ = nullptr;
  Microsoft::WRL::ComPtr<Site> site_;
  Microsoft::WRL::ComPtr<IWebBrowser2> browser_;
};

}  // namespace kitbay::web_browser
