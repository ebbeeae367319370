#include "catalog/entry_texts.h"

#include <gtest/gtest.h>

#include <string>

#include "catalog/xml_document.h"
#include "catalog/xml_file.h"

namespace kitbay::catalog {
namespace {

class EntryTexts : public testing::Test {
 protected:
  pugi::xml_node Parsed(const std::string& entry) {
    ParseXml(entry, "file.xml", document_);
    return document_.first_child();
  }

  /// The text of the child "name" of an entry with that content.
  std::optional<std::string_view> NameIn(const std::string& content) {
    return KeepText(Parsed("<addon>" + content + "</addon>").child("name"), texts_);
  }

  XmlDocument document_;
  KeptTexts texts_;
};

TEST_F(EntryTexts, OfElementsAreTrimmed) {
  EXPECT_EQ(NameIn("<name> \t\r\n a b \n</name>"), "a b");
  EXPECT_EQ(NameIn("<name>a&amp;b</name>"), "a&b");
}

TEST_F(EntryTexts, MayBeEmptyButAreThere) {
  for (const char* empty : {"<name/>", "<name></name>", "<name> </name>", "<name>&#32;</name>"}) {
    EXPECT_EQ(NameIn(empty), "") << empty;
  }
}

TEST_F(EntryTexts, AreMissingWithoutTheElement) {
  EXPECT_EQ(NameIn("<names>a</names>"), std::nullopt);
  EXPECT_EQ(NameIn(""), std::nullopt);
}

TEST_F(EntryTexts, ConsistOfAllPieces) {
  EXPECT_EQ(NameIn("<name> a<b>b<c/>c</b>d </name>"), "abcd");
  EXPECT_EQ(NameIn("<name><![CDATA[<a>]]> b</name>"), "<a> b");
  EXPECT_EQ(NameIn("<name><b>b</b></name>"), "b");
}

TEST_F(EntryTexts, OfAttributesAreNotTrimmed) {
  const pugi::xml_node entry = Parsed("<addon id=' a ' name=''/>");
  EXPECT_EQ(KeepText(entry.attribute("id"), texts_), " a ");
  EXPECT_EQ(KeepText(entry.attribute("name"), texts_), "");
  EXPECT_EQ(KeepText(entry.attribute("version"), texts_), std::nullopt);
}

TEST_F(EntryTexts, OutliveTheDocument) {
  const auto name = NameIn("<name>Chat</name>");
  const auto description = NameIn("<name>About <b>Chat</b></name>");
  document_.reset();
  EXPECT_EQ(name, "Chat");
  EXPECT_EQ(description, "About Chat");
}

TEST_F(EntryTexts, ChildrenAreFoundInWhateverOrderTheyStand) {
  const pugi::xml_node entry =
      Parsed("<addon>text<url>u</url><x/><nam/><names/><name>n</name><Core/></addon>");
  const auto [name, core, url] = FindChildren(entry, std::array{"name", "core", "url"});
  EXPECT_STREQ(name.value(), "n");
  EXPECT_FALSE(core);
  EXPECT_STREQ(url.value(), "u");
}

TEST_F(EntryTexts, FirstChildWithANameCounts) {
  const pugi::xml_node entry = Parsed("<addon><name/><name>n</name><url>u</url></addon>");
  const auto [name, url] = FindChildren(entry, std::array{"name", "url"});
  EXPECT_EQ(name, entry.first_child());
  EXPECT_STREQ(url.value(), "u");
}

TEST_F(EntryTexts, ChildrenOfChildrenAreNotFound) {
  const pugi::xml_node entry = Parsed("<addon><x><name/></x><addon><url/></addon></addon>");
  const auto [name, url] = FindChildren(entry, std::array{"name", "url"});
  EXPECT_FALSE(name);
  EXPECT_FALSE(url);
}

TEST(SameName, IsTheWholeName) {
  EXPECT_TRUE(IsSameName("name", "name"));
  EXPECT_TRUE(IsSameName("", ""));
  for (const char* other : {"", "n", "nam", "names", "Name", "mane"}) {
    EXPECT_FALSE(IsSameName("name", other)) << other;
    EXPECT_FALSE(IsSameName(other, "name")) << other;
  }
}

}  // namespace
}  // namespace kitbay::catalog
