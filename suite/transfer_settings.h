#pragma once

#include <windows.h>

#include <string>

namespace ovalink {

/// What the user's key HKEY_CURRENT_USER\software\Ovalink says about transfers.
struct TransferSettings {
  /// "PlainHttpServers": servers that are asked without encryption, separated by ";" (UTF-8).
  std::string plain_http_servers;

  /// "TransferTimeout", in seconds there (1 to 3600, 30 without it): how long connecting, and
  /// silence of the server, may last.
  DWORD timeout_ms = 30000;
};

TransferSettings ReadTransferSettings();

}  // namespace ovalink
