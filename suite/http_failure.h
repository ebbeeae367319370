#pragma once

#include <windows.h>

#include "transfer_failure.h"

namespace ovalink {

/// Throws the `TransferFailure` that WinHTTP's `error` means, which may be a `ConnectionLost`;
/// `certificate_flags` are those it gave of a certificate that it refused.
[[noreturn]] void ThrowHttpFailure(DWORD error, DWORD certificate_flags = 0);

/// The failure of a server that does not answer in time.
TransferFailure TimedOut();

}  // namespace ovalink
