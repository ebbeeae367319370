// Switches the user to dark colours, and back to the previous ones, each time the event
// "Kitbay.Tests.OtherColours" is set. Wine notifies every window of new colours, but applies them
// only in the process that set them.
#include <windows.h>

#include <array>

namespace {

constexpr std::array<INT, 5> kElements{COLOR_WINDOW, COLOR_WINDOWTEXT, COLOR_BTNFACE, COLOR_BTNTEXT,
                                       COLOR_GRAYTEXT};
using Colours = std::array<COLORREF, kElements.size()>;
constexpr COLORREF kBlack = 0x000000;
constexpr COLORREF kWhite = 0xFFFFFF;
constexpr Colours kDark{kBlack, kWhite, kBlack, kWhite, 0x3FF23F};

DWORD WINAPI ChangeColours(LPVOID /*unused*/) {
  Colours usual{};
  for (std::size_t i = 0; i < usual.size(); ++i) {
    usual[i] = GetSysColor(kElements[i]);
  }
  const HANDLE event = CreateEventW(nullptr, FALSE, FALSE, L"Kitbay.Tests.OtherColours");
  for (bool is_dark = true;; is_dark = !is_dark) {
    WaitForSingleObject(event, INFINITE);
    SetSysColors(static_cast<INT>(usual.size()), kElements.data(),
                 is_dark ? kDark.data() : usual.data());
  }
}

}  // namespace

extern "C" BOOL WINAPI DllMain(HINSTANCE /*library*/, DWORD reason, void* /*reserved*/) {
  if (reason == DLL_PROCESS_ATTACH) {
    CloseHandle(CreateThread(nullptr, 0, ChangeColours, nullptr, 0, nullptr));
  }
  return TRUE;
}
