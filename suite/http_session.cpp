#include "http_session.h"

#include <memory>

#include "http_failure.h"

namespace ovalink {
namespace {

constexpr wchar_t kUserAgent[] = L"Kitbay";

struct GlobalDeleter {
  void operator()(wchar_t* text) const { GlobalFree(text); }
};
using GlobalText = std::unique_ptr<wchar_t, GlobalDeleter>;

UniqueInternet Open(DWORD access, const wchar_t* proxy = WINHTTP_NO_PROXY_NAME,
                    const wchar_t* bypass = WINHTTP_NO_PROXY_BYPASS) {
  return UniqueInternet(WinHttpOpen(kUserAgent, access, proxy, bypass, WINHTTP_FLAG_ASYNC));
}

UniqueInternet OpenWithUsersProxy() {
  WINHTTP_CURRENT_USER_IE_PROXY_CONFIG settings{};
  if (!WinHttpGetIEProxyConfigForCurrentUser(&settings)) {
    settings = {};
  }
  const GlobalText script(settings.lpszAutoConfigUrl);
  const GlobalText proxy(settings.lpszProxy);
  const GlobalText bypass(settings.lpszProxyBypass);
  if (!proxy || settings.fAutoDetect || script) {
    // Before Windows 8.1, no access type finds a proxy automatically.
    UniqueInternet session = Open(WINHTTP_ACCESS_TYPE_AUTOMATIC_PROXY);
    if (session) {
      return session;
    }
  }
  return proxy ? Open(WINHTTP_ACCESS_TYPE_NAMED_PROXY, proxy.get(), bypass.get())
               : Open(WINHTTP_ACCESS_TYPE_DEFAULT_PROXY);
}

/// Windows 7 would offer only older protocols; later systems know TLS 1.3.
void DemandTls(HINTERNET session) {
  DWORD protocols = WINHTTP_FLAG_SECURE_PROTOCOL_TLS1_2 | WINHTTP_FLAG_SECURE_PROTOCOL_TLS1_3;
  if (!WinHttpSetOption(session, WINHTTP_OPTION_SECURE_PROTOCOLS, &protocols, sizeof protocols)) {
    SetNumber(session, WINHTTP_OPTION_SECURE_PROTOCOLS, WINHTTP_FLAG_SECURE_PROTOCOL_TLS1_2);
  }
}

}  // namespace

UniqueInternet OpenSession(bool direct) {
  UniqueInternet session = direct ? Open(WINHTTP_ACCESS_TYPE_NO_PROXY) : OpenWithUsersProxy();
  if (!session) {
    ThrowHttpFailure(GetLastError());
  }
  DemandTls(session.get());
  return session;
}

void SetNumber(HINTERNET handle, DWORD option, DWORD value) {
  if (!WinHttpSetOption(handle, option, &value, sizeof value)) {
    ThrowHttpFailure(GetLastError());
  }
}

}  // namespace ovalink
