// The control in a window of a host, with a real page behind it.
#include <exdispid.h>
#include <gmock/gmock.h>
#include <mshtml.h>
#include <olectl.h>

#include <cguid.h>
#include <mshtmdid.h>

#include "dropped_file.h"
#include "page_calls.h"
#include "test_host.h"

namespace kitbay::web_browser {
namespace {

using Microsoft::WRL::ComPtr;
using testing::ElementsAre;
using testing::EndsWith;

constexpr DISPID kClick = DISPID_HTMLDOCUMENTEVENTS2_ONCLICK;
constexpr DISPID kKeyDown = DISPID_HTMLDOCUMENTEVENTS2_ONKEYDOWN;
constexpr auto kDragStart = static_cast<DISPID>(DISPID_HTMLDOCUMENTEVENTS2_ONDRAGSTART);

constexpr char kList[] =
    "<html><body style='margin:0'><div id=list></div><div id=other>other</div></body></html>";

/** One browser for all tests, because a start takes about a second. */
class Page : public testing::Test {
 protected:
  static void SetUpTestSuite() {
    OleInitialize(nullptr);
    host_ = std::make_unique<TestHost>();
  }
  static void TearDownTestSuite() {
    host_.reset();
    OleUninitialize();
  }

  static std::unique_ptr<TestHost> host_;
};

std::unique_ptr<TestHost> Page::host_;

/** Closes the menus of this thread, and knows whether there was one. */
class MenuWatch {
 public:
  MenuWatch() : timer_(SetTimer(nullptr, 0, kIntervalMs, Look)) { has_seen_ = false; }
  ~MenuWatch() { KillTimer(nullptr, timer_); }
  MenuWatch(const MenuWatch&) = delete;
  MenuWatch& operator=(const MenuWatch&) = delete;

  bool has_seen() const { return has_seen_; }

 private:
  static constexpr UINT kIntervalMs = 20;

  static void CALLBACK Look(HWND, UINT, UINT_PTR, DWORD) {
    if (FindWindowW(L"#32768", nullptr) != nullptr) {
      has_seen_ = true;
      EndMenu();
    }
  }

  static inline bool has_seen_ = false;  // The system passes the timer nothing else.
  UINT_PTR timer_;
};

ComPtr<IDispatch> Child(IDispatch* element, int index) {
  return Get(element, L"childNodes", {index}).Object();
}

/** A row as Kitbay adds it: created from a start tag, filled, appended. */
void AddRow(IDispatch* document, int number) {
  const std::wstring id = std::to_wstring(number);
  const ComPtr<IDispatch> row = Call(document, L"createElement",
                                     {(L"<div id =" + id + L" style='padding-top:5pt;'>").c_str()})
                                    .Object();
  Call(row.Get(), L"insertAdjacentHTML",
       {L"afterBegin",
        (L"<span id =" + id + L"><font>Name</font><font>Version 1</font></span>").c_str()});
  Call(row.Get(), L"insertAdjacentHTML",
       {L"beforeEnd", L"<div><input type='button' id='b' value='Remove'></div>"});
  Call(ById(document, L"list").Get(), L"appendChild", {row.Get()});
}

TEST_F(Page, NavigationIsToldInItsOrderWithThePath) {
  const Listening sink(host_->browser(), DIID_DWebBrowserEvents2);
  host_->Load(kList);
  std::vector<DISPID> ids;
  for (const EventSink::Heard& event : sink->heard()) {
    ids.push_back(event.id);
    if (event.id != DISPID_FILEDOWNLOAD) {
      EXPECT_THAT(event.url, EndsWith(L"\\page.html"));
    }
  }
  EXPECT_THAT(ids, ElementsAre(DISPID_BEFORENAVIGATE2, DISPID_FILEDOWNLOAD,
                               DISPID_NAVIGATECOMPLETE2, DISPID_DOCUMENTCOMPLETE));
  BSTR url = nullptr;
  ASSERT_EQ(host_->browser()->get_LocationURL(&url), S_OK);
  EXPECT_THAT(std::wstring(url), EndsWith(L"/page.html"));
  SysFreeString(url);
  READYSTATE state = READYSTATE_UNINITIALIZED;
  ASSERT_EQ(host_->browser()->get_ReadyState(&state), S_OK);
  EXPECT_EQ(state, READYSTATE_COMPLETE);
}

TEST_F(Page, CancelledNavigationKeepsTheDocument) {
  host_->Load(kList);
  const std::wstring target = host_->Write(L"target.html", "<p id=target>");
  const Listening sink(host_->browser(), DIID_DWebBrowserEvents2, [](DISPID id, DISPPARAMS* told) {
    if (id == DISPID_BEFORENAVIGATE2) {
      *told->rgvarg[0].pboolVal = VARIANT_TRUE;
    }
    return true;
  });
  host_->browser()->Navigate(Value(target.c_str()).get().bstrVal, nullptr, nullptr, nullptr,
                             nullptr);
  TestHost::Until([&] { return sink->HasHeard(DISPID_BEFORENAVIGATE2); });
  EXPECT_NE(ById(host_->Document().Get(), L"list"), nullptr);
}

TEST_F(Page, RowsAreFilledAndReadBack) {
  host_->Load(kList);
  const ComPtr<IDispatch> document = host_->Document();
  AddRow(document.Get(), 7);
  const ComPtr<IDispatch> list = ById(document.Get(), L"list");
  EXPECT_EQ(
      Get(list.Get(), L"innerHTML").Text(),
      L"<div id=\"7\" style=\"padding-top:5pt;\"><span id=\"7\"><font>Name</font>"
      L"<font>Version 1</font></span><div><input type=\"button\" id=\"b\" value=\"Remove\"></div>"
      L"</div>");
  const ComPtr<IDispatch> row = Child(list.Get(), 0);
  Put(Child(Child(row.Get(), 0).Get(), 1).Get(), L"innerText", L"Version \u00e4 \u20ac");
  EXPECT_EQ(Get(Child(row.Get(), 0).Get(), L"innerText").Text(), L"NameVersion \u00e4 \u20ac");
  const ComPtr<IDispatch> named = Call(document.Get(), L"getElementsByName", {L"7"}).Object();
  EXPECT_EQ(Get(named.Get(), L"length").Number(), 2);
  Call(row.Get(), L"removeNode", {true});
  EXPECT_EQ(Get(list.Get(), L"innerHTML").Text(), L"");
}

TEST_F(Page, HalfOfAPairBecomesTheReplacementCharacterOnBothWays) {
  host_->Load("<html><body><div id=text>&#x1F600;</div></body></html>");
  const ComPtr<IDispatch> element = ById(host_->Document().Get(), L"text");
  const ComPtr<IDispatch> text = GetObject(element.Get(), L"firstChild");
  EXPECT_EQ(Call(text.Get(), L"substringData", {0, 2}).Text(), L"\xd83d\xde00");
  EXPECT_EQ(Call(text.Get(), L"substringData", {0, 1}).Text(), L"\xfffd");
  Put(element.Get(), L"innerText", L"\\ud83d \xd83d");
  EXPECT_EQ(Get(element.Get(), L"innerText").Text(), L"\\ud83d \xfffd");
}

TEST_F(Page, ACollectionIsEnumerated) {
  host_->Load("<html><body><div id=list><b></b><i></i><u></u></div></body></html>");
  const ComPtr<IDispatch> children =
      GetObject(ById(host_->Document().Get(), L"list").Get(), L"children");
  DISPPARAMS none = {};
  Value result;
  ASSERT_EQ(children->Invoke(DISPID_NEWENUM, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET,
                             &none, result.Receive(), nullptr, nullptr),
            S_OK);
  ComPtr<IEnumVARIANT> members;
  ASSERT_EQ(result.get().punkVal->QueryInterface(IID_IEnumVARIANT,
                                                 reinterpret_cast<void**>(members.GetAddressOf())),
            S_OK);
  Value two[2];
  ULONG fetched = 0;
  ASSERT_EQ(members->Next(2, two[0].Receive(), &fetched), S_OK);
  EXPECT_EQ(fetched, 2U);
  EXPECT_EQ(Get(two[1].Object().Get(), L"tagName").Text(), L"I");
  Value rest[2];
  ASSERT_EQ(members->Next(2, rest[0].Receive(), &fetched), S_FALSE);
  EXPECT_EQ(fetched, 1U);
  EXPECT_EQ(Get(rest[0].Object().Get(), L"tagName").Text(), L"U");
}

TEST_F(Page, BodyMeasuresTheControl) {
  host_->Load(kList);
  const ComPtr<IDispatch> body = GetObject(host_->Document().Get(), L"body");
  EXPECT_EQ(Get(body.Get(), L"clientHeight").Number(), TestHost::kHeight);
}

TEST_F(Page, SameNodeIsTheSameObject) {
  host_->Load(kList);
  const ComPtr<IDispatch> document = host_->Document();
  EXPECT_EQ(ById(document.Get(), L"list"), ById(document.Get(), L"list"));
  EXPECT_EQ(document, host_->Document());
  const ComPtr<IDispatch> body = GetObject(document.Get(), L"body");
  EXPECT_EQ(GetObject(ById(document.Get(), L"list").Get(), L"parentElement"), body);
}

TEST_F(Page, AbsentElementIsAnObjectThatIsNot) {
  host_->Load(kList);
  Value result = Call(GetObject(host_->Document().Get(), L"all").Get(), L"item", {L"nobody"});
  EXPECT_EQ(result.type(), VT_DISPATCH);
  EXPECT_EQ(result.Object(), nullptr);
}

TEST_F(Page, UnknownMemberIsNotFound) {
  host_->Load(kList);
  Value result;
  EXPECT_EQ(Try(host_->Document().Get(), L"noSuchMember", DISPATCH_PROPERTYGET, {}, &result),
            DISP_E_MEMBERNOTFOUND);
}

TEST_F(Page, FailureInsideThePageIsAnException) {
  host_->Load(kList);
  const ComPtr<IDispatch> list = ById(host_->Document().Get(), L"list");
  Value result;
  const HRESULT code =
      Try(list.Get(), L"insertAdjacentHTML", DISPATCH_METHOD, {L"nowhere", L"x"}, &result);
  EXPECT_EQ(code, E_FAIL);  // The caller passed no place for the exception's details.
}

TEST_F(Page, ObjectOfAnEarlierPageIsDisconnected) {
  host_->Load(kList);
  const ComPtr<IDispatch> list = ById(host_->Document().Get(), L"list");
  host_->Load(kList);
  Value result;
  EXPECT_EQ(Try(list.Get(), L"id", DISPATCH_PROPERTYGET, {}, &result), RPC_E_DISCONNECTED);
}

TEST_F(Page, ObjectOfAnEarlierPageIsNoArgument) {
  host_->Load(kList);
  const ComPtr<IDispatch> list = ById(host_->Document().Get(), L"list");
  host_->Load(kList);
  const ComPtr<IDispatch> body = GetObject(host_->Document().Get(), L"body");
  Value result;
  EXPECT_EQ(Try(body.Get(), L"appendChild", DISPATCH_METHOD, {list.Get()}, &result),
            DISP_E_TYPEMISMATCH);
}

TEST_F(Page, ClickReachesTheSinkOnTheHostsThreadWithItsElement) {
  host_->Load(kList);
  const ComPtr<IDispatch> document = host_->Document();
  AddRow(document.Get(), 7);
  std::wstring clicked;
  const Listening sink(document.Get(), __uuidof(HTMLDocumentEvents), [&](DISPID id, DISPPARAMS*) {
    if (id != kClick) {
      return true;
    }
    const ComPtr<IDispatch> window = GetObject(document.Get(), L"parentWindow");
    const ComPtr<IDispatch> event = GetObject(window.Get(), L"event");
    clicked = Get(GetObject(event.Get(), L"srcElement").Get(), L"Value").Text();
    return true;
  });
  host_->Click(ById(document.Get(), L"b").Get());
  TestHost::Until([&] { return !clicked.empty(); });
  EXPECT_EQ(clicked, L"Remove");
  EXPECT_EQ(sink->thread(), GetCurrentThreadId());
  const ComPtr<IDispatch> window = GetObject(document.Get(), L"parentWindow");
  EXPECT_EQ(GetObject(window.Get(), L"event"), nullptr);
}

TEST_F(Page, SinkOfTheSecondKindGetsTheEventAsAnArgument) {
  host_->Load(kList);
  const ComPtr<IDispatch> document = host_->Document();
  std::wstring clicked;
  const Listening sink(
      document.Get(), __uuidof(HTMLDocumentEvents2), [&](DISPID id, DISPPARAMS* told) {
        if (id != kClick || told->cArgs != 1) {
          return true;
        }
        clicked = Get(GetObject(told->rgvarg[0].pdispVal, L"srcElement").Get(), L"id").Text();
        return true;
      });
  host_->Click(ById(document.Get(), L"other").Get());
  TestHost::Until([&] { return !clicked.empty(); });
  EXPECT_EQ(clicked, L"other");
}

TEST_F(Page, DragIsToldAndDoesNotClick) {
  host_->Load("<body style='margin:0'><a id=link href='x.html'><b>drag me</b></a><p id=p>end</p>");
  const ComPtr<IDispatch> document = host_->Document();
  const Listening sink(document.Get(), __uuidof(HTMLDocumentEvents),
                       [](DISPID id, DISPPARAMS*) { return id != kDragStart; });
  const POINT from = TestHost::Middle(ById(document.Get(), L"link").Get());
  host_->Mouse(WM_LBUTTONDOWN, from);
  for (int step = 5; step <= 25; step += 5) {
    host_->Mouse(WM_MOUSEMOVE, {from.x + step, from.y});
  }
  TestHost::Until([&] { return sink->HasHeard(kDragStart); });
  // Released on another element: the engine would click its common ancestor with the link.
  const ComPtr<IDispatch> end = ById(document.Get(), L"p");
  host_->Mouse(WM_LBUTTONUP, TestHost::Middle(end.Get()));
  host_->Click(end.Get());
  TestHost::Until([&] { return sink->HasHeard(kClick); });
  int clicks = 0;
  for (const EventSink::Heard& event : sink->heard()) {
    if (event.id == kClick) {
      ++clicks;
    }
  }
  EXPECT_EQ(clicks, 1);
}

TEST_F(Page, LinkIsFollowedUnlessItsClickOrItsNavigationIsCancelled) {
  host_->Write(L"next.html", "<p id=next>");
  host_->Load("<body style='margin:0'><a id=link href='next.html'>go</a><p id=here>");
  bool cancels_click = true;
  const ComPtr<IDispatch> document = host_->Document();
  const Listening clicks(document.Get(), __uuidof(HTMLDocumentEvents),
                         [&](DISPID id, DISPPARAMS*) { return id != kClick || !cancels_click; });
  const Listening sink(host_->browser(), DIID_DWebBrowserEvents2);
  host_->Click(ById(document.Get(), L"link").Get());
  TestHost::Until([&] { return clicks->HasHeard(kClick); });
  cancels_click = false;
  EXPECT_FALSE(sink->HasHeard(DISPID_BEFORENAVIGATE2));
  host_->Click(ById(document.Get(), L"link").Get());
  TestHost::Until([&] { return sink->HasHeard(DISPID_DOCUMENTCOMPLETE); });
  EXPECT_NE(ById(host_->Document().Get(), L"next"), nullptr);
}

TEST_F(Page, AMenuIsShownUnlessTheHostShowsItsOwn) {
  for (const bool shows_menu : {false, true}) {
    TestHost host({.shows_menu = shows_menu});
    host.Load(kList);
    const ComPtr<IDispatch> document = host.Document();
    const Listening sink(document.Get(), __uuidof(HTMLDocumentEvents));
    const ComPtr<IDispatch> other = ById(document.Get(), L"other");
    const POINT place = TestHost::Middle(other.Get());
    const MenuWatch menus;
    host.Mouse(WM_RBUTTONDOWN, place);
    host.Mouse(WM_RBUTTONUP, place);
    // The control is told of the click after the menu.
    host.Click(other.Get());
    TestHost::Until([&] { return sink->HasHeard(kClick); });
    EXPECT_EQ(menus.has_seen(), !shows_menu);
  }
}

TEST_F(Page, NavigationThatFailsShowsAnErrorPage) {
  host_->Load(kList);
  const Listening sink(host_->browser(), DIID_DWebBrowserEvents2);
  const Value missing(L"C:\\missing.html");
  host_->browser()->Navigate(missing.get().bstrVal, nullptr, nullptr, nullptr, nullptr);
  TestHost::Until([&] { return sink->HasHeard(DISPID_DOCUMENTCOMPLETE); });
  EXPECT_TRUE(sink->HasHeard(DISPID_NAVIGATEERROR));
  EXPECT_NE(ById(host_->Document().Get(), L"error"), nullptr);
}

TEST_F(Page, FileThatNoPageCanShowIsOfferedAsADownload) {
  host_->Write(L"package.zip", "PK");
  host_->Load("<body style='margin:0'><a id=link href='package.zip'>get</a>");
  std::vector<VARIANT_BOOL> announced;
  const Listening sink(host_->browser(), DIID_DWebBrowserEvents2,
                       [&](DISPID id, DISPPARAMS* parameters) {
                         if (id == DISPID_FILEDOWNLOAD) {
                           announced.push_back(parameters->rgvarg[1].boolVal);
                         }
                         return true;
                       });
  host_->Click(ById(host_->Document().Get(), L"link").Get());
  TestHost::Until([&] { return sink->HasHeard(DISPID_FILEDOWNLOAD); });
  host_->Load(kList);
  EXPECT_EQ(announced, (std::vector<VARIANT_BOOL>{VARIANT_FALSE, VARIANT_TRUE}));
}

TEST_F(Page, HostThatHoldsNoKeyBackHasThePageRefreshed) {
  host_->Load(kList);
  const Listening sink(host_->browser(), DIID_DWebBrowserEvents2);
  ComPtr<IOleInPlaceActiveObject> active;
  ASSERT_EQ(host_->browser()->QueryInterface(IID_PPV_ARGS(active.GetAddressOf())), S_OK);
  MSG refresh = {host_->control_window(), WM_KEYDOWN, VK_F5, 0, 0, {}};
  EXPECT_EQ(active->TranslateAccelerator(&refresh), S_OK);
  EXPECT_NO_THROW(TestHost::Until([&] { return sink->HasHeard(DISPID_DOCUMENTCOMPLETE); }));
}

TEST_F(Page, MarkupRunsNothingAndOpensNoFrame) {
  host_->Write(L"frame.html", "<p>frame</p>");
  host_->Load(kList);
  const ComPtr<IDispatch> document = host_->Document();
  Put(ById(document.Get(), L"list").Get(), L"innerHTML",
      L"<div id=b onclick=\"document.title='ran'\">x</div><script>document.title='ran'</script>"
      L"<img id=i src=none.gif onerror=\"document.title='ran'\"><iframe "
      L"src='frame.html'></iframe>");
  const Listening sink(document.Get(), __uuidof(HTMLDocumentEvents));
  host_->Click(ById(document.Get(), L"b").Get());
  TestHost::Until([&] { return sink->HasHeard(kClick); });
  TestHost::Until([&] { return Get(ById(document.Get(), L"i").Get(), L"complete").Flag(); });
  // One more image fails after the first, whose handler has then run.
  Put(ById(document.Get(), L"b").Get(), L"innerHTML", L"<img id=last src=none2.gif>");
  TestHost::Until([&] { return Get(ById(document.Get(), L"last").Get(), L"complete").Flag(); });
  EXPECT_EQ(Get(document.Get(), L"title").Text(), L"");
}

TEST_F(Page, PictureShowsThePage) {
  host_->Load("<body style='margin:0; background:#102030'><div id=list>");
  ComPtr<IViewObject> view;
  ASSERT_EQ(host_->browser()->QueryInterface(IID_PPV_ARGS(view.GetAddressOf())), S_OK);
  const HDC screen = GetDC(nullptr);
  const HDC memory = CreateCompatibleDC(screen);
  const HBITMAP bitmap = CreateCompatibleBitmap(screen, TestHost::kWidth, TestHost::kHeight);
  const HGDIOBJ previous = SelectObject(memory, bitmap);
  const RECTL bounds = {0, 0, TestHost::kWidth, TestHost::kHeight};
  const auto corner = [&] {
    view->Draw(DVASPECT_CONTENT, -1, nullptr, nullptr, nullptr, memory, &bounds, nullptr, nullptr,
               0);
    return GetPixel(memory, TestHost::kWidth - 1, TestHost::kHeight - 1);
  };
  EXPECT_NO_THROW(TestHost::Until([&] { return corner() == RGB(0x10, 0x20, 0x30); }));
  Put(GetObject(GetObject(host_->Document().Get(), L"body").Get(), L"style").Get(), L"background",
      L"navy");
  EXPECT_NO_THROW(TestHost::Until([&] { return corner() == RGB(0, 0, 0x80); }));
  SelectObject(memory, previous);
  DeleteObject(bitmap);
  DeleteDC(memory);
  ReleaseDC(nullptr, screen);
}

TEST_F(Page, AHostThatDoesNotAnswerHasABorderAroundThePage) {
  const auto top_for = [](DWORD flags) {
    TestHost host({.flags = flags});
    host.Load("<body style='margin:0'><div id='top' style='width:10px;height:10px'></div>");
    return TestHost::Middle(ById(host.Document().Get(), L"top").Get()).y;
  };
  EXPECT_EQ(top_for(0), top_for(DOCHOSTUIFLAG_NO3DBORDER) + 2);
  EXPECT_EQ(top_for(DOCHOSTUIFLAG_NO3DOUTERBORDER), top_for(DOCHOSTUIFLAG_NO3DBORDER));
}

TEST_F(Page, TheEventsOfAFrameNameABrowserOfItsOwn) {
  constexpr int kWithFrames = kMarkupOnly & ~0x1000;
  TestHost host({.download_control = kWithFrames});
  host.Write(L"frame.html", "<p>framed</p>");
  const Listening sink(host.browser(), DIID_DWebBrowserEvents2);
  host.Load("<body><iframe src='frame.html'></iframe>");
  std::vector<std::pair<DISPID, bool>> heard;
  for (const EventSink::Heard& event : sink->heard()) {
    if (!event.browser) {
      continue;
    }
    const bool is_frame = event.browser != static_cast<IDispatch*>(host.browser());
    EXPECT_THAT(event.url, EndsWith(is_frame ? L"\\frame.html" : L"\\page.html"));
    heard.emplace_back(event.id, is_frame);
  }
  EXPECT_THAT(heard, ElementsAre(std::pair(DISPID_BEFORENAVIGATE2, false),
                                 std::pair(DISPID_NAVIGATECOMPLETE2, false),
                                 std::pair(DISPID_BEFORENAVIGATE2, true),
                                 std::pair(DISPID_NAVIGATECOMPLETE2, true),
                                 std::pair(DISPID_DOCUMENTCOMPLETE, true),
                                 std::pair(DISPID_DOCUMENTCOMPLETE, false)));
}

TEST_F(Page, APageThatIsBeingDesignedIsNotUsed) {
  TestHost host({.is_in_use = false});
  host.Load(kList);
  const ComPtr<IDispatch> document = host.Document();
  const Listening sink(document.Get(), __uuidof(HTMLDocumentEvents));
  host.Click(ById(document.Get(), L"other").Get());
  // The next page loads after the click has been handled.
  host.Load(kList);
  EXPECT_FALSE(sink->HasHeard(kClick));
}

TEST_F(Page, AFileThatIsDroppedIsOpened) {
  const std::wstring path = host_->Write(L"dropped.html", "<p id=dropped>");
  host_->Load(kList);
  const Listening sink(host_->browser(), DIID_DWebBrowserEvents2);
  DropFile(host_->control_window(), path);
  TestHost::Until([&] { return sink->HasHeard(DISPID_DOCUMENTCOMPLETE); });
  EXPECT_NE(ById(host_->Document().Get(), L"dropped"), nullptr);
}

TEST_F(Page, TypedTextReachesTheFocusedField) {
  host_->Load("<body><input id=field><input id=next>");
  const ComPtr<IDispatch> document = host_->Document();
  const Listening sink(document.Get(), __uuidof(HTMLDocumentEvents));
  host_->Click(ById(document.Get(), L"field").Get());
  for (wchar_t c : std::wstring(L"a\u00e4")) {
    PostMessageW(host_->control_window(), WM_CHAR, c, 0);
  }
  TestHost::Until(
      [&] { return Get(ById(document.Get(), L"field").Get(), L"value").Text() == L"a\u00e4"; });
  ComPtr<IOleInPlaceActiveObject> active;
  ASSERT_EQ(host_->browser()->QueryInterface(IID_PPV_ARGS(active.GetAddressOf())), S_OK);
  MSG tab = {host_->control_window(), WM_KEYDOWN, VK_TAB, 0, 0, {}};
  EXPECT_EQ(active->TranslateAccelerator(&tab), S_OK);
  TestHost::Until([&] {
    return Get(GetObject(document.Get(), L"activeElement").Get(), L"id").Text() == L"next";
  });
  EXPECT_NO_THROW(TestHost::Until([&] { return sink->HasHeard(kKeyDown); }));
  MSG letter = {host_->control_window(), WM_KEYDOWN, 'A', 0, 0, {}};
  EXPECT_EQ(active->TranslateAccelerator(&letter), S_FALSE);
}

}  // namespace
}  // namespace kitbay::web_browser
