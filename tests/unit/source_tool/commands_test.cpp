// From nothing to a signed source, and the tool's exit codes.
#include "catalog/manifest_signature.h"
#include "tool_fixture.h"

namespace kitbay::source_tool {
namespace {

using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;

class Commands : public testing::Test {
 protected:
  void Init() { ASSERT_EQ(work_.Run({"init", list_}), kDone) << work_.err; }

  int Add(const std::vector<std::string>& more = {"--url", "u.org/p"}) {
    std::vector<std::string> words = {
        "add", list_,
        work_.Write("chess.zip", fakes::ZipOf({{.name = "chess.dll", .bytes = library_},
                                               {.name = "board.dll", .bytes = library_}}))};
    words.insert(words.end(), more.begin(), more.end());
    return work_.Run(words);
  }

  std::string PublicKey() { return work_.out.substr(work_.out.find("URL#") + 4, 64); }

  Workplace work_;
  std::string list_ = work_.Path("list.xml");
  // The minimum that makes it a library of version 1.2.0.7.
  std::string library_ = "MZ" + std::string(0x3A, '\0') + std::string("\x40\0\0\0", 4) +
                         std::string("PE\0\0\x4C\x01", 6) +
                         std::string("\xBD\x04\xEF\xFE\0\0\x01\0\x02\0\x01\0\x07\0\0\0", 16);
};

TEST_F(Commands, MakeASourceInWhichNothingIsWrong) {
  Init();
  const std::string key = PublicKey();
  ASSERT_TRUE(catalog::ReadKey(key));
  ASSERT_EQ(Add(), kDone) << work_.err;
  EXPECT_THAT(work_.out, StartsWith("Added chess, version 1.2.0.7."));
  ASSERT_EQ(work_.Run({"sign", list_}), kDone) << work_.err;
  EXPECT_EQ(work_.out, "Signed as number 1; it holds until 2027-02-19.\n");
  EXPECT_EQ(work_.Run({"check", list_, "--packages", work_.Path(""), "--public", key, "--quiet"}),
            kDone)
      << work_.out;
  const std::string text = work_.Read("list.xml");
  EXPECT_THAT(text,
              HasSubstr("    <addon id=\"chess\" type=\"tool\">\n      <name>chess</name>\n"));
  EXPECT_THAT(text, HasSubstr("<url>u.org/p/chess.zip</url>"));
  EXPECT_THAT(text, HasSubstr("<filename>chess.dll</filename>"));
  EXPECT_THAT(text, HasSubstr("<dependencies>chess.dll,board.dll</dependencies>"));
}

TEST_F(Commands, TheNextReleaseKeepsTheTextsAndRaisesTheNumber) {
  Init();
  Add({"--url", "u.org/p", "--description", "Play chess."});
  work_.Run({"sign", list_});
  library_[library_.size() - 4] = '\x08';
  ASSERT_EQ(Add({}), kDone) << work_.err;
  EXPECT_THAT(work_.out, StartsWith("Updated chess, version 1.2.0.8."));
  ASSERT_EQ(work_.Run({"sign", list_, "--days", "7"}), kDone);
  EXPECT_EQ(work_.out, "Signed as number 2; it holds until 2026-11-28.\n");
  const std::string text = work_.Read("list.xml");
  EXPECT_THAT(text, HasSubstr("<description>Play chess.</description>"));
  EXPECT_THAT(text, HasSubstr("<version>1.2.0.8</version>"));
  EXPECT_EQ(text.find("<addon id"), text.rfind("<addon id"));
  EXPECT_EQ(work_.Run({"check", list_, "--packages", work_.Path(""), "--quiet"}), kDone)
      << work_.out;
}

TEST_F(Commands, ANextReleaseThatDoesNotCountAsNewerIsReported) {
  Init();
  Add();
  library_[library_.size() - 2] = '\x01';  // 1.2.1.7
  EXPECT_EQ(Add({}), kFound);
  EXPECT_THAT(work_.out, HasSubstr("Updated chess, version 1.2.1.7."));
  EXPECT_THAT(work_.out, HasSubstr("K03 version 1.2.1.7 does not count as newer than 1.2.0.7"));
  EXPECT_THAT(work_.Read("list.xml"), HasSubstr("<version>1.2.1.7</version>"));
}

TEST_F(Commands, AChannelAndAMessagingServiceAreEnteredAsSuch) {
  Init();
  EXPECT_EQ(Add({"--url", "u.org/p", "--kind", "transport"}), kDone) << work_.err;
  EXPECT_EQ(Add({"--url", "u.org/p", "--kind", "channel"}), kDone) << work_.err;
  EXPECT_THAT(work_.Read("list.xml"), HasSubstr("<filename>chess.dll,board.dll</filename>"));
  EXPECT_EQ(work_.Run({"check", list_, "--packages", work_.Path(""), "--quiet"}), kDone)
      << work_.out;
}

TEST_F(Commands, TakeNoPlaceOfAFileThatIsThere) {
  work_.Write("list.xml", "mine");
  EXPECT_EQ(work_.Run({"init", list_}), kFailed);
  EXPECT_EQ(work_.Read("list.xml"), "mine");
  EXPECT_FALSE(std::filesystem::exists(list_ + ".key"));
}

TEST_F(Commands, KeepTheSecretKeyFromOthers) {
  Init();
  EXPECT_EQ(std::filesystem::status(list_ + ".key").permissions(),
            std::filesystem::perms::owner_read | std::filesystem::perms::owner_write);
  EXPECT_THAT(work_.out, Not(HasSubstr(work_.Read("list.xml.key").substr(0, 64))));
}

TEST_F(Commands, LeaveTheManifestWhereThePackageLacksSomething) {
  Init();
  const std::string before = work_.Read("list.xml");
  EXPECT_EQ(Add({}), kFailed);
  EXPECT_THAT(work_.err, HasSubstr("chess has no url; use --url"));
  library_ = "no library";
  EXPECT_EQ(Add(), kFailed);
  EXPECT_THAT(work_.err, HasSubstr("chess has no version; use --version"));
  EXPECT_EQ(work_.Read("list.xml"), before);
}

TEST_F(Commands, SignOnlyWithAKey) {
  Init();
  work_.Write("list.xml.key", "0011");
  EXPECT_EQ(work_.Run({"sign", list_}), kFailed);
  EXPECT_THAT(work_.err, HasSubstr("contains no key"));
}

TEST_F(Commands, SignOnlyWhatAManifestMayBeCalled) {
  EXPECT_EQ(work_.Run({"init", work_.Path("list~1.xml")}), kDone);
  EXPECT_EQ(work_.Run({"sign", work_.Path("list~1.xml")}), kFailed);
  EXPECT_THAT(work_.err, HasSubstr("list~1.xml"));
}

TEST_F(Commands, TellMachines) {
  work_.Write("list.xml", ManifestOf(Entry("chess", "category", "a \"b\"\\")));
  EXPECT_EQ(work_.Run({"check", list_, "--json"}), kFound);
  EXPECT_EQ(
      work_.out,
      "{\"findings\":[{\"number\":\"K06\",\"file\":\"" + list_ +
          "\",\"line\":10,\"column\":1,\"what\":\"there is a category, \\\"a \\\"b\\\"\\\\\\\"\","
          "\"shows\":\"finds no Remove button: the component belongs to the suite's core\","
          "\"todo\":\"leave the category empty, unless that is what you want\"}]}\n");
  work_.Run({"rehearse", list_, "--registry", work_.Write("r.xml", RegistryOf("")), "--json"});
  EXPECT_EQ(work_.out,
            "{\"rows\":[{\"list\":\"updatedaddons\",\"name\":\"chess\",\"version\":\"1.2.0.7\","
            "\"buttons\":\"Install\"}],\"log\":[]}\n");
}

TEST_F(Commands, TellWrongWords) {
  for (const std::vector<std::string>& words :
       std::vector<std::vector<std::string>>{{},
                                             {"make"},
                                             {"init"},
                                             {"init", "a", "b"},
                                             {"add", "a"},
                                             {"check", "a", "--fast"},
                                             {"check", "a", "--packages"},
                                             {"rehearse", "a"},
                                             {"sign", "a", "--days", "0"},
                                             {"sign", "a", "--days", "7x"},
                                             {"add", "a", "b", "--kind", "game"}}) {
    EXPECT_EQ(work_.Run(words), kUsage);
    EXPECT_THAT(work_.err, HasSubstr("usage: kitbay-source"));
  }
  EXPECT_EQ(work_.Run({"--help"}), kDone);
  EXPECT_EQ(work_.Run({"check", work_.Path("none.xml")}), kFailed);
}

}  // namespace
}  // namespace kitbay::source_tool
