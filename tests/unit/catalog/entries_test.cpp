#include "catalog/entries.h"

#include <gtest/gtest.h>

#include <string>

namespace kitbay::catalog {
namespace {

std::string IdsWalked(const pugi::xml_document& document, const char* path) {
  std::string ids;
  for (const pugi::xml_node& entry : Entries(document, path)) {
    ids += entry.attribute("id").value();
  }
  return ids;
}

std::string IdsSelected(const pugi::xml_document& document, const char* path) {
  pugi::xpath_node_set selected = document.select_nodes(path);
  selected.sort();
  std::string ids;
  for (const pugi::xpath_node& entry : selected) {
    ids += entry.node().attribute("id").value();
  }
  return ids;
}

struct Case {
  const char* name;
  const char* markup;
  const char* ids;
};

class EntriesOf : public testing::TestWithParam<Case> {};

TEST_P(EntriesOf, AreThoseThatThePathSelectsInDocumentOrder) {
  pugi::xml_document document;
  ASSERT_TRUE(document.load_string(GetParam().markup));
  EXPECT_EQ(IdsWalked(document, "root/addons//addon"), GetParam().ids);
  EXPECT_EQ(IdsSelected(document, "root/addons//addon"), GetParam().ids);
  const Entries entries(document, "root/addons//addon");
  EXPECT_EQ(entries.empty(), std::string(GetParam().ids).empty());
}

constexpr Case kCases[] = {
    {"NoList", "<root><addon id='1'/></root>", ""},
    {"EmptyList", "<root><addons/></root>", ""},
    {"ListWithoutEntries", "<root><addons>x<other/></addons></root>", ""},
    {"Children", "<root><addons><addon id='1'/><addon id='2'/></addons></root>", "12"},
    {"AtAnyDepth", "<root><addons><a><b><addon id='1'/></b></a><addon id='2'/></addons></root>",
     "12"},
    {"WithinAnEntry",
     "<root><addons><addon id='1'><addon id='2'/></addon><addon id='3'/></addons></root>", "123"},
    {"SeveralLists",
     "<root><addons/><addons><addon id='1'/></addons><x/><addons/><addons><y/><addon id='2'/>"
     "</addons><addons/></root>",
     "12"},
    {"AListWithinAList",
     "<root><addons><addons><addon id='1'/></addons><addon id='2'/></addons></root>", "12"},
    {"NotBesideOrAboveTheList",
     "<root><addon id='0'/><addons><addon id='1'/></addons><z><addons><addon id='9'/></addons></z>"
     "</root>",
     "1"},
    {"OtherLettersAndLongerNames",
     "<root><addons><Addon id='0'/><addons2/><addonx id='0'/><addon id='1'/></addons></root>", "1"},
    {"AmongTextsAndComments",
     "<root><addons>t<!--c--><addon id='1'>t</addon>u<?p?><addon id='2'/></addons></root>", "12"},
};

INSTANTIATE_TEST_SUITE_P(Documents, EntriesOf, testing::ValuesIn(kCases),
                         [](const auto& tested) { return tested.param.name; });

TEST(Entries, OfADocumentAMillionDeepAreFound) {
  constexpr int kDepth = 1000000;
  std::string markup = "<root><addons>";
  for (int i = 0; i < kDepth; ++i) {
    markup += "<b>";
  }
  markup += "<addon id='1'/>";
  for (int i = 0; i < kDepth; ++i) {
    markup += "</b>";
  }
  pugi::xml_document document;
  ASSERT_TRUE(document.load_string((markup + "<addon id='2'/></addons></root>").c_str()));
  EXPECT_EQ(IdsWalked(document, "root/addons//addon"), "12");
}

}  // namespace
}  // namespace kitbay::catalog
