#include <gtest/gtest.h>

#include "catalog/manifest_file.h"
#include "catalog/registry_files.h"
#include "catalog/row_number.h"

namespace kitbay::catalog {
namespace {

struct Core {
  const char* text;
  bool is_core;
};

class CoreFlag : public testing::TestWithParam<Core> {};

TEST_P(CoreFlag, IsTrueForOneAndWhateverSortsAfterIt) {
  EXPECT_EQ(IsCore(GetParam().text), GetParam().is_core) << "\"" << GetParam().text << "\"";
}

INSTANTIATE_TEST_SUITE_P(Texts, CoreFlag,
                         testing::Values(Core{"1", true}, Core{"2", true}, Core{"9", true},
                                         Core{"10", true}, Core{"1.0", true}, Core{"1 ", true},
                                         Core{"true", true}, Core{"false", true}, Core{"A", true},
                                         Core{"no", true}, Core{"\xC3\xA4", true}, Core{"0", false},
                                         Core{"01", false}, Core{"0999", false}, Core{"", false},
                                         Core{" 1", false}, Core{"-1", false}, Core{"+2", false}));

TEST(RowNumber, CountsFromOne) {
  RowNumber row;
  EXPECT_EQ(row.Next(), 1);
  EXPECT_EQ(row.Next(), 2);
}

TEST(RowNumber, PastTheLargestIsAnOverflowEachTime) {
  RowNumber row;
  for (int i = 1; i <= 32767; ++i) {
    ASSERT_EQ(row.Next(), i);
  }
  for (int attempt = 1; attempt <= 2; ++attempt) {
    try {
      row.Next();
      FAIL() << "attempt " << attempt;
    } catch (const base::Failure& failure) {
      EXPECT_EQ(failure.number(), 6);
      EXPECT_EQ(failure.description(), "Overflow");
    }
  }
}

TEST(ManifestName, IsThatOfAnXmlFileInTheFolderItself) {
  EXPECT_TRUE(IsManifestName("ovalink.xml"));
  EXPECT_TRUE(IsManifestName("More Addons.XML"));
  EXPECT_FALSE(IsManifestName("ovalink.txt"));
  EXPECT_FALSE(IsManifestName(""));
  EXPECT_FALSE(IsManifestName("..\\ovalink.xml"));
}

TEST(ManifestName, IsNotAFileOfSourcesInAnySpelling) {
  EXPECT_FALSE(IsManifestName("DirectoryPreference.xml"));
  EXPECT_FALSE(IsManifestName("UpdatePreference.xml"));
  EXPECT_FALSE(IsManifestName("DIRECT~1.xml"));
}

}  // namespace
}  // namespace kitbay::catalog
