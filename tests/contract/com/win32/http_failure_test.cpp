#include "http_failure.h"

#include <gtest/gtest.h>
#include <windows.h>

#include <winhttp.h>

#include <string>

#include "contract/com/win32/scratch_user.h"
#include "transfer_settings.h"

namespace kitbay::contract {
namespace {

std::string TextOfError(DWORD error, DWORD certificate_flags = 0) {
  try {
    ovalink::ThrowHttpFailure(error, certificate_flags);
  } catch (const ovalink::TransferFailure& failure) {
    return failure.text();
  }
}

bool IsConnectionLost(DWORD error) {
  try {
    ovalink::ThrowHttpFailure(error);
  } catch (const ovalink::ConnectionLost&) {
    return true;
  } catch (const ovalink::TransferFailure&) {
    return false;
  }
}

TEST(HttpFailure, SaysWhatIsWrongWithACertificate) {
  constexpr DWORD kRefused = ERROR_WINHTTP_SECURE_FAILURE;
  EXPECT_EQ(TextOfError(kRefused, WINHTTP_CALLBACK_STATUS_FLAG_INVALID_CA),
            "The server's certificate is not trusted");
  EXPECT_EQ(TextOfError(kRefused, WINHTTP_CALLBACK_STATUS_FLAG_CERT_DATE_INVALID),
            "The server's certificate has expired or is not valid yet");
  EXPECT_EQ(TextOfError(kRefused, WINHTTP_CALLBACK_STATUS_FLAG_CERT_CN_INVALID),
            "The server's certificate is for another server");
  EXPECT_EQ(TextOfError(kRefused, WINHTTP_CALLBACK_STATUS_FLAG_CERT_REVOKED),
            "The server's certificate has been revoked");
  EXPECT_EQ(TextOfError(kRefused, WINHTTP_CALLBACK_STATUS_FLAG_CERT_CN_INVALID |
                                      WINHTTP_CALLBACK_STATUS_FLAG_INVALID_CA),
            "The server's certificate is not trusted");
  EXPECT_EQ(TextOfError(kRefused, WINHTTP_CALLBACK_STATUS_FLAG_CERT_WRONG_USAGE),
            "The server's certificate is not valid");
}

TEST(HttpFailure, AnEncryptionThatFailsMayBeTheCertificatesFault) {
  const std::string text =
      "No secure connection to the server could be made; its certificate may not be valid";
  EXPECT_EQ(TextOfError(ERROR_WINHTTP_SECURE_CHANNEL_ERROR), text);
  EXPECT_EQ(TextOfError(ERROR_WINHTTP_SECURE_FAILURE,
                        WINHTTP_CALLBACK_STATUS_FLAG_SECURITY_CHANNEL_ERROR),
            text);
}

TEST(HttpFailure, EveryTimeOutIsReportedTheSameWay) {
  EXPECT_EQ(TextOfError(ERROR_WINHTTP_TIMEOUT), "connection timed out");
  EXPECT_EQ(TextOfError(WSAETIMEDOUT), "connection timed out");
  EXPECT_EQ(ovalink::TimedOut().text(), "connection timed out");
}

TEST(HttpFailure, AConnectionThatEndsEarlyIsDistinguished) {
  EXPECT_TRUE(IsConnectionLost(ERROR_WINHTTP_CONNECTION_ERROR));
  EXPECT_TRUE(IsConnectionLost(WSAECONNRESET));
  EXPECT_TRUE(IsConnectionLost(ERROR_WINHTTP_INVALID_SERVER_RESPONSE));
  EXPECT_FALSE(IsConnectionLost(ERROR_WINHTTP_CANNOT_CONNECT));
}

TEST(HttpFailure, NamesTheNumberOfAnErrorWithoutWords) {
  EXPECT_EQ(TextOfError(12345), "The transfer failed with error 12345");
}

void Keep(const wchar_t* name, const std::wstring& text) {
  RegSetKeyValueW(HKEY_CURRENT_USER, L"software\\Ovalink", name, REG_SZ, text.c_str(),
                  static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}

TEST(TransferSettings, HaveDefaults) {
  const ScratchUser user;
  EXPECT_EQ(ovalink::ReadTransferSettings().plain_http_servers, "");
  EXPECT_EQ(ovalink::ReadTransferSettings().timeout_ms, 30000U);
}

TEST(TransferSettings, AreReadFromTheUsersKey) {
  const ScratchUser user;
  const std::wstring many(5000, L'ü');
  Keep(L"PlainHttpServers", L"a.example;" + many);
  Keep(L"TransferTimeout", L"7");
  const ovalink::TransferSettings settings = ovalink::ReadTransferSettings();
  EXPECT_EQ(settings.plain_http_servers.size(), 10U + 2 * many.size());
  EXPECT_TRUE(settings.plain_http_servers.starts_with("a.example;ü"));
  EXPECT_EQ(settings.timeout_ms, 7000U);
}

TEST(TransferSettings, TakeOnlyASensibleTimeOut) {
  const ScratchUser user;
  for (const wchar_t* seconds : {L"", L"0", L"3601", L"-1", L"5s", L"99999999999"}) {
    Keep(L"TransferTimeout", seconds);
    EXPECT_EQ(ovalink::ReadTransferSettings().timeout_ms, 30000U);
  }
}

}  // namespace
}  // namespace kitbay::contract
