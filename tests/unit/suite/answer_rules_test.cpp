#include "answer_rules.h"

#include <gtest/gtest.h>

namespace ovalink {
namespace {

TEST(AnswerRules, StatusIsToldInWords) {
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

}  // namespace
}  // namespace ovalink
