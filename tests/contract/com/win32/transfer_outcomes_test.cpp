// How the download object handles what the system's HTTP client may report. Which of these cases a
// real server causes depends on the system; here each one occurs.
#include <gtest/gtest.h>
#include <windows.h>

#include <string>

#include "contract/com/win32/download_fixture.h"
#include "contract/com/win32/scripted_http.h"
#include "contract/failure_number.h"
#include "contract/system/win32/scratch_folder.h"

namespace kitbay::contract {
namespace {

class TransferOutcomes : public DownloadObject {
 protected:
  TransferOutcomes() { download_->SetUp(receiver_); }

  /// How the transfer that gets the scripted answers ends: its failure, or "" for none.
  std::string Outcome(const std::string& server = "127.0.0.1", const std::string& path = "/a.zip") {
    download_->Request(Document(file_, server, path));
    const std::string events = AwaitEnd();
    const std::string start = "Exception(" + path + ",";
    const auto at = events.find(start);
    return at == std::string::npos
               ? ""
               : events.substr(at + start.size(), events.size() - at - start.size() - 1);
  }

  std::string Stored() const {
    const auto files = platform::win32::MakeFiles();
    return files->Exists(file_) ? files->Read(file_) : "(nothing)";
  }

  std::string SecureOutcome() { return Outcome("https:", "//updates.example/a.zip"); }

  ScriptedHttp http_;
  ScratchFolder folder_;
  std::string file_ = folder_.path() + "\\a.zip";
};

TEST_F(TransferOutcomes, AllThatWasAnnouncedIsStored) {
  http_.answers = {{.fields = {{WINHTTP_QUERY_CONTENT_LENGTH, L"5"}}, .pieces = {"abc", "de"}}};
  EXPECT_EQ(Outcome(), "");
  EXPECT_EQ(Stored(), "abcde");
}

TEST_F(TransferOutcomes, MoreThanWasAnnouncedEndsTheTransfer) {
  http_.answers = {{.fields = {{WINHTTP_QUERY_CONTENT_LENGTH, L"5"}}, .pieces = {"abcde", "f"}}};
  EXPECT_EQ(Outcome(), "The server sent more than the 5 bytes it announced");
  EXPECT_EQ(Stored(), "(nothing)");
}

TEST_F(TransferOutcomes, LessThanWasAnnouncedIsCutShort) {
  http_.answers = {{.fields = {{WINHTTP_QUERY_CONTENT_LENGTH, L"5"}}, .pieces = {"abcd"}}};
  EXPECT_EQ(Outcome(), "The answer was cut short: 4 of 5 bytes");
  EXPECT_EQ(Stored(), "(nothing)");
}

TEST_F(TransferOutcomes, ChunksThatBreakOffAreCutShort) {
  http_.answers = {{.fields = {{WINHTTP_QUERY_TRANSFER_ENCODING, L"chunked"}},
                    .pieces = {"abc"},
                    .read_error = ERROR_WINHTTP_CONNECTION_ERROR}};
  EXPECT_EQ(Outcome(), "The answer was cut short: 3 bytes");
  EXPECT_EQ(Stored(), "(nothing)");
}

TEST_F(TransferOutcomes, ChunksThatEndAreStored) {
  http_.answers = {{.fields = {{WINHTTP_QUERY_TRANSFER_ENCODING, L"chunked"}}, .pieces = {"abc"}}};
  EXPECT_EQ(Outcome(), "");
  EXPECT_EQ(Stored(), "abc");
}

TEST_F(TransferOutcomes, ACompressedAnswerIsRefused) {
  http_.answers = {{.fields = {{WINHTTP_QUERY_CONTENT_ENCODING, L"gzip"}}, .pieces = {"abc"}}};
  EXPECT_EQ(Outcome(), "The server's answer is compressed, which was not asked for");
  EXPECT_EQ(Stored(), "(nothing)");
  http_.answers = {{.fields = {{WINHTTP_QUERY_CONTENT_ENCODING, L"Identity"}}, .pieces = {"abc"}}};
  EXPECT_EQ(Outcome(), "");
  EXPECT_EQ(Stored(), "abc");
}

TEST_F(TransferOutcomes, TheEleventhRedirectionEndsTheTransfer) {
  const ScriptedAnswer redirected = {.status = 302,
                                     .fields = {{WINHTTP_QUERY_LOCATION, L"/b.zip"}}};
  http_.answers.assign(10, redirected);
  http_.answers.push_back({.pieces = {"abc"}});
  EXPECT_EQ(Outcome(), "");
  EXPECT_EQ(Stored(), "abc");
  http_.answers.assign(11, redirected);
  http_.answers.push_back({.pieces = {"def"}});
  EXPECT_EQ(Outcome(), "The server sent the request on too often");
  EXPECT_EQ(Stored(), "abc");
}

constexpr const char* kTooLarge = "The server's file is larger than the 3 bytes announced for it";

TEST_F(TransferOutcomes, ChunksOfMoreThanTheClientAllowsEndIt) {
  download_->LimitNext(3);
  http_.answers = {
      {.fields = {{WINHTTP_QUERY_TRANSFER_ENCODING, L"chunked"}}, .pieces = {"abc", "d"}}};
  EXPECT_EQ(Outcome(), kTooLarge);
  EXPECT_EQ(Stored(), "(nothing)");
}

TEST_F(TransferOutcomes, AnAnswerThatAnnouncesMoreThanTheClientAllowsIsNotRead) {
  download_->LimitNext(3);
  http_.answers = {{.fields = {{WINHTTP_QUERY_CONTENT_LENGTH, L"4"}}, .pieces = {}}};
  EXPECT_EQ(Outcome(), kTooLarge);
}

TEST_F(TransferOutcomes, WhatWasKeptOfALargerFileIsNotResumed) {
  http_.answers = {
      {.fields = {{WINHTTP_QUERY_CONTENT_LENGTH, L"5"}, {WINHTTP_QUERY_ETAG, L"\"one\""}},
       .pieces = {"abc"}}};
  EXPECT_EQ(Outcome(), "The answer was cut short: 3 of 5 bytes");
  http_.answers = {{.fields = {{WINHTTP_QUERY_CONTENT_LENGTH, L"4"}}, .pieces = {"wxyz"}}};
  download_->LimitNext(4);
  EXPECT_EQ(Outcome(), "");
  EXPECT_EQ(http_.requests.back().fields.find(L"Range"), std::wstring::npos);
  EXPECT_EQ(Stored(), "wxyz");
}

TEST_F(TransferOutcomes, ALimitIsForOneRequest) {
  const ScriptedAnswer answer = {.fields = {{WINHTTP_QUERY_CONTENT_LENGTH, L"4"}},
                                 .pieces = {"abcd"}};
  download_->LimitNext(4);
  http_.answers = {answer, answer};
  EXPECT_EQ(Outcome(), "");
  download_->LimitNext(3);
  EXPECT_EQ(FailureNumber([&] { download_->Request("no document"); }), E_INVALIDARG);
  EXPECT_EQ(Outcome(), "");
  EXPECT_EQ(Stored(), "abcd");
}

TEST_F(TransferOutcomes, ACertificateIsRefusedForWhatIsWrongWithIt) {
  const auto refused = [&](DWORD flags) {
    http_.answers = {{.send_error = ERROR_WINHTTP_SECURE_FAILURE, .certificate_flags = flags}};
    return SecureOutcome();
  };
  EXPECT_EQ(refused(WINHTTP_CALLBACK_STATUS_FLAG_CERT_CN_INVALID),
            "The server's certificate is for another server");
  EXPECT_EQ(refused(WINHTTP_CALLBACK_STATUS_FLAG_CERT_DATE_INVALID),
            "The server's certificate has expired or is not valid yet");
  EXPECT_EQ(refused(WINHTTP_CALLBACK_STATUS_FLAG_INVALID_CA),
            "The server's certificate is not trusted");
  EXPECT_EQ(refused(0),
            "No secure connection to the server could be made; its certificate may not be valid");
}

constexpr DWORD kAll =
    WINHTTP_AUTH_SCHEME_BASIC | WINHTTP_AUTH_SCHEME_NTLM | WINHTTP_AUTH_SCHEME_NEGOTIATE;

TEST_F(TransferOutcomes, AProxyGetsTheUsersOwnSignOnAndNobodyElse) {
  http_.answers = {{.status = 407, .schemes = kAll}, {.pieces = {"abc"}}};
  EXPECT_EQ(SecureOutcome(), "");
  EXPECT_EQ(Stored(), "abc");
  ASSERT_EQ(http_.requests.size(), 2U);
  const ScriptedRequest& first = http_.requests[0];
  EXPECT_TRUE(first.credentials.empty());
  EXPECT_NE(first.disabled & WINHTTP_DISABLE_AUTHENTICATION, 0U);
  const ScriptedRequest& second = http_.requests[1];
  EXPECT_EQ(second.credentials, std::vector<std::string>{"1 16 own"});
  EXPECT_EQ(second.sign_on_policy, 3U);
  EXPECT_EQ(second.disabled & WINHTTP_DISABLE_AUTHENTICATION, 0U);
}

TEST_F(TransferOutcomes, AProxyThatRefusesTheSignOnIsNotAskedAThirdTime) {
  http_.answers = {{.status = 407, .schemes = kAll}, {.status = 407, .schemes = kAll}};
  EXPECT_EQ(SecureOutcome(), "The server answered 407 (Proxy Authentication Required)");
  EXPECT_EQ(http_.requests.size(), 2U);
}

class NoSignOn : public TransferOutcomes {
 protected:
  /// The single request ends with that status.
  void Ends(const std::string& words, const std::string& outcome) {
    EXPECT_EQ(outcome, "The server answered " + words);
    ASSERT_EQ(http_.requests.size(), 1U);
    EXPECT_TRUE(http_.requests[0].credentials.empty());
  }
};

TEST_F(NoSignOn, ForAServer) {
  http_.answers = {{.status = 401, .schemes = kAll, .target = WINHTTP_AUTH_TARGET_SERVER}};
  Ends("401 (Unauthorized)", SecureOutcome());
}

TEST_F(NoSignOn, ForAServerThatPlaysTheProxy) {
  http_.answers = {{.status = 407, .has_certificate = true, .schemes = kAll}};
  Ends("407 (Proxy Authentication Required)", SecureOutcome());
}

TEST_F(NoSignOn, InPlainHttp) {
  http_.answers = {{.status = 407, .schemes = kAll}};
  Ends("407 (Proxy Authentication Required)", Outcome());
}

TEST_F(NoSignOn, ByAPassword) {
  http_.answers = {{.status = 407, .schemes = WINHTTP_AUTH_SCHEME_BASIC}};
  Ends("407 (Proxy Authentication Required)", SecureOutcome());
}

TEST_F(TransferOutcomes, ASystemThatCannotKeepTheSignOnFromServersGivesNone) {
  http_.knows_sign_on_policy = false;
  http_.answers = {{.status = 407, .schemes = kAll}, {.pieces = {"abc"}}};
  EXPECT_EQ(SecureOutcome(),
            "The proxy wants a sign-on, which this system cannot keep from servers");
  EXPECT_TRUE(http_.requests[1].credentials.empty());
}

TEST_F(TransferOutcomes, TheSystemMayWantTheRequestAgain) {
  http_.answers = {{.send_error = ERROR_WINHTTP_RESEND_REQUEST}};
  EXPECT_EQ(Outcome(), "The server's answer was not understood");
}

}  // namespace
}  // namespace kitbay::contract
