#include "helper_process.h"

#include <windows.h>

#include <string_view>

#include "socket.h"

namespace kitbay::web_browser {
namespace {

constexpr wchar_t kRegistration[] =
    L"Software\\Classes\\CLSID\\{8856F961-340A-11D0-A96B-00C04FD705A2}";

std::wstring Setting(const wchar_t* variable, const wchar_t* registered) {
  wchar_t text[MAX_PATH];
  const DWORD length = GetEnvironmentVariableW(variable, text, MAX_PATH);
  if (length > 0 && length < MAX_PATH) {
    return text;
  }
  DWORD size = sizeof text;
  const LSTATUS status = RegGetValueW(HKEY_LOCAL_MACHINE, kRegistration, registered, RRF_RT_REG_SZ,
                                      nullptr, text, &size);
  if (status != ERROR_SUCCESS) {
    throw LinkLost("The helper is not registered");
  }
  return text;
}

/** A Unix file under the name by which Wine can start it. */
std::wstring DosName(const std::wstring& unix_name) {
  std::wstring name = L"Z:" + unix_name;
  for (wchar_t& c : name) {
    if (c == L'/') {
      c = L'\\';
    }
  }
  return name;
}

}  // namespace

void StartHelper(int port, const std::string& token) {
  const std::wstring node = Setting(L"WEB_BROWSER_STANDIN_NODE", L"Node");
  const std::wstring script = Setting(L"WEB_BROWSER_STANDIN_HELPER", L"Helper");
  std::wstring command = L"\"" + DosName(node) + L"\" \"" + script + L"\" " +
                         std::to_wstring(port) + L" " + std::wstring(token.begin(), token.end());
  STARTUPINFOW startup = {};
  startup.cb = sizeof startup;
  PROCESS_INFORMATION process = {};
  // Wine returns no usable handles for a Unix program, so there is none to close: the helper lives
  // as long as its connections.
  if (!CreateProcessW(DosName(node).c_str(), command.data(), nullptr, nullptr, FALSE, 0, nullptr,
                      nullptr, &startup, &process)) {
    throw LinkLost("The helper does not start: error " + std::to_string(GetLastError()));
  }
}

}  // namespace kitbay::web_browser
