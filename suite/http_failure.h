#pragma once

#include <windows.h>

#include "transfer_failure.h"

namespace ovalink {

/// Throws the `TransferFailure` for WinHTTP's `error`, possibly a `ConnectionLost`;
/// `certificate_flags` are those reported for a certificate that WinHTTP refused.
[[noreturn]] void ThrowHttpFailure(DWORD error, DWORD certificate_flags = 0);

/// The failure of a server that does not answer in time.
TransferFailure TimedOut();

}  // namespace ovalink
