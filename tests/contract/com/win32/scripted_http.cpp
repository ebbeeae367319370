#include "contract/com/win32/scripted_http.h"

#include <cstring>
#include <utility>

namespace kitbay::contract {
namespace {

// The handles of requests are counted from here; all other handles are the same.
HINTERNET HandleOf(INT_PTR number) { return reinterpret_cast<HINTERNET>(number); }
constexpr INT_PTR kOther = 1;
constexpr INT_PTR kFirstRequest = 2;

}  // namespace

ScriptedHttp* ScriptedHttp::current = nullptr;

struct ScriptedHttp::Calls {
  static HINTERNET WINAPI Open(LPCWSTR, DWORD, LPCWSTR, LPCWSTR, DWORD) { return HandleOf(kOther); }
  static HINTERNET WINAPI Connect(HINTERNET, LPCWSTR, INTERNET_PORT, DWORD) {
    return HandleOf(kOther);
  }
  static BOOL WINAPI SetTimeouts(HINTERNET, int, int, int, int) { return TRUE; }

  static HINTERNET WINAPI OpenRequest(HINTERNET, LPCWSTR, LPCWSTR, LPCWSTR, LPCWSTR, LPCWSTR*,
                                      DWORD) {
    ScriptedHttp& http = *current;
    if (http.answers.empty()) {
      http.requests.emplace_back();
      SetLastError(ERROR_INVALID_OPERATION);
      return nullptr;
    }
    http.answer_ = std::move(http.answers.front());
    http.answers.pop_front();
    http.piece_ = 0;
    http.requests.emplace_back();
    http.contexts_.push_back(0);
    return HandleOf(kFirstRequest + static_cast<INT_PTR>(http.contexts_.size()) - 1);
  }

  static BOOL WINAPI Close(HINTERNET handle) {
    if (handle != HandleOf(kOther)) {
      current->Tell(handle, WINHTTP_CALLBACK_STATUS_HANDLE_CLOSING, &handle, sizeof handle);
    }
    return TRUE;
  }

  static BOOL WINAPI SetOption(HINTERNET handle, DWORD option, void* value, DWORD) {
    if (handle == HandleOf(kOther)) {
      return TRUE;
    }
    ScriptedRequest& request = current->requests.back();
    const DWORD number = *static_cast<DWORD*>(value);
    if (option == WINHTTP_OPTION_CONTEXT_VALUE) {
      current->contexts_.back() = *static_cast<DWORD_PTR*>(value);
    }
    if (option == WINHTTP_OPTION_DISABLE_FEATURE) {
      request.disabled |= number;
    }
    if (option == WINHTTP_OPTION_AUTOLOGON_POLICY) {
      request.sign_on_policy = number;
      return current->knows_sign_on_policy ? TRUE : FALSE;
    }
    return TRUE;
  }

  static WINHTTP_STATUS_CALLBACK WINAPI SetCallback(HINTERNET, WINHTTP_STATUS_CALLBACK callback,
                                                    DWORD, DWORD_PTR) {
    current->callback_ = callback;
    return nullptr;
  }

  static BOOL WINAPI Send(HINTERNET handle, LPCWSTR fields, DWORD, void*, DWORD, DWORD, DWORD_PTR) {
    current->requests.back().fields = fields;
    if (current->answer_.certificate_flags != 0) {
      DWORD flags = current->answer_.certificate_flags;
      current->Tell(handle, WINHTTP_CALLBACK_STATUS_SECURE_FAILURE, &flags, sizeof flags);
    }
    if (current->answer_.send_error != ERROR_SUCCESS) {
      current->Fail(handle, current->answer_.send_error);
    } else {
      current->Tell(handle, WINHTTP_CALLBACK_STATUS_SENDREQUEST_COMPLETE, nullptr, 0);
    }
    return TRUE;
  }

  static BOOL WINAPI Receive(HINTERNET handle, void*) {
    current->Tell(handle, WINHTTP_CALLBACK_STATUS_HEADERS_AVAILABLE, nullptr, 0);
    return TRUE;
  }

  static BOOL WINAPI QueryHeaders(HINTERNET, DWORD query, LPCWSTR, void* buffer, DWORD* size,
                                  DWORD*) {
    if (query == (WINHTTP_QUERY_STATUS_CODE | WINHTTP_QUERY_FLAG_NUMBER)) {
      *static_cast<DWORD*>(buffer) = current->answer_.status;
      return TRUE;
    }
    const auto field = current->answer_.fields.find(query);
    if (field == current->answer_.fields.end()) {
      SetLastError(ERROR_WINHTTP_HEADER_NOT_FOUND);
      return FALSE;
    }
    const auto bytes = static_cast<DWORD>(field->second.size() * sizeof(wchar_t));
    if (buffer == nullptr || *size < bytes + sizeof(wchar_t)) {
      *size = bytes + sizeof(wchar_t);
      SetLastError(ERROR_INSUFFICIENT_BUFFER);
      return FALSE;
    }
    std::memcpy(buffer, field->second.c_str(), bytes + sizeof(wchar_t));
    *size = bytes;
    return TRUE;
  }

  static BOOL WINAPI QueryData(HINTERNET handle, DWORD*) {
    const ScriptedAnswer& answer = current->answer_;
    if (current->piece_ == answer.pieces.size() && answer.read_error != ERROR_SUCCESS) {
      SetLastError(answer.read_error);
      return FALSE;
    }
    DWORD length = current->piece_ < answer.pieces.size()
                       ? static_cast<DWORD>(answer.pieces[current->piece_].size())
                       : 0;
    current->Tell(handle, WINHTTP_CALLBACK_STATUS_DATA_AVAILABLE, &length, sizeof length);
    return TRUE;
  }

  static BOOL WINAPI ReadData(HINTERNET handle, void* buffer, DWORD, DWORD*) {
    const std::string& piece = current->answer_.pieces[current->piece_++];
    std::memcpy(buffer, piece.data(), piece.size());
    current->Tell(handle, WINHTTP_CALLBACK_STATUS_READ_COMPLETE, buffer,
                  static_cast<DWORD>(piece.size()));
    return TRUE;
  }

  static BOOL WINAPI QueryOption(HINTERNET, DWORD option, void* value, DWORD*) {
    if (option != WINHTTP_OPTION_SERVER_CERT_CONTEXT || !current->answer_.has_certificate) {
      return FALSE;
    }
    *static_cast<PCCERT_CONTEXT*>(value) = nullptr;
    return TRUE;
  }

  static BOOL WINAPI QuerySchemes(HINTERNET, DWORD* supported, DWORD* first, DWORD* target) {
    *supported = *first = current->answer_.schemes;
    *target = current->answer_.target;
    return current->answer_.schemes != 0 ? TRUE : FALSE;
  }

  static BOOL WINAPI SetCredentials(HINTERNET, DWORD target, DWORD scheme, LPCWSTR user, LPCWSTR,
                                    void*) {
    current->requests.back().credentials.push_back(std::to_string(target) + " " +
                                                   std::to_string(scheme) +
                                                   (user == nullptr ? " own" : " named"));
    return TRUE;
  }
};

ScriptedHttp::ScriptedHttp() {
  current = this;
  const std::pair<const char*, void*> calls[] = {
      {"WinHttpOpen", reinterpret_cast<void*>(&Calls::Open)},
      {"WinHttpConnect", reinterpret_cast<void*>(&Calls::Connect)},
      {"WinHttpSetTimeouts", reinterpret_cast<void*>(&Calls::SetTimeouts)},
      {"WinHttpOpenRequest", reinterpret_cast<void*>(&Calls::OpenRequest)},
      {"WinHttpCloseHandle", reinterpret_cast<void*>(&Calls::Close)},
      {"WinHttpSetOption", reinterpret_cast<void*>(&Calls::SetOption)},
      {"WinHttpSetStatusCallback", reinterpret_cast<void*>(&Calls::SetCallback)},
      {"WinHttpSendRequest", reinterpret_cast<void*>(&Calls::Send)},
      {"WinHttpReceiveResponse", reinterpret_cast<void*>(&Calls::Receive)},
      {"WinHttpQueryHeaders", reinterpret_cast<void*>(&Calls::QueryHeaders)},
      {"WinHttpQueryDataAvailable", reinterpret_cast<void*>(&Calls::QueryData)},
      {"WinHttpReadData", reinterpret_cast<void*>(&Calls::ReadData)},
      {"WinHttpQueryOption", reinterpret_cast<void*>(&Calls::QueryOption)},
      {"WinHttpQueryAuthSchemes", reinterpret_cast<void*>(&Calls::QuerySchemes)},
      {"WinHttpSetCredentials", reinterpret_cast<void*>(&Calls::SetCredentials)},
  };
  for (const auto& [name, replacement] : calls) {
    replaced_.push_back(std::make_unique<ReplacedImport>(name, replacement, L"OvalinkSuite.dll"));
  }
}

ScriptedHttp::~ScriptedHttp() {
  replaced_.clear();
  current = nullptr;
}

void ScriptedHttp::Tell(HINTERNET request, DWORD status, void* information, DWORD size) const {
  const auto number = reinterpret_cast<INT_PTR>(request) - kFirstRequest;
  callback_(request, contexts_.at(static_cast<std::size_t>(number)), status, information, size);
}

void ScriptedHttp::Fail(HINTERNET request, DWORD error) const {
  WINHTTP_ASYNC_RESULT result{0, error};
  Tell(request, WINHTTP_CALLBACK_STATUS_REQUEST_ERROR, &result, sizeof result);
}

}  // namespace kitbay::contract
