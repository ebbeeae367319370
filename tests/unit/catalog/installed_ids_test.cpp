#include <gtest/gtest.h>

#include "catalog/installed_entries.h"

namespace kitbay::catalog {
namespace {

TEST(InstalledIds, AreInstalledInWhateverCaseTheyAreWritten) {
  InstalledIds ids;
  ids.AddInstalled("Chat");
  for (const char* id : {"Chat", "chat", "CHAT"}) {
    EXPECT_TRUE(ids.Find(id).is_installed) << id;
  }
  EXPECT_FALSE(ids.Find("chats").is_installed);
}

TEST(InstalledIds, HaveANumberForEachSpelling) {
  InstalledIds ids;
  EXPECT_EQ(ids.Add("chat", false), 0U);
  EXPECT_EQ(ids.Add("Chat", false), 1U);
  EXPECT_EQ(ids.Add("chat", false), 0U);
  EXPECT_EQ(ids.Add("Chat", false), 1U);
  EXPECT_EQ(ids.Add("dice", false), 2U);
  EXPECT_EQ(ids.count(), 3U);
  EXPECT_EQ(ids.Find("chat").number, 0U);
  EXPECT_EQ(ids.Find("Chat").number, 1U);
  EXPECT_EQ(ids.Find("dice").number, 2U);
}

TEST(InstalledIds, OfOtherSpellingsHaveNoNumber) {
  InstalledIds ids;
  ids.Add("chat", false);
  ids.Add("DICE", false);
  for (const char* id : {"Chat", "dice", "Dice", "", "cards"}) {
    EXPECT_EQ(ids.Find(id).number, std::nullopt) << id;
  }
}

TEST(InstalledIds, WithANumberNeedNotBeInstalled) {
  InstalledIds ids;
  ids.Add("chat", false);
  EXPECT_FALSE(ids.Find("chat").is_installed);
  ids.AddInstalled("dice");
  EXPECT_EQ(ids.Find("dice").number, std::nullopt);
}

TEST(InstalledIds, WithANumberMayBeInstalled) {
  InstalledIds ids;
  ids.Add("chat", true);
  ids.Add("chat", false);
  EXPECT_TRUE(ids.Find("chat").is_installed);
  ids.Add("Dice", true);
  EXPECT_TRUE(ids.Find("dice").is_installed);
  EXPECT_EQ(ids.Find("dice").number, std::nullopt);
}

TEST(InstalledIds, MayBeMissing) {
  InstalledIds ids;
  ids.AddInstalled("");
  EXPECT_FALSE(ids.lacks_one());
  EXPECT_TRUE(ids.Find("").is_installed);
  ids.AddMissing();
  EXPECT_TRUE(ids.lacks_one());
}

}  // namespace
}  // namespace kitbay::catalog
