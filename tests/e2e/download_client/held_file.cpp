#include "held_file.h"

#include <windows.h>

#include <stdexcept>

#include "platform/win32/system/utf.h"

namespace {

// The system calls these without an argument that could lead to an object.
HeldFile* g_held = nullptr;
decltype(MoveFileExW)* g_move = nullptr;

BOOL WINAPI CountAndMove(const wchar_t* from, const wchar_t* to, DWORD flags) {
  const BOOL is_moved = g_move(from, to, flags);
  const DWORD error = GetLastError();
  g_held->OnMove(to);
  SetLastError(error);
  return is_moved;
}

}  // namespace

HeldFile::HeldFile(const std::string& path, int failures)
    : path_(kitbay::platform::win32::ToUtf16(path)),
      file_(CreateFileW(path_.c_str(), GENERIC_READ, 0, nullptr, OPEN_EXISTING, 0, nullptr)),
      failures_(failures),
      moving_("MoveFileExW", reinterpret_cast<void*>(&CountAndMove), L"OvalinkSuite.dll") {
  if (!file_) {
    throw std::runtime_error("the file cannot be held");
  }
  g_held = this;
  g_move = moving_.original(MoveFileExW);
}

HeldFile::~HeldFile() { g_held = nullptr; }

void HeldFile::OnMove(std::wstring_view to) {
  if (to.ends_with(path_) && ++attempts_ == failures_) {
    file_.reset();
  }
}
