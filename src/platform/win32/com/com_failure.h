#pragma once

#include <windows.h>

#include <cstdint>

#include "base/failure.h"

namespace kitbay::platform::win32 {

/// The failure that a COM call's result stands for: a classic run-time number if the result carries
/// one or has a well-known meaning, otherwise the HRESULT with the system's text for it.
base::Failure FailureOf(HRESULT result);

/// The same with the failing object's own description; the usual description if that is empty.
base::Failure FailureOf(HRESULT result, const std::string& description);

/// Throws `FailureOf(result)` if `result` is a failure.
void Check(HRESULT result);

/// Throws the failure of `result`, with the description that the object left for this thread.
void CheckWithErrorInfo(HRESULT result);

/// Reports the exception being handled to a foreign caller: returns the HRESULT (0x800A0000 plus
/// the number for a run-time error) and leaves the description as this thread's error object. Must
/// be called inside a catch block.
HRESULT ReportCurrentException() noexcept;

}  // namespace kitbay::platform::win32
