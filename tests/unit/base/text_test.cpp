#include "base/text.h"

#include <gmock/gmock.h>

namespace kitbay::base {
namespace {

TEST(ToLower, ChangesTheLettersAToZ) {
  EXPECT_EQ(ToLower("PreSENCE-AZ09[@`{"), "presence-az09[@`{");
}

TEST(ToLower, LeavesOtherLettersAlone) {
  EXPECT_EQ(ToLower("\u00C4RGER \u0416"), "\u00C4rger \u0416");
}

TEST(ToLower, EmptyTextStaysEmpty) { EXPECT_EQ(ToLower(""), ""); }

TEST(Trim, TakesBlanksOffBothEndsOnly) { EXPECT_EQ(Trim("  C:\\My Files  "), "C:\\My Files"); }

TEST(Trim, LeavesTabsAndLineEnds) { EXPECT_EQ(Trim(" \tx\r\n "), "\tx\r\n"); }

TEST(Trim, BlanksAloneGiveEmptyText) {
  EXPECT_EQ(Trim("   "), "");
  EXPECT_EQ(Trim(""), "");
}

TEST(IsUtf8, HoldsForEveryLengthOfCharacterUpToItsLimits) {
  for (const char* text :
       {"", "a\x7F", "\xC2\x80", "\xDF\xBF", "\xE0\xA0\x80", "\xED\x9F\xBF", "\xEE\x80\x80",
        "\xEF\xBF\xBF", "\xF0\x90\x80\x80", "\xF4\x8F\xBF\xBF"}) {
    EXPECT_TRUE(IsUtf8(text)) << text;
  }
}

TEST(IsUtf8, RefusesACharacterSpelledTooLong) {
  EXPECT_FALSE(IsUtf8("\xC0\xAF"));
  EXPECT_FALSE(IsUtf8("\xC1\xBF"));
  EXPECT_FALSE(IsUtf8("\xE0\x9F\xBF"));
  EXPECT_FALSE(IsUtf8("\xF0\x8F\xBF\xBF"));
}

TEST(IsUtf8, RefusesHalvesOfSurrogatePairs) {
  EXPECT_FALSE(IsUtf8("\xED\xA0\x80"));
  EXPECT_FALSE(IsUtf8("\xED\xBF\xBF"));
}

TEST(IsUtf8, RefusesWhatIsPastTheHighestCharacter) {
  EXPECT_FALSE(IsUtf8("\xF4\x90\x80\x80"));
  EXPECT_FALSE(IsUtf8("\xF5\x80\x80\x80"));
  EXPECT_FALSE(IsUtf8("\xFF"));
}

TEST(IsUtf8, RefusesACharacterThatIsCutOffOrBegunInTheMiddle) {
  for (const char* text : {"\x80", "a\xC3", "\xE2\x82", "\xF0\x9F\x98", "\xC3z", "\xE2\x82z"}) {
    EXPECT_FALSE(IsUtf8(text)) << text;
  }
}

TEST(AfterLastSlash, GivesTheNameOfAManifest) {
  EXPECT_EQ(AfterLastSlash("updates.example/ovalink/components.xml"), "components.xml");
}

TEST(AfterLastSlash, TextEndingInASlashGivesNothing) {
  EXPECT_EQ(AfterLastSlash("updates.example/ovalink/"), "");
}

TEST(AfterLastSlash, TextWithoutASlashIsTheNameItself) {
  EXPECT_EQ(AfterLastSlash("components.xml"), "components.xml");
  EXPECT_EQ(AfterLastSlash(""), "");
}

TEST(AfterLastSlash, BackslashIsNotASlash) { EXPECT_EQ(AfterLastSlash("a/b\\c.xml"), "b\\c.xml"); }

}  // namespace
}  // namespace kitbay::base
