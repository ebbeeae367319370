#include "platform/win32/com/com_failure.h"

#include <oleauto.h>
#include <wrl/client.h>

#include <array>
#include <string>
#include <utility>

#include "platform/win32/com/bstr.h"

namespace kitbay::platform::win32 {
namespace {

using Microsoft::WRL::ComPtr;

/// The facility in which automation servers report run-time errors.
constexpr std::uint32_t kRuntimeErrors = 0x800A0000U;

std::int32_t NumberOf(HRESULT result) {
  const auto bits = static_cast<std::uint32_t>(result);
  if ((bits & 0xFFFF0000U) == kRuntimeErrors) {
    return static_cast<std::int32_t>(bits & 0xFFFFU);
  }
  switch (result) {
    case DISP_E_UNKNOWNNAME:
    case DISP_E_MEMBERNOTFOUND:
      return static_cast<std::int32_t>(base::RuntimeError::kMemberNotFound);
    case DISP_E_TYPEMISMATCH:
      return static_cast<std::int32_t>(base::RuntimeError::kTypeMismatch);
    case DISP_E_OVERFLOW:
      return static_cast<std::int32_t>(base::RuntimeError::kOverflow);
    case E_OUTOFMEMORY:
      return static_cast<std::int32_t>(base::RuntimeError::kOutOfMemory);
    default:
      return result;
  }
}

std::string SystemText(HRESULT result) {
  std::array<wchar_t, 512> text{};
  const DWORD length = FormatMessageW(
      FORMAT_MESSAGE_FROM_SYSTEM | FORMAT_MESSAGE_IGNORE_INSERTS | FORMAT_MESSAGE_MAX_WIDTH_MASK,
      nullptr, static_cast<DWORD>(result), 0, text.data(), static_cast<DWORD>(text.size()),
      nullptr);
  std::string description = ToUtf8(std::wstring_view(text.data(), length));
  while (!description.empty() && description.back() == ' ') {
    description.pop_back();
  }
  return description.empty() ? "Automation error" : description;
}

void LeaveDescription(const std::string& description) noexcept {
  ComPtr<ICreateErrorInfo> creation;
  if (FAILED(CreateErrorInfo(&creation))) {
    return;
  }
  try {
    creation->SetDescription(Bstr(description).get());
  } catch (...) {
    return;  // the number alone must suffice
  }
  ComPtr<IErrorInfo> error;
  if (SUCCEEDED(creation.As(&error))) {
    SetErrorInfo(0, error.Get());
  }
}

}  // namespace

base::Failure FailureOf(HRESULT result) {
  const std::int32_t number = NumberOf(result);
  if (number > 0) {
    return base::Failure(number);
  }
  return {number, SystemText(result)};
}

base::Failure FailureOf(HRESULT result, const std::string& description) {
  if (description.empty()) {
    return FailureOf(result);
  }
  return {NumberOf(result), description};
}

void Check(HRESULT result) {
  if (FAILED(result)) {
    throw FailureOf(result);
  }
}

void CheckWithErrorInfo(HRESULT result) {
  if (SUCCEEDED(result)) {
    return;
  }
  ComPtr<IErrorInfo> error;
  Bstr description;
  if (GetErrorInfo(0, &error) == S_OK) {
    error->GetDescription(description.receive());
  }
  throw FailureOf(result, description.ToText());
}

HRESULT ReportCurrentException() noexcept {
  try {
    throw;
  } catch (const base::Failure& failure) {
    LeaveDescription(failure.description());
    const std::int32_t number = failure.number();
    return number < 0 ? number
                      : static_cast<HRESULT>(kRuntimeErrors |
                                             (static_cast<std::uint32_t>(number) & 0xFFFFU));
  } catch (const std::bad_alloc&) {
    return E_OUTOFMEMORY;
  } catch (...) {
    return E_FAIL;
  }
}

}  // namespace kitbay::platform::win32
