#include <windows.h>

#include <string>

#include "base/text.h"
#include "platform/win32/system/utf.h"
#include "platform/win32/win32_platform.h"

namespace kitbay::platform::win32 {
namespace {

std::string ExecutablePath() {
  std::wstring path(MAX_PATH, L'\0');
  for (;;) {
    const DWORD length = GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
    if (length < path.size()) {
      path.resize(length);
      return ToUtf8(path);
    }
    path.resize(path.size() * 2);
  }
}

}  // namespace

ProgramPlace FindProgramPlace() {
  const std::string path = ExecutablePath();
  const auto separator = path.rfind('\\');
  ProgramPlace place{path.substr(0, separator), path.substr(separator + 1)};
  if (base::ToLower(place.name).ends_with(".exe")) {
    place.name.resize(place.name.size() - 4);
  }
  return place;
}

}  // namespace kitbay::platform::win32
