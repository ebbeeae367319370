#pragma once

#include <windows.h>

#include "request_document.h"
#include "transfer_event.h"

namespace ovalink {

/// Carries out a request: fetches the file under a temporary name beside its destination and
/// renames it when it is complete. If the server announces the length, sends "Total-Length" and the
/// received counts. Finally sends either its completion or one failure. Once the event `cancel` is
/// set, sends nothing more and leaves no file. Returns when the transfer has ended.
void Transfer(const DownloadRequest& request, HANDLE cancel, const SendEvent& send);

}  // namespace ovalink
