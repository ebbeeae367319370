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

TEST(AnswerRules, BytesAreAWholeNumber) {
  EXPECT_EQ(WholeNumber("0"), 0U);
  EXPECT_EQ(WholeNumber("5000000000"), 5000000000U);
  for (const char* field : {"", "-1", "+1", " 1", "1 ", "1,1", "0x10", "18446744073709551616"}) {
    EXPECT_EQ(WholeNumber(field), std::nullopt) << field;
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

TEST(AnswerRules, AListOfComponentsIsLimitedAndWhatItsClientLimits) {
  EXPECT_EQ(LimitAt("C:\\Suite\\Kitbay\\a.XML", std::nullopt).bytes, 64 * kMegabyte);
  EXPECT_EQ(LimitAt("C:\\Suite\\Kitbay\\a.XML", 5).bytes, 64 * kMegabyte);
  EXPECT_EQ(LimitAt("C:\\Suite\\Temp\\a.xml.zip", std::nullopt).bytes, UINT64_MAX);
  EXPECT_EQ(LimitAt("C:\\Suite\\Temp\\a.zip", 5).bytes, 5U);
}

TEST(ByteCounts, TakeWhatWasAnnounced) {
  ByteCount count({.bytes = 100, .excess = {}}, 0);
  count.Announce(100);
  count.Add(60);
  count.Add(40);
  EXPECT_EQ(FailureOf([&] { count.End(); }), "");
  EXPECT_EQ(count.received(), 100U);
}

TEST(ByteCounts, EndWithMoreThanWasAnnounced) {
  ByteCount count({.bytes = 100, .excess = {}}, 0);
  count.Announce(5);
  count.Add(5);
  EXPECT_EQ(FailureOf([&] { count.Add(1); }), "The server sent more than the 5 bytes it announced");
}

TEST(ByteCounts, EndWithLessThanWasAnnounced) {
  ByteCount count({.bytes = 100, .excess = {}}, 0);
  count.Announce(5);
  count.Add(4);
  EXPECT_EQ(FailureOf([&] { count.End(); }), "The answer was cut short: 4 of 5 bytes");
}

TEST(ByteCounts, WithoutAnAnnouncedLengthEndAnywhere) {
  ByteCount count({.bytes = 100, .excess = {}}, 0);
  count.Add(4);
  EXPECT_EQ(FailureOf([&] { count.End(); }), "");
  EXPECT_EQ(count.CutShort().text(), "The answer was cut short: 4 bytes");
}

TEST(ByteCounts, GoOnWhereATransferStopped) {
  ByteCount count({.bytes = 100, .excess = {}}, 3);
  count.Announce(5);
  count.Add(1);
  EXPECT_EQ(FailureOf([&] { count.End(); }), "The answer was cut short: 4 of 5 bytes");
  count.Add(1);
  EXPECT_EQ(FailureOf([&] { count.End(); }), "");
}

TEST(ByteCounts, EndWithMoreThanTheLimitAnnouncedOrNot) {
  for (const auto& [limit, text] :
       {std::pair(LimitAt("C:\\a.xml", std::nullopt),
                  "The server's list of components is larger than 64 MB"),
        std::pair(LimitAt("C:\\a.zip", 5),
                  "The server's file is larger than the 5 bytes announced for it")}) {
    ByteCount announced(limit, 0);
    EXPECT_EQ(FailureOf([&] { announced.Announce(limit.bytes); }), "");
    EXPECT_EQ(FailureOf([&] { announced.Announce(limit.bytes + 1); }), text);
    ByteCount unannounced(limit, 0);
    unannounced.Add(limit.bytes);
    EXPECT_EQ(FailureOf([&] { unannounced.Add(1); }), text);
  }
}

TEST(AnswerRules, AFileNeedsRoom) {
  EXPECT_EQ(FailureOf([] { DemandRoom(5, 5); }), "");
  EXPECT_EQ(FailureOf([] { DemandRoom(5 * kMegabyte + 1, 3 * kMegabyte); }),
            "There is no room for the file: it takes 6 MB, and the disk has 3 MB left");
}

}  // namespace
}  // namespace ovalink
