#include "platform/win32/com/instance_mark.h"

// After windows.h, which it needs.
#include <sddl.h>

#include <array>
#include <memory>

#include "platform/win32/win32_platform.h"

namespace kitbay::platform::win32 {
namespace {

// The user of this process, as text, because programs of several users may share a desktop. Empty
// if the system does not report it.
std::wstring UserId() {
  UniqueKernelObject token;
  alignas(TOKEN_USER) std::array<BYTE, sizeof(TOKEN_USER) + SECURITY_MAX_SID_SIZE> user{};
  DWORD size = 0;
  wchar_t* text = nullptr;
  if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, token.put()) ||
      !GetTokenInformation(token.get(), TokenUser, user.data(), static_cast<DWORD>(user.size()),
                           &size) ||
      !ConvertSidToStringSidW(reinterpret_cast<const TOKEN_USER*>(user.data())->User.Sid, &text)) {
    return {};
  }
  const std::wstring id = text;
  LocalFree(text);
  return id;
}

}  // namespace

bool MutexMark::PreviousInstanceExists() {
  if (!previous_) {
    mutex_.reset(CreateMutexW(nullptr, FALSE, name_.c_str()));
    const DWORD error = GetLastError();
    // Access denied means that it exists, created by an instance with other rights.
    previous_ = mutex_ ? error == ERROR_ALREADY_EXISTS : error == ERROR_ACCESS_DENIED;
    if (*previous_) {
      mutex_.reset();
    }
  }
  return *previous_;
}

void MutexMark::Release() {
  mutex_.reset();
  previous_.reset();
}

std::unique_ptr<InstanceMark> MakeInstanceMark() {
  return std::make_unique<MutexMark>(L"Local\\Kitbay.Manager." + UserId());
}

}  // namespace kitbay::platform::win32
