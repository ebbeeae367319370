#include "answer_rules.h"

#include <gtest/gtest.h>

namespace ovalink {
namespace {

TEST(AnswerRules, StatusIsReportedInWords) {
  EXPECT_EQ(StatusText(401), "The server answered 401 (Unauthorized)");
  EXPECT_EQ(StatusText(404), "The server answered 404 (Not Found)");
  EXPECT_EQ(StatusText(500), "The server answered 500 (Internal Server Error)");
  EXPECT_EQ(StatusText(599), "The server answered 599");
}

TEST(AnswerRules, FiveStatusesRedirect) {
  for (const std::uint32_t status : {301U, 302U, 303U, 307U, 308U}) {
    EXPECT_TRUE(IsRedirection(status)) << status;
  }
  for (const std::uint32_t status : {200U, 300U, 304U, 305U, 404U}) {
    EXPECT_FALSE(IsRedirection(status)) << status;
  }
}

TEST(AnswerRules, AnnouncedLengthIsAWholeNumber) {
  EXPECT_EQ(AnnouncedLength("0"), 0U);
  EXPECT_EQ(AnnouncedLength("5000000000"), 5000000000U);
  for (const char* field : {"", "-1", "+1", " 1", "1 ", "1,1", "0x10", "18446744073709551616"}) {
    EXPECT_EQ(AnnouncedLength(field), std::nullopt) << field;
  }
}

TEST(AnswerRules, OnlyAFullPathWithADriveIsLocal) {
  for (const char* path : {"C:\\a", "d:/Suite/Temp/b.zip", "Z:\\Zoë\\c.xml"}) {
    EXPECT_TRUE(IsFullLocalPath(path)) << path;
  }
  for (const char* path : {"", "a", "C:", "C:\\", "C:a.xml", "\\a", "\\\\server\\share\\a",
                           "\\\\?\\C:\\a", "1:\\a", "C:\\a:stream", "/Temp/a"}) {
    EXPECT_FALSE(IsFullLocalPath(path)) << path;
  }
}

template <typename Step>
std::string FailureOf(Step step) {
  try {
    step();
    return {};
  } catch (const TransferFailure& failure) {
    return failure.text();
  }
}

constexpr std::uint64_t kMegabyte = 1024 * 1024;

TEST(AnswerRules, OnlyAListOfComponentsIsLimited) {
  EXPECT_EQ(MostBytesAt("C:\\Suite\\Kitbay\\a.XML"), 64 * kMegabyte);
  EXPECT_EQ(MostBytesAt("C:\\Suite\\Temp\\a.xml.zip"), UINT64_MAX);
}

TEST(ByteCounts, TakeWhatWasAnnounced) {
  ByteCount count(100, 0);
  count.Announce(100);
  count.Add(60);
  count.Add(40);
  EXPECT_EQ(FailureOf([&] { count.End(); }), "");
  EXPECT_EQ(count.received(), 100U);
}

TEST(ByteCounts, EndWithMoreThanWasAnnounced) {
  ByteCount count(100, 0);
  count.Announce(5);
  count.Add(5);
  EXPECT_EQ(FailureOf([&] { count.Add(1); }), "The server sent more than the 5 bytes it announced");
}

TEST(ByteCounts, EndWithLessThanWasAnnounced) {
  ByteCount count(100, 0);
  count.Announce(5);
  count.Add(4);
  EXPECT_EQ(FailureOf([&] { count.End(); }), "The answer was cut short: 4 of 5 bytes");
}

TEST(ByteCounts, WithoutAnAnnouncedLengthEndAnywhere) {
  ByteCount count(100, 0);
  count.Add(4);
  EXPECT_EQ(FailureOf([&] { count.End(); }), "");
  EXPECT_EQ(count.CutShort().text(), "The answer was cut short: 4 bytes");
}

TEST(ByteCounts, GoOnWhereATransferStopped) {
  ByteCount count(100, 3);
  count.Announce(5);
  count.Add(1);
  EXPECT_EQ(FailureOf([&] { count.End(); }), "The answer was cut short: 4 of 5 bytes");
  count.Add(1);
  EXPECT_EQ(FailureOf([&] { count.End(); }), "");
}

TEST(ByteCounts, EndWithMoreThanAListMayHaveAnnouncedOrNot) {
  const std::string text = "The server's list of components is larger than 64 MB";
  ByteCount announced(64 * kMegabyte, 0);
  EXPECT_EQ(FailureOf([&] { announced.Announce(64 * kMegabyte); }), "");
  EXPECT_EQ(FailureOf([&] { announced.Announce(64 * kMegabyte + 1); }), text);
  ByteCount unannounced(64 * kMegabyte, 0);
  unannounced.Add(64 * kMegabyte);
  EXPECT_EQ(FailureOf([&] { unannounced.Add(1); }), text);
}

TEST(AnswerRules, AFileNeedsRoom) {
  EXPECT_EQ(FailureOf([] { DemandRoom(5, 5); }), "");
  EXPECT_EQ(FailureOf([] { DemandRoom(5 * kMegabyte + 1, 3 * kMegabyte); }),
            "There is no room for the file: it takes 6 MB, and the disk has 3 MB left");
}

}  // namespace
}  // namespace ovalink
