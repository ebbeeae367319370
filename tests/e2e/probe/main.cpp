// e2e_probe: looks at the desktop, or uses Kitbay's objects, from a separate process. It reads
// questions from the standard input, each a line of JSON [COMMAND, ARGUMENT...], and answers one
// after the other with a line {"value":...}. It ends when the input does.
//
//   windows                  the visible top-level windows, topmost first
//   press CAPTION BUTTON     presses a button of a top-level window of that caption, as soon as
//                            there is one that is enabled
//   answer ID BUTTON         presses a button of the window of that number
//   close CLASS CAPTION      sends the close message to the top-level window of that class
//                            and caption
//   minimize CAPTION         minimises the top-level window of that caption
//   restore CAPTION          restores its previous place
//   size CAPTION WIDTH HEIGHT
//                            gives it another size in pixels
//   resolution CAPTION DPI   tells it that it is shown at that many dots per inch, but leaves its
//                            place
//   signal NAME              sets an event that another program waits for
//   key CAPTION CODE         presses and releases a key in the focused control of that window
//   value KEY NAME           the type and the bytes of a value of a class: the user's, or else the
//                            machine's
//   refuse KEY               from now on, until Wine ends, nobody may write the key below
//                            HKEY_LOCAL_MACHINE; everybody may read it
//   programs NAME            the processes of an executable: who started each, and whether it is
//                            elevated
//   description NUMBER SUBJECT
//                            the system's text for an error with that file
//   registry                 creates Kitbay.Registry, calls its members in the interface's order
//   manager                  creates Kitbay.Manager and calls BringToFront
//   late                     creates Kitbay.Manager, closes Kitbay's window, and calls BringToFront
//                            when the event "Kitbay.Tests.Ending" is set; reports the outcome,
//                            and sets the event "Kitbay.Tests.Answered"
//
// The probe waits for the answers of windows, however long they are busy; whoever runs it ends it
// when that takes too long. If something cannot be done, it answers {"error":"why"}.
#include <windows.h>
// After windows.h, which they need.
#include <commctrl.h>
#include <objbase.h>
#include <oleauto.h>
#include <sddl.h>
#include <shellapi.h>
#include <tlhelp32.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <map>
#include <nlohmann/json.hpp>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/win32/system/utf.h"

namespace {

using Json = nlohmann::ordered_json;
using kitbay::platform::win32::ToUtf16;
using kitbay::platform::win32::ToUtf8;

std::wstring Caption(HWND window) {
  std::wstring text(static_cast<std::size_t>(GetWindowTextLengthW(window)) + 1, L'\0');
  text.resize(
      static_cast<std::size_t>(GetWindowTextW(window, text.data(), static_cast<int>(text.size()))));
  return text;
}

// The text of a control of another process, which GetWindowText does not read.
std::wstring ControlText(HWND control) {
  const LRESULT length = SendMessageW(control, WM_GETTEXTLENGTH, 0, 0);
  std::wstring text(static_cast<std::size_t>(length) + 1, L'\0');
  text.resize(static_cast<std::size_t>(
      SendMessageW(control, WM_GETTEXT, text.size(), reinterpret_cast<LPARAM>(text.data()))));
  return text;
}

std::wstring ClassName(HWND window) {
  wchar_t name[128];
  const int length = GetClassNameW(window, name, 128);
  return {name, static_cast<std::size_t>(length)};
}

BOOL CALLBACK Collect(HWND window, LPARAM list) {
  reinterpret_cast<std::vector<HWND>*>(list)->push_back(window);
  return TRUE;
}

std::vector<HWND> Children(HWND window) {
  std::vector<HWND> children;
  EnumChildWindows(window, Collect, reinterpret_cast<LPARAM>(&children));
  return children;
}

RECT PlaceOf(HWND window) {
  RECT place{};
  GetWindowRect(window, &place);
  return place;
}

Json Numbers(const RECT& place) { return {place.left, place.top, place.right, place.bottom}; }

std::uintptr_t IdOf(HWND window) { return reinterpret_cast<std::uintptr_t>(window); }

// The value of a progress bar; null for other controls.
Json ProgressOf(HWND control) {
  if (ClassName(control) != PROGRESS_CLASSW) {
    return nullptr;
  }
  return SendMessageW(control, PBM_GETPOS, 0, 0);
}

// Memory in another process, to which a message to one of its windows can point.
class MemoryThere {
 public:
  MemoryThere(HWND window, std::size_t size) {
    DWORD id = 0;
    GetWindowThreadProcessId(window, &id);
    process_ = OpenProcess(PROCESS_VM_OPERATION | PROCESS_VM_READ | PROCESS_VM_WRITE, FALSE, id);
    address_ = VirtualAllocEx(process_, nullptr, size, MEM_COMMIT, PAGE_READWRITE);
    if (address_ == nullptr) {
      throw std::runtime_error("no memory in the other process");
    }
  }
  ~MemoryThere() {
    VirtualFreeEx(process_, address_, 0, MEM_RELEASE);
    CloseHandle(process_);
  }
  MemoryThere(const MemoryThere&) = delete;
  MemoryThere& operator=(const MemoryThere&) = delete;

  char* at(std::size_t offset) const { return static_cast<char*>(address_) + offset; }
  void Write(std::size_t offset, const void* bytes, std::size_t size) const {
    WriteProcessMemory(process_, at(offset), bytes, size, nullptr);
  }
  void Read(std::size_t offset, void* bytes, std::size_t size) const {
    ReadProcessMemory(process_, at(offset), bytes, size, nullptr);
  }

 private:
  HANDLE process_ = nullptr;
  void* address_ = nullptr;
};

LRESULT Ask(HWND control, UINT message, WPARAM wparam, const void* argument = nullptr) {
  return SendMessageW(control, message, wparam, reinterpret_cast<LPARAM>(argument));
}

// The items of a list view as {text, selected, place}, with the place in screen pixels.
Json ItemsOfList(HWND control) {
  constexpr std::size_t kLongest = 1024;
  const MemoryThere memory(control, sizeof(LVITEMW) + kLongest * sizeof(wchar_t));
  Json items = Json::array();
  const auto count = static_cast<std::size_t>(Ask(control, LVM_GETITEMCOUNT, 0));
  for (std::size_t index = 0; index < count; ++index) {
    LVITEMW item{};
    item.pszText = reinterpret_cast<wchar_t*>(memory.at(sizeof item));
    item.cchTextMax = static_cast<int>(kLongest);
    memory.Write(0, &item, sizeof item);
    std::wstring text(static_cast<std::size_t>(Ask(control, LVM_GETITEMTEXTW, index, memory.at(0))),
                      L'\0');
    memory.Read(sizeof item, text.data(), text.size() * sizeof(wchar_t));
    RECT place{};
    place.left = LVIR_LABEL;
    memory.Write(0, &place, sizeof place);
    Ask(control, LVM_GETITEMRECT, index, memory.at(0));
    memory.Read(0, &place, sizeof place);
    MapWindowPoints(control, nullptr, reinterpret_cast<POINT*>(&place), 2);
    const bool is_selected =
        Ask(control, LVM_GETITEMSTATE, index, reinterpret_cast<const void*>(LVIS_SELECTED)) != 0;
    items.push_back({{"text", ToUtf8(text)}, {"selected", is_selected}, {"place", Numbers(place)}});
  }
  return items;
}

// The items of a list view; null for other controls, and for one that no longer exists.
Json ItemsOf(HWND control) {
  if (ClassName(control) != WC_LISTVIEWW) {
    return nullptr;
  }
  try {
    return ItemsOfList(control);
  } catch (const std::runtime_error&) {
    if (IsWindow(control)) {
      throw;
    }
    return nullptr;
  }
}

HWND FocusOf(HWND window) {
  GUITHREADINFO info{};
  info.cbSize = sizeof info;
  GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info);
  return info.hwndFocus;
}

Json Describe(HWND window) {
  DWORD process = 0;
  GetWindowThreadProcessId(window, &process);
  const HWND focus = FocusOf(window);
  Json controls = Json::array();
  for (const HWND child : Children(window)) {
    controls.push_back({{"class", ToUtf8(ClassName(child))},
                        {"text", ToUtf8(ControlText(child))},
                        {"value", ProgressOf(child)},
                        {"visible", IsWindowVisible(child) != FALSE},
                        {"enabled", IsWindowEnabled(child) != FALSE},
                        {"focused", child == focus},
                        {"place", Numbers(PlaceOf(child))},
                        {"items", ItemsOf(child)}});
  }
  return {{"id", IdOf(window)},
          {"class", ToUtf8(ClassName(window))},
          {"caption", ToUtf8(Caption(window))},
          {"process", process},
          {"topmost", (GetWindowLongW(window, GWL_EXSTYLE) & WS_EX_TOPMOST) != 0},
          {"foreground", GetForegroundWindow() == window},
          {"minimized", IsIconic(window) != FALSE},
          {"owner", IdOf(GetWindow(window, GW_OWNER))},
          {"place", Numbers(PlaceOf(window))},
          {"controls", controls}};
}

// EnumWindows enumerates the windows in their order on the screen, topmost first.
Json Windows() {
  std::vector<HWND> windows;
  EnumWindows(Collect, reinterpret_cast<LPARAM>(&windows));
  Json described = Json::array();
  for (const HWND window : windows) {
    if (IsWindowVisible(window)) {
      described.push_back(Describe(window));
    }
  }
  return described;
}

HWND Needed(const std::wstring& caption) {
  const HWND window = FindWindowW(nullptr, caption.c_str());
  if (window == nullptr) {
    throw std::runtime_error("no window " + ToUtf8(caption));
  }
  return window;
}

// An enabled button of a window; null if there is none.
HWND ButtonOf(HWND window, const std::wstring& button) {
  for (const HWND child : Children(window)) {
    if (ClassName(child) == L"Button" && IsWindowEnabled(child) && ControlText(child) == button) {
      return child;
    }
  }
  return nullptr;
}

// The same of the top-level windows of a caption.
HWND ButtonOf(const std::wstring& caption, const std::wstring& button) {
  for (HWND window = FindWindowW(nullptr, caption.c_str()); window != nullptr;
       window = FindWindowExW(nullptr, window, nullptr, caption.c_str())) {
    if (const HWND found = ButtonOf(window, button); found != nullptr) {
      return found;
    }
  }
  return nullptr;
}

// Windows does not notify anybody of other programs' windows.
Json Press(const std::wstring& caption, const std::wstring& button) {
  constexpr DWORD kPauseMs = 50;
  HWND found = ButtonOf(caption, button);
  for (; found == nullptr; found = ButtonOf(caption, button)) {
    Sleep(kPauseMs);
  }
  PostMessageW(found, BM_CLICK, 0, 0);
  return true;
}

Json PressIn(std::uintptr_t id, const std::wstring& button) {
  const HWND found = ButtonOf(reinterpret_cast<HWND>(id), button);
  if (found == nullptr) {
    throw std::runtime_error("no button " + ToUtf8(button));
  }
  PostMessageW(found, BM_CLICK, 0, 0);
  return true;
}

Json Close(const std::wstring& window_class, const std::wstring& caption) {
  const HWND window = FindWindowW(window_class.c_str(), caption.c_str());
  if (window == nullptr) {
    throw std::runtime_error("no window " + ToUtf8(caption));
  }
  PostMessageW(window, WM_CLOSE, 0, 0);
  return true;
}

Json Minimize(const std::wstring& caption) {
  ShowWindow(Needed(caption), SW_MINIMIZE);
  return true;
}

Json Restore(const std::wstring& caption) {
  ShowWindow(Needed(caption), SW_RESTORE);
  return true;
}

int Number(const std::wstring& text) {
  return static_cast<int>(std::wcstol(text.c_str(), nullptr, 0));
}

Json Size(const std::wstring& caption, const std::wstring& width, const std::wstring& height) {
  SetWindowPos(Needed(caption), nullptr, 0, 0, Number(width), Number(height),
               SWP_NOMOVE | SWP_NOZORDER | SWP_NOACTIVATE);
  return true;
}

Json Resolution(const std::wstring& caption, const std::wstring& dpi) {
  constexpr UINT kDpiChanged = 0x02E0;  // WM_DPICHANGED, which older headers lack
  const HWND window = Needed(caption);
  const RECT place = PlaceOf(window);
  const MemoryThere memory(window, sizeof place);
  memory.Write(0, &place, sizeof place);
  const auto dots = static_cast<WORD>(Number(dpi));
  Ask(window, kDpiChanged, MAKEWPARAM(dots, dots), memory.at(0));
  return true;
}

Json Key(const std::wstring& caption, const std::wstring& code) {
  const HWND window = Needed(caption);
  const HWND focus = FocusOf(window);
  const HWND target = focus != nullptr ? focus : window;
  const auto key = static_cast<WPARAM>(Number(code));
  PostMessageW(target, WM_KEYDOWN, key, 1);
  PostMessageW(target, WM_KEYUP, key, static_cast<LPARAM>(0xC0000001U));
  return ToUtf8(ClassName(target));
}

Json Signal(const std::wstring& name) {
  const HANDLE event = OpenEventW(EVENT_MODIFY_STATE, FALSE, name.c_str());
  if (event == nullptr) {
    throw std::runtime_error("nobody waits for " + ToUtf8(name));
  }
  SetEvent(event);
  CloseHandle(event);
  return true;
}

Json Value(const std::wstring& key, const std::wstring& name) {
  DWORD type = 0;
  BYTE bytes[512];
  DWORD size = sizeof bytes;
  // Wine does not show the user's classes among all classes.
  LSTATUS code = RegGetValueW(HKEY_CURRENT_USER, (L"Software\\Classes\\" + key).c_str(),
                              name.c_str(), RRF_RT_ANY | RRF_NOEXPAND, &type, bytes, &size);
  if (code != ERROR_SUCCESS) {
    size = sizeof bytes;
    code = RegGetValueW(HKEY_CLASSES_ROOT, key.c_str(), name.c_str(), RRF_RT_ANY | RRF_NOEXPAND,
                        &type, bytes, &size);
  }
  if (code != ERROR_SUCCESS) {
    throw std::runtime_error("no value: " + std::to_string(code));
  }
  std::wstring text(reinterpret_cast<const wchar_t*>(bytes), size / sizeof(wchar_t));
  while (text.ends_with(L'\0')) {
    text.pop_back();
  }
  return {{"type", type}, {"text", ToUtf8(text)}};
}

Json Refuse(const std::wstring& name) {
  HKEY key = nullptr;
  PSECURITY_DESCRIPTOR descriptor = nullptr;
  ConvertStringSecurityDescriptorToSecurityDescriptorW(L"D:P(A;;KR;;;WD)", SDDL_REVISION_1,
                                                       &descriptor, nullptr);
  LSTATUS code = RegCreateKeyExW(HKEY_LOCAL_MACHINE, name.c_str(), 0, nullptr, 0, WRITE_DAC,
                                 nullptr, &key, nullptr);
  if (code == ERROR_SUCCESS) {
    code = RegSetKeySecurity(key, DACL_SECURITY_INFORMATION, descriptor);
    RegCloseKey(key);
  }
  LocalFree(descriptor);
  if (code != ERROR_SUCCESS) {
    throw std::runtime_error("not refused: " + std::to_string(code));
  }
  return true;
}

/// The names of the executables of all processes.
std::map<DWORD, PROCESSENTRY32W> Processes() {
  std::map<DWORD, PROCESSENTRY32W> processes;
  const HANDLE snapshot = CreateToolhelp32Snapshot(TH32CS_SNAPPROCESS, 0);
  PROCESSENTRY32W entry{};
  entry.dwSize = sizeof entry;
  for (BOOL there = Process32FirstW(snapshot, &entry); there;
       there = Process32NextW(snapshot, &entry)) {
    processes[entry.th32ProcessID] = entry;
  }
  CloseHandle(snapshot);
  return processes;
}

bool IsElevated(DWORD process_id) {
  TOKEN_ELEVATION elevation{};
  DWORD size = 0;
  HANDLE token = nullptr;
  const HANDLE process = OpenProcess(PROCESS_QUERY_INFORMATION, FALSE, process_id);
  const bool is_known =
      OpenProcessToken(process, TOKEN_QUERY, &token) &&
      GetTokenInformation(token, TokenElevation, &elevation, sizeof elevation, &size);
  CloseHandle(token);
  CloseHandle(process);
  if (!is_known) {
    throw std::runtime_error("the rights of a process are not known");
  }
  return elevation.TokenIsElevated != 0;
}

Json Programs(const std::wstring& name) {
  const std::map<DWORD, PROCESSENTRY32W> processes = Processes();
  Json programs = Json::array();
  for (const auto& [id, entry] : processes) {
    if (name != entry.szExeFile) {
      continue;
    }
    const auto parent = processes.find(entry.th32ParentProcessID);
    programs.push_back(
        {{"id", id},
         {"parent", parent == processes.end() ? "" : ToUtf8(parent->second.szExeFile)},
         {"elevated", IsElevated(id)}});
  }
  return programs;
}

Json Description(const std::wstring& number, const std::wstring& subject) {
  wchar_t text[512];
  auto argument = reinterpret_cast<DWORD_PTR>(subject.c_str());
  const DWORD length = FormatMessageW(FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_ARGUMENT_ARRAY,
                                      nullptr, static_cast<DWORD>(Number(number)), 0, text, 512,
                                      reinterpret_cast<va_list*>(&argument));
  std::wstring description(text, length);
  while (description.ends_with(L'\n') || description.ends_with(L'\r')) {
    description.pop_back();
  }
  return ToUtf8(description);
}

void Check(HRESULT result, const char* step) {
  if (FAILED(result)) {
    char text[64];
    std::snprintf(text, sizeof text, "%s: 0x%08lx", step, static_cast<unsigned long>(result));
    throw std::runtime_error(text);
  }
}

class Apartment {
 public:
  Apartment() { Check(CoInitialize(nullptr), "CoInitialize"); }
  ~Apartment() { CoUninitialize(); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
};

class Object {
 public:
  explicit Object(const wchar_t* prog_id) {
    CLSID class_id{};
    Check(CLSIDFromProgID(prog_id, &class_id), "CLSIDFromProgID");
    Check(CoCreateInstance(class_id, nullptr, CLSCTX_LOCAL_SERVER, IID_IDispatch,
                           reinterpret_cast<void**>(&dispatch_)),
          "CoCreateInstance");
  }
  ~Object() { dispatch_->Release(); }
  Object(const Object&) = delete;
  Object& operator=(const Object&) = delete;

  Json Invoke(const wchar_t* member, WORD flags) {
    DISPID id = 0;
    auto* name = const_cast<wchar_t*>(member);
    Check(dispatch_->GetIDsOfNames(GUID{}, &name, 1, LOCALE_USER_DEFAULT, &id), "GetIDsOfNames");
    DISPPARAMS none{};
    VARIANT result;
    VariantInit(&result);
    Check(
        dispatch_->Invoke(id, GUID{}, LOCALE_USER_DEFAULT, flags, &none, &result, nullptr, nullptr),
        "Invoke");
    Json value;
    if (result.vt == VT_BSTR) {
      value = ToUtf8({result.bstrVal, SysStringLen(result.bstrVal)});
    } else if (result.vt == VT_I4) {
      value = result.lVal;
    }
    VariantClear(&result);
    return value;
  }

 private:
  IDispatch* dispatch_ = nullptr;
};

// In the order of the interface, in which the members of a JSON object are also created.
Json UseRegistry() {
  const Apartment apartment;
  Object registry(L"Kitbay.Registry");
  return {{"RegisterUrlHandler", registry.Invoke(L"RegisterUrlHandler", DISPATCH_METHOD)},
          {"GetAppDataPath", registry.Invoke(L"GetAppDataPath", DISPATCH_METHOD)},
          {"ROOT_REGISTRY_KEY", registry.Invoke(L"ROOT_REGISTRY_KEY", DISPATCH_PROPERTYGET)}};
}

Json BringToFront(Object& manager) {
  return {{"BringToFront", manager.Invoke(L"BringToFront", DISPATCH_METHOD)}};
}

Json UseManager() {
  const Apartment apartment;
  Object manager(L"Kitbay.Manager");
  return BringToFront(manager);
}

Json UseManagerLate() {
  const Apartment apartment;
  Object manager(L"Kitbay.Manager");
  const HANDLE is_ending = CreateEventW(nullptr, TRUE, FALSE, L"Kitbay.Tests.Ending");
  const HANDLE is_answered = CreateEventW(nullptr, TRUE, FALSE, L"Kitbay.Tests.Answered");
  Close(L"KitbayMainWindow", L"Kitbay");
  WaitForSingleObject(is_ending, INFINITE);
  CloseHandle(is_ending);
  Json outcome;
  try {
    outcome = BringToFront(manager);
  } catch (const std::runtime_error& error) {
    outcome = {{"BringToFront", error.what()}};
  }
  SetEvent(is_answered);
  CloseHandle(is_answered);
  return outcome;
}

Json Run(const std::vector<std::wstring>& arguments) {
  const std::wstring command = arguments.empty() ? L"" : arguments[0];
  if (command == L"windows") {
    return Windows();
  }
  if (command == L"press" && arguments.size() == 3) {
    return Press(arguments[1], arguments[2]);
  }
  if (command == L"answer" && arguments.size() == 3) {
    return PressIn(std::wcstoul(arguments[1].c_str(), nullptr, 10), arguments[2]);
  }
  if (command == L"close" && arguments.size() == 3) {
    return Close(arguments[1], arguments[2]);
  }
  if (command == L"restore" && arguments.size() == 2) {
    return Restore(arguments[1]);
  }
  if (command == L"size" && arguments.size() == 4) {
    return Size(arguments[1], arguments[2], arguments[3]);
  }
  if (command == L"resolution" && arguments.size() == 3) {
    return Resolution(arguments[1], arguments[2]);
  }
  if (command == L"minimize" && arguments.size() == 2) {
    return Minimize(arguments[1]);
  }
  if (command == L"signal" && arguments.size() == 2) {
    return Signal(arguments[1]);
  }
  if (command == L"key" && arguments.size() == 3) {
    return Key(arguments[1], arguments[2]);
  }
  if (command == L"value" && arguments.size() == 3) {
    return Value(arguments[1], arguments[2]);
  }
  if (command == L"refuse" && arguments.size() == 2) {
    return Refuse(arguments[1]);
  }
  if (command == L"programs" && arguments.size() == 2) {
    return Programs(arguments[1]);
  }
  if (command == L"description" && arguments.size() == 3) {
    return Description(arguments[1], arguments[2]);
  }
  if (command == L"registry") {
    return UseRegistry();
  }
  if (command == L"manager") {
    return UseManager();
  }
  if (command == L"late") {
    return UseManagerLate();
  }
  throw std::runtime_error("unknown command");
}

Json Answer(const Json& question) {
  try {
    std::vector<std::wstring> words;
    for (const Json& word : question) {
      words.push_back(ToUtf16(word.get<std::string>()));
    }
    return {{"value", Run(words)}};
  } catch (const std::exception& error) {
    return {{"error", error.what()}};
  }
}

}  // namespace

int main() {
  for (std::string line; std::getline(std::cin, line);) {
    std::cout << Answer(Json::parse(line)).dump() << std::endl;
  }
}
