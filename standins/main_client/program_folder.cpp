#include "program_folder.h"

#include <windows.h>

std::wstring PathBesideProgram(const wchar_t* name) {
  std::wstring path(32768, L'\0');
  path.resize(GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size())));
  return path.substr(0, path.rfind(L'\\') + 1) + name;
}
