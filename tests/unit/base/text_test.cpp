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

TEST(AfterLastSlash, BackslashIsNoSlash) { EXPECT_EQ(AfterLastSlash("a/b\\c.xml"), "b\\c.xml"); }

}  // namespace
}  // namespace kitbay::base
