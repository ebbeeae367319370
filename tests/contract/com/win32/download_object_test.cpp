#include <gtest/gtest.h>
#include <windows.h>

#include <memory>
#include <string>

#include "contract/com/recording_receiver.h"
#include "contract/com/win32/registered_suite.h"
#include "contract/failure_number.h"
#include "platform/win32/win32_platform.h"

namespace kitbay::contract {
namespace {

std::string Document(const std::string& destination) {
  return "<server>127.0.0.1</server><filetodownload>/a.xml</filetodownload><destpath>" +
         destination + "</destpath><progressevents>true</progressevents>";
}

/// The suite's object with a receiver, and this thread's messages.
class DownloadObject : public testing::Test {
 protected:
  std::unique_ptr<platform::TransportObject> Create(const char* prog_id) {
    return platform::win32::MakeSuiteObjects(SuiteFolder())->CreateTransportObject(prog_id);
  }

  /// Handles messages until the receiver has been told of something, or has had time enough for
  /// that.
  void AwaitEvent() {
    constexpr UINT kLimitMs = 120'000;
    bool is_late = false;
    const UINT_PTR limit = SetTimer(nullptr, 0, kLimitMs, nullptr);
    MSG message;
    while (receiver_.events.empty() && !is_late && GetMessageW(&message, nullptr, 0, 0) > 0) {
      is_late = message.hwnd == nullptr && message.message == WM_TIMER && message.wParam == limit;
      DispatchMessageW(&message);
    }
    KillTimer(nullptr, limit);
  }

  RecordingReceiver receiver_;
  std::unique_ptr<platform::TransportObject> download_ = Create("URLDownloadLib.URLDownload");
};

TEST_F(DownloadObject, RefusesADocumentWithoutItsElements) {
  download_->SetUp(receiver_);
  EXPECT_EQ(FailureNumber([&] { download_->Request("<server>a</server>"); }), E_INVALIDARG);
  EXPECT_EQ(FailureNumber([&] { download_->Request(""); }), E_INVALIDARG);
}

TEST_F(DownloadObject, NeedsItsReceiverFirst) {
  EXPECT_EQ(FailureNumber([&] { download_->Request(Document("nowhere")); }), 91);
  download_->SetUp(receiver_);
  download_->ShutDown();
  EXPECT_EQ(FailureNumber([&] { download_->Request(Document("nowhere")); }), 91);
}

TEST_F(DownloadObject, TellsOfAFailureWithMessages) {
  download_->SetUp(receiver_);
  download_->Request(Document("nowhere"));
  EXPECT_EQ(receiver_.events, "");
  AwaitEvent();
  EXPECT_EQ(receiver_.events,
            "Exception(/a.xml,The file could not be written: \"nowhere\" is not the full path of a "
            "local file)");
}

TEST_F(DownloadObject, TheOtherTransportTakesNoRequests) {
  const auto transport = Create("XMLRPCTRANSPORT.xTransport");
  transport->SetUp(receiver_);
  EXPECT_EQ(FailureNumber([&] { transport->Request(Document("nowhere")); }), 438);
}

TEST_F(DownloadObject, KeepsTheLibraryUntilItHasGone) {
  download_->SetUp(receiver_);
  download_->Request(Document("nowhere"));
  EXPECT_EQ(CallSuite("DllCanUnloadNow"), S_FALSE);
  download_.reset();
  EXPECT_EQ(CallSuite("DllCanUnloadNow"), S_OK);
}

}  // namespace
}  // namespace kitbay::contract
