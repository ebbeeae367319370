#include "event_log.h"

#include <windows.h>

#include <memory>
#include <string>

#include "program_folder.h"

namespace {

struct CloseFile {
  using pointer = HANDLE;
  void operator()(HANDLE file) const {
    if (file != INVALID_HANDLE_VALUE) {
      CloseHandle(file);
    }
  }
};
using UniqueFile = std::unique_ptr<HANDLE, CloseFile>;

}  // namespace

void AppendToEventLog(const char* event) {
  const UniqueFile file(CreateFileW(PathBesideProgram(L"Tessel.log").c_str(), FILE_APPEND_DATA,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_ALWAYS,
                                    FILE_ATTRIBUTE_NORMAL, nullptr));
  if (file.get() == INVALID_HANDLE_VALUE) {
    return;
  }
  const std::string line =
      std::string(event) + " " + std::to_string(GetCurrentProcessId()) + "\r\n";
  DWORD written = 0;
  WriteFile(file.get(), line.data(), static_cast<DWORD>(line.size()), &written, nullptr);
}
