#pragma once

#include <windows.h>

#include <string>

namespace ovalink {

/// What the user's key HKEY_CURRENT_USER\software\Ovalink says about transfers.
struct TransferSettings {
  /// "PlainHttpServers": servers that may be contacted without encryption, separated by ";"
  /// (UTF-8).
  std::string plain_http_servers;

  /// "TransferTimeout", there in seconds (1 to 3600; 30 if it is missing): how long connecting, or
  /// the server's silence, may last.
  DWORD timeout_ms = 30000;
};

TransferSettings ReadTransferSettings();

}  // namespace ovalink
