#include "platform/win32/system/help_viewer.h"

#include "base/failure.h"
#include "platform/win32/system/system_path.h"
#include "platform/win32/system/utf.h"

namespace kitbay::platform::win32 {
namespace {

using base::Failure;
using base::RuntimeError;

constexpr UINT kDisplayTopic = 1;
constexpr UINT kCloseAll = 18;

std::wstring ViewerPath() {
  std::wstring path(MAX_PATH, L'\0');
  path.resize(GetSystemDirectoryW(path.data(), static_cast<UINT>(path.size())));
  return path + L"\\hhctrl.ocx";
}

}  // namespace

void HelpViewer::DisplayTopic(const std::string& topic) {
  // The viewer would report a missing file in its own message box.
  const std::wstring file = ToSystemPath(topic.substr(0, topic.find("::")));
  if (GetFileAttributesW(file.c_str()) == INVALID_FILE_ATTRIBUTES) {
    throw Failure(RuntimeError::kFileNotFound);
  }
  if (html_help_ == nullptr) {
    // Stays loaded until the program ends: its windows have their own threads.
    const HMODULE viewer = LoadLibraryW(ViewerPath().c_str());
    if (viewer != nullptr) {
      html_help_ = reinterpret_cast<HtmlHelpFunction>(
          reinterpret_cast<void*>(GetProcAddress(viewer, "HtmlHelpW")));
    }
  }
  if (html_help_ == nullptr) {
    throw Failure(RuntimeError::kFileNotFound, "hhctrl.ocx");
  }
  if (html_help_(GetDesktopWindow(), ToUtf16(topic).c_str(), kDisplayTopic, 0) == nullptr) {
    throw Failure(RuntimeError::kPathFileAccessError, topic);
  }
}

void HelpViewer::CloseAll() {
  if (html_help_ != nullptr) {
    html_help_(nullptr, nullptr, kCloseAll, 0);
  }
}

}  // namespace kitbay::platform::win32
