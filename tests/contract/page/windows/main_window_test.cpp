#include <windows.h>

#include <commctrl.h>
#include <gmock/gmock.h>

#include <array>
#include <string>
#include <vector>

#include "contract/failure_number.h"
#include "contract/page/windows/loaded_window.h"

namespace kitbay::contract {
namespace {

using ::testing::ElementsAre;
using ::testing::IsEmpty;

constexpr UINT kDpiChanged = 0x02E0;  // WM_DPICHANGED, which older headers lack

std::wstring CaptionOf(HWND window) {
  std::wstring caption(64, L'\0');
  caption.resize(static_cast<std::size_t>(GetWindowTextW(window, caption.data(), 64)));
  return caption;
}

std::wstring FaceOf(HWND control) {
  LOGFONTW font{};
  GetObjectW(reinterpret_cast<HFONT>(SendMessageW(control, WM_GETFONT, 0, 0)), sizeof(font), &font);
  return font.lfFaceName;
}

/// A black square of the usual size as a cursor file, with its hot spot at 3, 5.
std::string CursorFile() {
  constexpr std::size_t kSide = 32;
  const std::array<unsigned char, 70> head{
      0,  0, 2, 0, 1,  0, 32, 32, 2,  0, 3, 0, 5, 0, 48, 1, 0, 0, 22, 0, 0, 0,         // directory
      40, 0, 0, 0, 32, 0, 0,  0,  64, 0, 0, 0, 1, 0, 1,  0, 0, 0, 0,  0, 0, 1, 0, 0};  // bitmap
  return std::string(head.begin(), head.end()) + std::string(kSide * kSide / 8 * 2, '\0');
}

TEST(MainWindow, StartsHiddenUnderItsClassAndCaption) {
  LoadedWindow loaded;
  EXPECT_FALSE(IsWindowVisible(loaded.handle()));
  EXPECT_EQ(FindWindowW(L"KitbayMainWindow", L"Kitbay"), loaded.handle());
  loaded.window().Show();
  EXPECT_TRUE(IsWindowVisible(loaded.handle()));
}

TEST(MainWindow, ShowsTheIconOfTheProgram) {
  const HWND window = SharedWindow().handle();
  const HICON icon = LoadIconW(GetModuleHandleW(nullptr), MAKEINTRESOURCEW(1));
  ASSERT_NE(icon, nullptr);
  EXPECT_EQ(GetClassLongPtrW(window, GCLP_HICON), reinterpret_cast<ULONG_PTR>(icon));
  EXPECT_NE(GetClassLongPtrW(window, GCLP_HICONSM), 0U);
}

TEST(MainWindow, HasItsControlsInVerdana) {
  LoadedWindow& loaded = SharedWindow();
  for (const HWND control :
       {loaded.Control(WC_BUTTONW, L"&Directories"), loaded.Control(WC_BUTTONW, L"&Close"),
        loaded.Control(WC_STATICW, L"Help"), loaded.Control(STATUSCLASSNAMEW)}) {
    ASSERT_NE(control, nullptr);
    EXPECT_EQ(FaceOf(control), L"Verdana") << CaptionOf(control).size();
  }
}

TEST(MainWindow, ButtonsAndLabelReportTheirClicks) {
  LoadedWindow& loaded = SharedWindow();
  loaded.told.clear();
  SendMessageW(loaded.Control(WC_BUTTONW, L"&Directories"), BM_CLICK, 0, 0);
  SendMessageW(loaded.Control(WC_BUTTONW, L"&Close"), BM_CLICK, 0, 0);
  SendMessageW(loaded.Control(WC_STATICW, L"Help"), WM_LBUTTONDOWN, MK_LBUTTON, 0);
  EXPECT_THAT(loaded.told, ElementsAre("cmdPreference_Click", "CmdClose_Click", "lblHelp_Click"));
}

TEST(MainWindow, EachMouseMoveOverTheLabelIsReported) {
  LoadedWindow& loaded = SharedWindow();
  loaded.told.clear();
  const HWND label = loaded.Control(WC_STATICW, L"Help");
  SendMessageW(label, WM_MOUSEMOVE, 0, 0);
  SendMessageW(label, WM_MOUSEMOVE, 0, 0);
  EXPECT_THAT(loaded.told, ElementsAre("lblHelp_MouseMove", "lblHelp_MouseMove"));
}

TEST(MainWindow, TheBrowserFollowsTheWindowsSize) {
  LoadedWindow& loaded = SharedWindow();
  for (const int width : {700, 900}) {
    SetWindowPos(loaded.handle(), nullptr, 0, 0, width, 600, SWP_NOMOVE | SWP_NOZORDER);
    RECT client{};
    GetClientRect(loaded.handle(), &client);
    const RECT browser = PlaceIn(loaded.handle(), loaded.Browser());
    EXPECT_EQ(browser.left, 0);
    EXPECT_EQ(browser.top, 0);
    EXPECT_EQ(browser.right, client.right);
    const RECT button = PlaceIn(loaded.handle(), loaded.Control(WC_BUTTONW, L"&Close"));
    EXPECT_LT(browser.bottom, button.top);
    EXPECT_GT(browser.bottom, client.bottom / 2);
  }
}

TEST(MainWindow, AMinimisedWindowLeavesItsPageAsItIs) {
  LoadedWindow loaded;
  loaded.window().Show();
  const HWND browser = loaded.Browser();
  const RECT shown = PlaceIn(loaded.handle(), browser);
  ShowWindow(loaded.handle(), SW_MINIMIZE);
  ASSERT_TRUE(IsIconic(loaded.handle()));
  // As when a page completes in the meantime.
  loaded.window().FitBrowser();
  const RECT minimised = PlaceIn(loaded.handle(), browser);
  EXPECT_EQ(minimised.right - minimised.left, shown.right - shown.left);
  EXPECT_EQ(minimised.bottom - minimised.top, shown.bottom - shown.top);
  EXPECT_GT(shown.bottom - shown.top, 0);
}

TEST(MainWindow, AnotherResolutionScalesItsControls) {
  LoadedWindow& loaded = SharedWindow();
  const HWND button = loaded.Control(WC_BUTTONW, L"&Close");
  const RECT before = PlaceIn(loaded.handle(), button);
  RECT window{};
  GetWindowRect(loaded.handle(), &window);
  SendMessageW(loaded.handle(), kDpiChanged, MAKEWPARAM(192, 192),
               reinterpret_cast<LPARAM>(&window));
  const RECT place = PlaceIn(loaded.handle(), button);
  EXPECT_EQ(place.right - place.left, 192);
  EXPECT_EQ(place.bottom - place.top, 52);
  SendMessageW(loaded.handle(), kDpiChanged, MAKEWPARAM(96, 96), reinterpret_cast<LPARAM>(&window));
  const RECT after = PlaceIn(loaded.handle(), button);
  EXPECT_TRUE(EqualRect(&after, &before));
}

/// Changes system colours for the whole desktop as long as it lives.
class ColoursOfUser {
 public:
  ColoursOfUser(COLORREF face, COLORREF text) { Set(face, text); }
  ~ColoursOfUser() { Set(face_, text_); }
  ColoursOfUser(const ColoursOfUser&) = delete;
  ColoursOfUser& operator=(const ColoursOfUser&) = delete;

 private:
  static void Set(COLORREF face, COLORREF text) {
    const std::array<INT, 2> elements{COLOR_BTNFACE, COLOR_BTNTEXT};
    const std::array<COLORREF, 2> colours{face, text};
    SetSysColors(2, elements.data(), colours.data());
  }

  COLORREF face_ = GetSysColor(COLOR_BTNFACE);
  COLORREF text_ = GetSysColor(COLOR_BTNTEXT);
};

TEST(MainWindow, TellsWhetherTheUsersColoursAreDark) {
  LoadedWindow& loaded = SharedWindow();
  EXPECT_FALSE(loaded.window().CurrentLooks().has_dark_colours);
  const ColoursOfUser dark(RGB(0, 0, 0), RGB(255, 255, 255));
  EXPECT_TRUE(loaded.window().CurrentLooks().has_dark_colours);
}

LRESULT CALLBACK NoteColourNews(HWND control, UINT message, WPARAM wparam, LPARAM lparam, UINT_PTR,
                                DWORD_PTR list) {
  if (message == WM_SYSCOLORCHANGE || message == WM_SETTINGCHANGE) {
    reinterpret_cast<std::vector<UINT>*>(list)->push_back(message);
  }
  return DefSubclassProc(control, message, wparam, lparam);
}

TEST(MainWindow, HandsNewColoursOnToItsControlsAndThePage) {
  LoadedWindow& loaded = SharedWindow();
  ASSERT_TRUE(loaded.ShowMarkup("<html><body></body></html>"));
  std::vector<UINT> handed_on;
  const SUBCLASSPROC procedure = NoteColourNews;
  const auto list = reinterpret_cast<DWORD_PTR>(&handed_on);
  SetWindowSubclass(loaded.Browser(), procedure, 1, list);
  SetWindowSubclass(loaded.Control(STATUSCLASSNAMEW), procedure, 1, list);
  loaded.told.clear();
  SendMessageW(loaded.handle(), WM_SYSCOLORCHANGE, 0, 0);
  SendMessageW(loaded.handle(), WM_SETTINGCHANGE, 0, 0);
  RemoveWindowSubclass(loaded.Browser(), procedure, 1);
  RemoveWindowSubclass(loaded.Control(STATUSCLASSNAMEW), procedure, 1);
  EXPECT_THAT(handed_on, ElementsAre(WM_SYSCOLORCHANGE, WM_SYSCOLORCHANGE, WM_SETTINGCHANGE,
                                     WM_SETTINGCHANGE));
  EXPECT_THAT(loaded.told, ElementsAre("LooksChanged", "LooksChanged"));
}

TEST(MainWindow, TheProgressBarHasANameForScreenReaders) {
  LoadedWindow& loaded = SharedWindow();
  EXPECT_NE(loaded.Control(PROGRESS_CLASSW, L"Progress"), nullptr);
}

TEST(MainWindow, TheStatusBarHasANameForScreenReadersBesideItsTexts) {
  LoadedWindow& loaded = SharedWindow();
  const HWND bar = loaded.Control(STATUSCLASSNAMEW);
  loaded.window().status_bar().SetPanelText(platform::kStatusPanel, "Done");
  wchar_t name[16];
  EXPECT_EQ(GetWindowTextW(bar, name, 16), 6);
  EXPECT_STREQ(name, L"Status");
  EXPECT_EQ(GetWindowTextW(bar, name, 4), 3);
  EXPECT_STREQ(name, L"Sta");
  EXPECT_EQ(loaded.window().status_bar().PanelText(platform::kStatusPanel), "Done");
  loaded.window().status_bar().SetPanelText(platform::kStatusPanel, "");
}

std::vector<LONG>& Alerts() {
  static std::vector<LONG> alerts;
  return alerts;
}

void CALLBACK NoteAlert(HWINEVENTHOOK, DWORD, HWND, LONG, LONG child, DWORD, DWORD) {
  Alerts().push_back(child);
}

TEST(MainWindow, AStatusTextIsAnnouncedToScreenReaders) {
  LoadedWindow& loaded = SharedWindow();
  Alerts().clear();
  const HWINEVENTHOOK hook =
      SetWinEventHook(EVENT_SYSTEM_ALERT, EVENT_SYSTEM_ALERT, nullptr, NoteAlert,
                      GetCurrentProcessId(), 0, WINEVENT_OUTOFCONTEXT);
  loaded.window().status_bar().Announce(platform::kStatusPanel);
  EXPECT_TRUE(loaded.RunUntil([] { return !Alerts().empty(); }));
  UnhookWinEvent(hook);
  EXPECT_THAT(Alerts(), ElementsAre(platform::kStatusPanel));
}

TEST(MainWindow, CannotBeMadeTooSmallForItsControls) {
  LoadedWindow& loaded = SharedWindow();
  MINMAXINFO info{};
  SendMessageW(loaded.handle(), WM_GETMINMAXINFO, 0, reinterpret_cast<LPARAM>(&info));
  EXPECT_GE(info.ptMinTrackSize.x, 500);
  EXPECT_GE(info.ptMinTrackSize.y, 350);
}

TEST(MainWindow, ClosingReportsTheUnloadOnceAndDestroysTheWindow) {
  LoadedWindow loaded;
  const HWND window = loaded.handle();
  SendMessageW(window, WM_CLOSE, 0, 0);
  EXPECT_FALSE(IsWindow(window));
  EXPECT_EQ(loaded.handle(), nullptr);
  loaded.window().Unload();
  EXPECT_THAT(loaded.told, ElementsAre("Form_Unload"));
}

TEST(MainWindow, TheEndOfTheSessionUnloadsTheWindow) {
  LoadedWindow loaded;
  SendMessageW(loaded.handle(), WM_ENDSESSION, FALSE, 0);
  EXPECT_THAT(loaded.told, IsEmpty());
  SendMessageW(loaded.handle(), WM_ENDSESSION, TRUE, 0);
  EXPECT_THAT(loaded.told, ElementsAre("Form_Unload"));
}

TEST(MainWindow, AMissingCursorFileIsFileNotFound) {
  platform::MainWindow& window = SharedWindow().window();
  EXPECT_EQ(FailureNumber([&] { window.SetHelpCursor("C:\\no such\\HAND-M.cur"); }), 53);
  EXPECT_EQ(FailureNumber([&] { window.SetHelpCursor("C:\\windows"); }), 53);
  EXPECT_EQ(FailureNumber([&] { window.SetHelpCursor(""); }), 53);
}

TEST(MainWindow, AFileThatIsNoCursorIsAnInvalidPicture) {
  LoadedWindow& loaded = SharedWindow();
  const std::string file = loaded.files().WriteAs("HAND-M.cur", "no cursor at all");
  EXPECT_EQ(FailureNumber([&] { loaded.window().SetHelpCursor(file); }), 481);
}

TEST(MainWindow, ACursorFileIsShownOverTheLabel) {
  LoadedWindow& loaded = SharedWindow();
  loaded.window().SetHelpCursor(loaded.files().WriteAs("HAND-M.cur", CursorFile()));
  const HWND label = loaded.Control(WC_STATICW, L"Help");
  EXPECT_TRUE(SendMessageW(label, WM_SETCURSOR, reinterpret_cast<WPARAM>(label),
                           MAKELPARAM(HTCLIENT, WM_MOUSEMOVE)));
  ICONINFO shown{};
  ASSERT_TRUE(GetIconInfo(GetCursor(), &shown));
  DeleteObject(shown.hbmMask);
  EXPECT_EQ(shown.xHotspot, 3U);
  EXPECT_EQ(shown.yHotspot, 5U);
}

}  // namespace
}  // namespace kitbay::contract
