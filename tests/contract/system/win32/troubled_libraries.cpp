#include "contract/system/win32/troubled_libraries.h"

#include "platform/win32/win32_platform.h"

namespace kitbay::contract {

void CopyTroubledLibrary(const std::string& name, const std::string& path) {
  const auto files = platform::win32::MakeFiles();
  files->Create(path,
                files->Read(platform::win32::FindProgramPlace().folder +
                            "/" KITBAY_TROUBLED_LIBRARIES_FOLDER "/" + name + "/" + name + ".dll"));
}

SlowLibrary::SlowLibrary() : may_return_(CreateEventW(nullptr, TRUE, FALSE, L"OvlSlow.Return")) {
  // A thread whose library was freed never closed its handle of the event.
  ResetEvent(may_return_.get());
}

void SlowLibrary::LetReturn() const { SetEvent(may_return_.get()); }

}  // namespace kitbay::contract
