#include "transfer_settings.h"

#include <charconv>

#include "platform/win32/system/utf.h"

namespace ovalink {
namespace {

/// A text value of the key; "" if it is missing.
std::string SettingOf(const wchar_t* name) {
  std::wstring text;
  DWORD bytes = 0;
  LSTATUS result = ERROR_MORE_DATA;
  while (result == ERROR_MORE_DATA) {
    text.resize(bytes / sizeof(wchar_t) + 1);
    bytes = static_cast<DWORD>(text.size() * sizeof(wchar_t));
    result = RegGetValueW(HKEY_CURRENT_USER, L"software\\Ovalink", name, RRF_RT_REG_SZ, nullptr,
                          text.data(), &bytes);
  }
  if (result != ERROR_SUCCESS) {
    return {};
  }
  return kitbay::platform::win32::ToUtf8(text.substr(0, text.find(L'\0')));
}

}  // namespace

TransferSettings ReadTransferSettings() {
  TransferSettings settings;
  settings.plain_http_servers = SettingOf(L"PlainHttpServers");
  const std::string seconds = SettingOf(L"TransferTimeout");
  DWORD number = 0;
  const auto [end, error] =
      std::from_chars(seconds.data(), seconds.data() + seconds.size(), number);
  const bool is_number = error == std::errc() && end == seconds.data() + seconds.size();
  if (is_number && number >= 1 && number <= 3600) {
    settings.timeout_ms = number * 1000;
  }
  return settings;
}

}  // namespace ovalink
