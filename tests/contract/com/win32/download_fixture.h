#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <memory>
#include <string>

#include "contract/com/recording_receiver.h"
#include "contract/com/win32/registered_suite.h"
#include "contract/windows/patience.h"
#include "platform/win32/win32_platform.h"

namespace kitbay::contract {

/// The suite's download object with a receiver, and this thread's messages.
class DownloadObject : public testing::Test {
 protected:
  static std::unique_ptr<platform::TransportObject> Create(const char* prog_id) {
    return platform::win32::MakeSuiteObjects(SuiteFolder())->CreateTransportObject(prog_id);
  }

  static std::string Document(const std::string& destination,
                              const std::string& server = "127.0.0.1",
                              const std::string& path = "/a.xml") {
    return "<server>" + server + "</server><filetodownload>" + path +
           "</filetodownload><destpath>" + destination +
           "</destpath><progressevents>true</progressevents>";
  }

  /// Handles messages until the receiver has been told how a transfer ended. Returns everything it
  /// was told meanwhile, which is less if no end comes.
  std::string AwaitEnd() {
    receiver_.events.clear();
    const ULONGLONG limit = GetTickCount64() + kPatienceMs;
    do {
      MSG message;
      while (!HasEnded() && PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
        DispatchMessageW(&message);
      }
    } while (!HasEnded() && GetTickCount64() < limit &&
             MsgWaitForMultipleObjects(0, nullptr, FALSE, kPatienceMs, QS_ALLINPUT) ==
                 WAIT_OBJECT_0);
    return receiver_.events;
  }

  bool HasEnded() const {
    return receiver_.events.find("Exception(") != std::string::npos ||
           receiver_.events.find(",true)") != std::string::npos;
  }

  RecordingReceiver receiver_;
  std::unique_ptr<platform::TransportObject> download_ = Create("URLDownloadLib.URLDownload");
};

}  // namespace kitbay::contract
