#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "contract/com/recording_receiver.h"
#include "contract/com/recording_services.h"
#include "contract/failure_number.h"
#include "platform/suite_objects.h"

namespace kitbay::contract {

class SuiteObjectsContract
    : public testing::TestWithParam<std::unique_ptr<platform::SuiteObjects> (*)()> {
 protected:
  RecordingReceiver receiver_;
  std::unique_ptr<platform::SuiteObjects> objects_ = GetParam()();
};

TEST_P(SuiteObjectsContract, TransportsAreSetUpAndShutDown) {
  for (const char* prog_id : {"XMLRPCTRANSPORT.xTransport", "URLDownloadLib.URLDownload"}) {
    const auto transport = objects_->CreateTransportObject(prog_id);
    EXPECT_NO_THROW(transport->SetUp(receiver_)) << prog_id;
    EXPECT_NO_THROW(transport->SetUp(receiver_)) << prog_id;
    EXPECT_NO_THROW(transport->ShutDown()) << prog_id;
    EXPECT_NO_THROW(transport->ShutDown()) << prog_id;
  }
  EXPECT_EQ(receiver_.events, "");
}

TEST_P(SuiteObjectsContract, ARequestIsTakenWithoutAnEventDuringTheCall) {
  const auto download = objects_->CreateTransportObject("URLDownloadLib.URLDownload");
  download->SetUp(receiver_);
  // Refused as soon as it is examined: no server is contacted.
  EXPECT_NO_THROW(
      download->Request("<server>127.0.0.1</server><filetodownload>/a.xml</filetodownload>"
                        "<destpath>nowhere</destpath><progressevents>true</progressevents>"));
  EXPECT_EQ(receiver_.events, "");
  download->ShutDown();
  EXPECT_EQ(receiver_.events, "");
}

TEST_P(SuiteObjectsContract, TheFileSystemObjectIsCreated) {
  const auto object = objects_->CreateFileSystemObject("FileSystemLib.FileSystemObject");
  EXPECT_TRUE(object->FolderExists("C:\\"));
}

TEST_P(SuiteObjectsContract, AMissingObjectCannotBeCreated) {
  EXPECT_EQ(FailureNumber([&] { objects_->CreateTransportObject("Missing.Transport"); }),
            kCannotCreateObject);
  EXPECT_EQ(FailureNumber([&] { objects_->CreateFileSystemObject("Missing.FileSystem"); }),
            kCannotCreateObject);
}

}  // namespace kitbay::contract
