#include <gtest/gtest.h>
#include <windows.h>

#include <process.h>

#include <cstddef>
#include <cstdlib>
#include <memory>
#include <string>

#include "contract/com/win32/download_fixture.h"
#include "contract/failure_number.h"
#include "contract/windows/replaced_import.h"

namespace kitbay::contract {
namespace {

BOOL WINAPI LosePost(HWND, UINT, WPARAM, LPARAM) {
  SetLastError(ERROR_NOT_ENOUGH_QUOTA);
  return FALSE;
}

BOOL WINAPI PretendToPost(HWND, UINT, WPARAM, LPARAM) { return TRUE; }

constexpr std::size_t kLarge = 1000;

/// The only thread that `AllocateLargeForOne` has large blocks for.
DWORD& FedThread() {
  static DWORD id = 0;
  return id;
}

void* AllocateLargeForOne(std::size_t bytes) {
  return bytes < kLarge || GetCurrentThreadId() == FedThread() ? std::malloc(bytes) : nullptr;
}

int& StartedThreads() {
  static int count = 0;
  return count;
}

std::uintptr_t CountThread(void* security, unsigned stack, unsigned(WINAPI* start)(void*),
                           void* argument, unsigned flags, unsigned* id) {
  ++StartedThreads();
  return _beginthreadex(security, stack, start, argument, flags, id);
}

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

TEST_F(DownloadObject, ReportsAFailureByMessages) {
  download_->SetUp(receiver_);
  download_->Request(Document("nowhere"));
  EXPECT_EQ(receiver_.events, "");
  EXPECT_EQ(AwaitEnd(),
            "Exception(/a.xml,The file could not be written: \"nowhere\" is not the full path of a "
            "local file)");
}

TEST_F(DownloadObject, ReportsAnEndWhoseMessageIsLost) {
  for (auto* const post : {&LosePost, &PretendToPost}) {
    const ReplacedImport lost("PostMessageW", reinterpret_cast<void*>(post), L"OvalinkSuite.dll");
    download_->SetUp(receiver_);
    for (int times = 0; times < 2; ++times) {
      download_->Request(Document("nowhere"));
      EXPECT_EQ(AwaitEnd().substr(0, 17), "Exception(/a.xml,");
    }
    download_->ShutDown();
  }
}

TEST_F(DownloadObject, ReportsATransferThatCouldNotTellOfItsEnd) {
  FedThread() = GetCurrentThreadId();
  const ReplacedImport starved("malloc", reinterpret_cast<void*>(&AllocateLargeForOne),
                               L"OvalinkSuite.dll");
  download_->SetUp(receiver_);
  const std::string path = "/" + std::string(kLarge, 'a') + ".xml";
  download_->Request(Document("nowhere", "127.0.0.1", path));
  EXPECT_EQ(AwaitEnd(), "Exception(" + path + ",The transfer has been lost)");
}

TEST_F(DownloadObject, StartsATransferWhenTheEndOfTheOneBeforeHasBeenReported) {
  StartedThreads() = 0;
  const ReplacedImport counted("_beginthreadex", reinterpret_cast<void*>(&CountThread),
                               L"OvalinkSuite.dll");
  download_->SetUp(receiver_);
  download_->Request(Document("nowhere", "127.0.0.1", "/a.xml"));
  download_->Request(Document("nowhere", "127.0.0.1", "/b.xml"));
  EXPECT_EQ(StartedThreads(), 1);
  EXPECT_EQ(AwaitEnd().substr(0, 17), "Exception(/a.xml,");
  EXPECT_EQ(StartedThreads(), 2);
  EXPECT_EQ(AwaitEnd().substr(0, 17), "Exception(/b.xml,");
}

TEST_F(DownloadObject, ForgetsWhatWasStillWaitingWhenItIsShutDown) {
  download_->SetUp(receiver_);
  download_->Request(Document("nowhere", "127.0.0.1", "/a.xml"));
  download_->Request(Document("nowhere", "127.0.0.1", "/b.xml"));
  download_->ShutDown();
  download_->SetUp(receiver_);
  download_->Request(Document("nowhere", "127.0.0.1", "/c.xml"));
  EXPECT_EQ(AwaitEnd().substr(0, 17), "Exception(/c.xml,");
}

TEST_F(DownloadObject, TheOtherTransportTakesNoRequests) {
  const auto transport = Create("XMLRPCTRANSPORT.xTransport");
  transport->SetUp(receiver_);
  EXPECT_EQ(FailureNumber([&] { transport->Request(Document("nowhere")); }), 438);
}

TEST_F(DownloadObject, ThatIsOlderThanLimitsTakesEverySize) {
  const auto older = Create("XMLRPCTRANSPORT.xTransport");
  EXPECT_NO_THROW(older->LimitNext(3));
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
