// What `check` finds in the entries of a manifest. For each rule, Kitbay's own procedures show what
// happens to such an entry on a user's machine.
#include "flow_fixture.h"
#include "install/update_flows.h"
#include "tool_fixture.h"
#include "view/row_nodes.h"

namespace kitbay::source_tool {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

class OfferedRules : public testing::Test {
 protected:
  /// The findings of a manifest with these entries.
  std::string Check(const std::string& entries) {
    manifest_ = work_.Write("list.xml", ManifestOf(entries));
    work_.Run({"check", manifest_});
    return work_.out;
  }

  /// What a user who has installed `addons` sees of the manifest that was checked last.
  std::string Shown(const std::string& addons, const std::string& versions = "chess=1.2.0.5") {
    work_.Run({"rehearse", manifest_, "--registry", work_.Write("r.xml", RegistryOf(addons)),
               "--installed", versions});
    return work_.out;
  }

  Workplace work_;
  std::string manifest_;
};

TEST_F(OfferedRules, FindNothingInAnEntryThatWorks) {
  EXPECT_EQ(Check(Entry("chess")), "0 findings\n");
  EXPECT_EQ(work_.Run({"check", manifest_}), kDone);
  EXPECT_THAT(Shown(Installed("chess")),
              HasSubstr("installedaddons\n  chess, Version 1.2.0.5 [Remove, Update]\n"));
  EXPECT_THAT(Shown(""), HasSubstr("updatedaddons\n  chess, Version 1.2.0.7 [Install]\n"));
}

TEST_F(OfferedRules, NameThePlaceAndTheNumber) {
  Check(Entry("go") + Entry("chess", "category", "games"));
  EXPECT_THAT(work_.out, HasSubstr("list.xml:23:1: K06 there is a category, \"games\""));
  EXPECT_EQ(work_.Run({"check", manifest_}), kFound);
}

// K01
TEST_F(OfferedRules, AnIdThatIsNotTheFirstAttribute) {
  EXPECT_THAT(Check(Entry("chess", "", "", "type=\"tool\" id=\"chess\"")),
              HasSubstr("list.xml:3:1: K01"));
  EXPECT_THAT(Shown(Installed("chess")), HasSubstr("updatedaddons\n  chess"));
}

// K03
TEST_F(OfferedRules, AVersionWhoseLastPartIsNotHigher) {
  const std::string before = work_.Write("before.xml", ManifestOf(Entry("chess")));
  Check(Entry("chess", "version", "2.0.0.5"));
  EXPECT_EQ(work_.Run({"check", manifest_, "--previous", before}), kFound);
  EXPECT_THAT(work_.out,
              HasSubstr("list.xml:5:1: K03 version 2.0.0.5 does not count as newer than 1.2.0.7"));
  EXPECT_THAT(Shown(Installed("chess"), "chess=1.2.0.7"),
              HasSubstr("chess, Version 1.2.0.7 [Remove]"));
}

TEST_F(OfferedRules, AVersionWhoseLastPartIsZero) {
  EXPECT_THAT(Check(Entry("chess", "version", "2.0.0.0")), HasSubstr("K03 the last part"));
  EXPECT_THAT(Shown(Installed("chess"), "chess=1.0.0.0"), HasSubstr("[Remove]"));
  EXPECT_THAT(Check(Entry("chess", "version", "1.1.0.0")), HasSubstr("K03 the last part"));
  EXPECT_THAT(Check(Entry("chess", "version", "10.0.0.0")), HasSubstr("K03 the last part"));
}

TEST_F(OfferedRules, AFirstReleaseMayEndInZero) {
  EXPECT_EQ(Check(Entry("chess", "version", "1.0.0.0")), "0 findings\n");
  EXPECT_EQ(Check(Entry("chess", "version", "0.4.1.0")), "0 findings\n");
  const std::string before = work_.Write("before.xml", ManifestOf(Entry("go")));
  Check(Entry("go") + Entry("chess", "version", "2.0.0.0"));
  EXPECT_EQ(work_.Run({"check", manifest_, "--previous", before}), kDone) << work_.out;
}

TEST_F(OfferedRules, AVersionOfFewerParts) {
  EXPECT_THAT(Check(Entry("chess", "version", "2.1")), HasSubstr("K03 the version \"2.1\""));
  EXPECT_THAT(Shown(Installed("chess")),
              AllOf(HasSubstr("log: Kitbay::AddAddonInfo: Subscript out of range"),
                    Not(HasSubstr("installedaddons\n  chess"))));
}

// K06
TEST_F(OfferedRules, ACategory) {
  EXPECT_THAT(Check(Entry("chess", "category", "games")), HasSubstr("K06"));
  EXPECT_THAT(Shown(Installed("chess", "1"), "chess=1.2.0.7"),
              HasSubstr("chess, Version 1.2.0.7 []"));
}

// K08
TEST_F(OfferedRules, AnIdThatIsNoFileName) {
  EXPECT_THAT(Check(Entry("con")), HasSubstr("K08 the id \"con\""));
  EXPECT_THAT(Check(Entry("a~1")), HasSubstr("K08"));
  EXPECT_THAT(Check(Entry("..")), HasSubstr("K08"));
}

// K12
TEST_F(OfferedRules, AMissingElement) {
  EXPECT_THAT(Check(Entry("chess", "description", "(none)") + Entry("go")), HasSubstr(":3:1: K12"));
  EXPECT_THAT(Shown(""), AllOf(HasSubstr("log: Kitbay::UpdatesAddonInfo"), Not(HasSubstr("go,"))));
  EXPECT_THAT(Check(Entry("chess", "progid", "(none)")), HasSubstr(":3:1: K12"));
}

// K15
TEST_F(OfferedRules, TwoEntriesOfOneId) {
  EXPECT_THAT(Check(Entry("chess") + Entry("Chess", "version", "9.9.9.9")),
              HasSubstr(":16:1: K15 line 3 has the id \"Chess\" already"));
  EXPECT_THAT(Shown(""), HasSubstr("  chess, Version 1.2.0.7 [Install]\n  Chess, Version 9.9.9.9"));
}

// K16
TEST_F(OfferedRules, AFileThatIsNoManifest) {
  const std::string page = work_.Write("list.xml", "<html>\n<p>Log in</html>");
  EXPECT_EQ(work_.Run({"check", page}), kFound);
  EXPECT_THAT(work_.out, HasSubstr("list.xml:1:1: K16"));
  work_.Write("list.xml", "<root/>");
  EXPECT_EQ(work_.Run({"check", page}), kFound);
  EXPECT_THAT(work_.out, HasSubstr("the document element is not \"components\""));
  manifest_ = page;
  EXPECT_EQ(Shown(""), "");
}

/// The page's rows and buttons.
class OfferedRulesOnThePage : public install::FlowTest {
 protected:
  std::string Check(const std::string& entries) {
    work_.Run({"check", work_.Write("list.xml", ManifestOf(entries))});
    return work_.out;
  }

  Workplace work_;
};

// K02
TEST_F(OfferedRulesOnThePage, ANameThatIsNotTheId) {
  const std::string entry = Entry("chess", "name", "Chess for two");
  EXPECT_THAT(Check(entry), HasSubstr("list.xml:4:1: K02"));
  files_.AddFile("C:\\Ovalink\\Kitbay\\list.xml", ManifestOf(entry));
  sources_.UpdateSources = {"u.org/list.xml"};
  AddInstalled(base::ComponentKind::kAddon, "Chess for two", 1);
  install::UpdateFlows flows({log_, settings_, catalog_files_, window_, page_, state_, buttons_,
                              sources_, requests_, pending_packages_, main_client_, session_});
  const view::Click click = ClickOn(base::ComponentKind::kAddon, 0, kUpdate);
  flows.UpdateInstalled(click);
  EXPECT_THAT(downloads_.documents, testing::IsEmpty());
  EXPECT_TRUE(click.button->Disabled());
}

// K04
TEST_F(OfferedRulesOnThePage, ANameWithVersion) {
  const std::string name = "Chess Version Two";
  EXPECT_THAT(Check(Entry("chess", "name", name)), HasSubstr("list.xml:4:1: K04"));
  AddNew(base::ComponentKind::kAddon, name, 1);
  new_components_.addon = {{.id = "chess", .name = name, .url = "u.org/chess.zip"}};
  EXPECT_FALSE(requests_.InstallNewAddons(view::ReadClick(Button("updatedaddons", 0, 0)).value()));
  EXPECT_THAT(downloads_.documents, testing::IsEmpty());
}

}  // namespace
}  // namespace kitbay::source_tool
