#pragma once

#include <windows.h>

#include <cstdint>

#include "base/failure.h"

namespace kitbay::platform::win32 {

/// The failure that a COM call's result means: a classic run-time number where the result carries
/// one or has a well-known meaning, otherwise the HRESULT with the system's text for it.
base::Failure FailureOf(HRESULT result);

/// The same with the description that the failing object gave; the usual one when it is empty.
base::Failure FailureOf(HRESULT result, const std::string& description);

/// Throws `FailureOf(result)` when `result` is a failure.
void Check(HRESULT result);

/// Throws the failure of `result`, with the description that the object left for this thread.
void CheckWithErrorInfo(HRESULT result);

/// What a foreign caller is told of the exception being handled: the HRESULT (0x800A0000 and the
/// number for a run-time error), with the description left as this thread's error object.
/// To be called inside a catch block.
HRESULT ReportCurrentException() noexcept;

}  // namespace kitbay::platform::win32
