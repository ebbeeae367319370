#pragma once

#include <gtest/gtest.h>
#include <windows.h>

#include <memory>
#include <string>

#include "contract/com/recording_receiver.h"
#include "contract/com/win32/registered_suite.h"
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
  /// was told meanwhile.
  std::string AwaitEnd() {
    receiver_.events.clear();
    MSG message;
    while (receiver_.events.find("Exception(") == std::string::npos &&
           receiver_.events.find(",true)") == std::string::npos &&
           GetMessageW(&message, nullptr, 0, 0) > 0) {
      DispatchMessageW(&message);
    }
    return receiver_.events;
  }

  RecordingReceiver receiver_;
  std::unique_ptr<platform::TransportObject> download_ = Create("URLDownloadLib.URLDownload");
};

}  // namespace kitbay::contract
