#include "platform/version_resource.h"

#include <windows.h>

#include <memory>
#include <vector>

#include "base/failure.h"
#include "platform/win32/system/system_path.h"
#include "platform/win32/win32_platform.h"

namespace kitbay::platform::win32 {
namespace {

constexpr DWORD kFixedFileInfoSignature = 0xFEEF04BD;

std::optional<FileVersion> ReadFixedFileInfo(const std::wstring& path) {
  DWORD ignored = 0;
  const DWORD size = GetFileVersionInfoSizeW(path.c_str(), &ignored);
  if (size == 0) {
    return std::nullopt;
  }
  std::vector<BYTE> resource(size);
  void* block = nullptr;
  UINT length = 0;
  if (!GetFileVersionInfoW(path.c_str(), 0, size, resource.data()) ||
      !VerQueryValueW(resource.data(), L"\\", &block, &length) ||
      length < sizeof(VS_FIXEDFILEINFO)) {
    return std::nullopt;
  }
  const auto* info = static_cast<const VS_FIXEDFILEINFO*>(block);
  if (info->dwSignature != kFixedFileInfoSignature) {
    return std::nullopt;
  }
  return FileVersion{info->dwFileVersionMS, info->dwFileVersionLS};
}

class Win32VersionResource : public VersionResource {
 public:
  std::optional<FileVersion> Read(const std::string& path) const override {
    try {
      return ReadFixedFileInfo(ToSystemPath(path));
    } catch (const base::Failure&) {
      return std::nullopt;  // not a path at all
    }
  }
};

}  // namespace

std::unique_ptr<VersionResource> MakeVersionResource() {
  return std::make_unique<Win32VersionResource>();
}

}  // namespace kitbay::platform::win32
