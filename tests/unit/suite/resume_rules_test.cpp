#include "resume_rules.h"

#include <gtest/gtest.h>

namespace ovalink {
namespace {

const TransferRecord kRecord{.source = "updates.example/packages/a.zip",
                             .destination = "C:\\Suite\\Temp\\a.zip",
                             .etag = "\"5f-1\"",
                             .last_modified = "Sat, 21 Nov 2026 10:15:30 GMT",
                             .length = 5'000'000'000,
                             .sum = 7};

TEST(TransferRecords, AreReadAsTheyWereWritten) {
  EXPECT_EQ(ReadRecord(RecordText(kRecord)), kRecord);
  EXPECT_EQ(ReadRecord(RecordText({})), TransferRecord{});
}

TEST(TransferRecords, OfAnotherFormAreInvalid) {
  const std::string text = RecordText(kRecord);
  for (std::size_t end = 0; end < text.size(); ++end) {
    EXPECT_EQ(ReadRecord(text.substr(0, end)), std::nullopt) << end;
  }
  EXPECT_EQ(ReadRecord(text + "\n"), std::nullopt);
  EXPECT_EQ(ReadRecord("x" + text), std::nullopt);
  TransferRecord other = kRecord;
  other.etag = "\"a\r\nCookie: b\"";
  EXPECT_EQ(ReadRecord(RecordText(other)), std::nullopt);
  other.etag = "\"a\rb\"";
  EXPECT_EQ(ReadRecord(RecordText(other)), std::nullopt);
}

TEST(ContentRanges, AreReadInOneFormOnly) {
  EXPECT_EQ(ReadContentRange("bytes 5-9/10"), (ContentRange{5, 9, 10}));
  EXPECT_EQ(ReadContentRange("bytes 0-0/1"), (ContentRange{0, 0, 1}));
  for (const char* field : {"", "bytes", "bytes 5-9", "bytes 5-9/*", "bytes */10", "bytes 9-5/10",
                            "bytes 5-10/10", "items 5-9/10", "bytes=5-9/10", "bytes 5-9/10 ",
                            "bytes -9/10", "bytes +5-9/10", "bytes 5-9/99999999999999999999"}) {
    EXPECT_EQ(ReadContentRange(field), std::nullopt) << field;
  }
}

TEST(ContentRanges, MustBeAllThatIsMissing) {
  const TransferRecord record{.etag = "\"1\"", .length = 10};
  EXPECT_TRUE(IsRest({5, 9, 10}, record, 5));
  EXPECT_FALSE(IsRest({4, 9, 10}, record, 5));
  EXPECT_FALSE(IsRest({6, 9, 10}, record, 5));
  EXPECT_FALSE(IsRest({5, 8, 10}, record, 5));
  EXPECT_FALSE(IsRest({5, 9, 11}, record, 5));
}

TEST(Validators, OnlyStrongTagsPutAFileTogether) {
  EXPECT_TRUE(IsStrong("\"5f-1\""));
  for (const char* etag : {"", "\"\"", "\"", "5f-1", "W/\"5f-1\"", "\"5f-1"}) {
    EXPECT_FALSE(IsStrong(etag)) << etag;
  }
}

TEST(Validators, WithControlCharactersOrOtherLettersAreNotSentBack) {
  EXPECT_EQ(UsableField("W/\"5f-1\""), "W/\"5f-1\"");
  EXPECT_EQ(UsableField("\"a\r\nCookie: b\""), "");
  EXPECT_EQ(UsableField("\"\x7F\""), "");
  EXPECT_EQ(UsableField("\"ä\""), "");
  EXPECT_EQ(UsableField(std::string(1025, 'a')), "");
}

TEST(RequestFields, AskForTheRestOfTheSameFile) {
  EXPECT_EQ(RestFields(kRecord, 33), "Range: bytes=33-\r\nIf-Range: \"5f-1\"\r\n");
}

TEST(RequestFields, AskForAChangedFileByAllThatIsKnown) {
  EXPECT_EQ(UnlessChangedFields(kRecord),
            "If-None-Match: \"5f-1\"\r\nIf-Modified-Since: Sat, 21 Nov 2026 10:15:30 GMT\r\n");
  EXPECT_EQ(UnlessChangedFields({.etag = "W/\"1\""}), "If-None-Match: W/\"1\"\r\n");
  EXPECT_EQ(UnlessChangedFields({.last_modified = "x"}), "If-Modified-Since: x\r\n");
  EXPECT_EQ(UnlessChangedFields({}), "");
}

TEST(Sums, TellFilesApartAndAreNeverNothing) {
  EXPECT_EQ(SumOf(""), 0xCBF29CE484222325U);
  EXPECT_NE(SumOf("a"), SumOf("b"));
  EXPECT_NE(SumOf(std::string(1, '\0')), SumOf(""));
}

}  // namespace
}  // namespace ovalink
