// bare_transfer PORT PATH FILE
// Fetches a file from 127.0.0.1 with the system's HTTP client, writes it to FILE, and prints
// "done".
#include <windows.h>

#include <winhttp.h>

#include <cstdio>
#include <cwchar>
#include <vector>

int wmain(int count, wchar_t** words) {
  if (count != 4) {
    return 2;
  }
  const auto port = static_cast<INTERNET_PORT>(std::wcstoul(words[1], nullptr, 10));
  const HINTERNET session = WinHttpOpen(L"Kitbay", WINHTTP_ACCESS_TYPE_NO_PROXY,
                                        WINHTTP_NO_PROXY_NAME, WINHTTP_NO_PROXY_BYPASS, 0);
  const HINTERNET connection = WinHttpConnect(session, L"127.0.0.1", port, 0);
  const HINTERNET request = WinHttpOpenRequest(connection, L"GET", words[2], nullptr,
                                               WINHTTP_NO_REFERER, WINHTTP_DEFAULT_ACCEPT_TYPES, 0);
  if (!WinHttpSendRequest(request, WINHTTP_NO_ADDITIONAL_HEADERS, 0, WINHTTP_NO_REQUEST_DATA, 0, 0,
                          0) ||
      !WinHttpReceiveResponse(request, nullptr)) {
    return 1;
  }
  const HANDLE file = CreateFileW(words[3], GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS,
                                  FILE_ATTRIBUTE_NORMAL, nullptr);
  std::vector<char> buffer(256 * 1024);
  DWORD received = 1;
  while (received > 0) {
    DWORD written = 0;
    if (!WinHttpReadData(request, buffer.data(), static_cast<DWORD>(buffer.size()), &received) ||
        !WriteFile(file, buffer.data(), received, &written, nullptr)) {
      return 1;
    }
  }
  std::puts("done");
  std::fflush(stdout);
  // The end of the process closes the handles.
  return 0;
}
