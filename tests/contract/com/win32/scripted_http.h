#pragma once

#include <windows.h>

#include <wincrypt.h>
#include <winhttp.h>

#include <deque>
#include <map>
#include <memory>
#include <string>
#include <vector>

#include "contract/windows/replaced_import.h"

namespace kitbay::contract {

/// An answer of the system's HTTP client, or its failure.
struct ScriptedAnswer {
  DWORD status = 200;
  std::map<DWORD, std::wstring> fields = {};  ///< by WINHTTP_QUERY_...
  std::vector<std::string> pieces = {};
  DWORD read_error = ERROR_SUCCESS;  ///< instead of the end, after the last piece
  DWORD send_error = ERROR_SUCCESS;
  DWORD certificate_flags = 0;
  bool has_certificate = false;
  DWORD schemes = 0;
  DWORD target = WINHTTP_AUTH_TARGET_PROXY;
};

/// What the suite requested.
struct ScriptedRequest {
  std::wstring fields = {};
  DWORD disabled = 0;
  DWORD sign_on_policy = WINHTTP_AUTOLOGON_SECURITY_LEVEL_DEFAULT;
  std::vector<std::string> credentials = {};  ///< "target scheme user"
};

/// Replaces the system's HTTP client for the suite's library as long as it lives: returns the
/// scripted answers one after another, and records the requests. Only one may exist.
class ScriptedHttp {
 public:
  ScriptedHttp();
  ~ScriptedHttp();
  ScriptedHttp(const ScriptedHttp&) = delete;
  ScriptedHttp& operator=(const ScriptedHttp&) = delete;

  std::deque<ScriptedAnswer> answers;
  std::vector<ScriptedRequest> requests;
  bool knows_sign_on_policy = true;

 private:
  struct Calls;
  static ScriptedHttp* current;

  void Tell(HINTERNET request, DWORD status, void* information, DWORD size) const;
  void Fail(HINTERNET request, DWORD error) const;

  ScriptedAnswer answer_;
  std::size_t piece_ = 0;
  std::vector<DWORD_PTR> contexts_;
  WINHTTP_STATUS_CALLBACK callback_ = nullptr;
  std::vector<std::unique_ptr<ReplacedImport>> replaced_;
};

}  // namespace kitbay::contract
