#pragma once

#include <windows.h>

#include "request_document.h"
#include "transfer_event.h"

namespace ovalink {

/// Carries a request out: fetches the file under a temporary name beside its destination and gives
/// it its name when it is whole. Sends "Total-Length" and received counts when the server announces
/// the length, at last either that it is complete or one failure; nothing more, and no file, once
/// the event `cancel` is set. Lasts as long as the transfer.
void Transfer(const DownloadRequest& request, HANDLE cancel, const SendEvent& send);

}  // namespace ovalink
