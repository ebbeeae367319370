#include "request_document.h"

#include <gtest/gtest.h>

namespace ovalink {
namespace {

const std::string kWhole =
    "<server>updates.example</server><filetodownload>/a/b.xml</filetodownload>"
    "<destpath>C:\\Suite\\b.xml</destpath><progressevents>true</progressevents>";

TEST(RequestDocument, GivesTheTextsOfItsElements) {
  const auto request = ReadRequestDocument(kWhole);
  ASSERT_TRUE(request);
  EXPECT_EQ(request->server, "updates.example");
  EXPECT_EQ(request->file_path, "/a/b.xml");
  EXPECT_EQ(request->destination, "C:\\Suite\\b.xml");
}

TEST(RequestDocument, TakesValuesAsTheyAre) {
  const auto request = ReadRequestDocument(
      "<server>a&b</server><filetodownload>/x<y>&amp;?a=1&b=<server></filetodownload>"
      "<destpath>C:\\Zoë & <Co>.xml</destpath><progressevents>true</progressevents>");
  ASSERT_TRUE(request);
  EXPECT_EQ(request->server, "a&b");
  EXPECT_EQ(request->file_path, "/x<y>&amp;?a=1&b=<server>");
  EXPECT_EQ(request->destination, "C:\\Zoë & <Co>.xml");
}

TEST(RequestDocument, MayHaveEmptyValues) {
  const auto request = ReadRequestDocument(
      "<server></server><filetodownload></filetodownload><destpath></destpath>"
      "<progressevents></progressevents>");
  ASSERT_TRUE(request);
  EXPECT_EQ(request->server + request->file_path + request->destination, "");
}

TEST(RequestDocument, NeedsEachElementWithBothTags) {
  for (const std::string name : {"server", "filetodownload", "destpath", "progressevents"}) {
    for (const std::string& tag : {"<" + name + ">", "</" + name + ">"}) {
      std::string document = kWhole;
      document.erase(document.find(tag), tag.size());
      EXPECT_FALSE(ReadRequestDocument(document)) << "without " << tag;
    }
  }
  EXPECT_FALSE(ReadRequestDocument(""));
}

TEST(RequestDocument, NeedsItsElementsInOrder) {
  EXPECT_FALSE(ReadRequestDocument(
      "<filetodownload>/a</filetodownload><server>s</server><destpath>d</destpath>"
      "<progressevents>true</progressevents>"));
}

TEST(RequestDocument, AFilePathCannotNameTheDestination) {
  const std::string hostile =
      "/x</filetodownload><destpath>C:\\Elsewhere\\e.bat</destpath>"
      "<progressevents>true</progressevents>";
  const auto request =
      ReadRequestDocument("<server>evil.example</server><filetodownload>" + hostile +
                          "</filetodownload><destpath>C:\\Suite\\Temp\\x.zip</destpath>"
                          "<progressevents>true</progressevents>");
  ASSERT_TRUE(request);
  EXPECT_EQ(request->file_path, hostile);
  EXPECT_EQ(request->destination, "C:\\Suite\\Temp\\x.zip");
}

TEST(RequestDocument, TagsAreExact) {
  std::string document = kWhole;
  document.replace(0, 8, "<Server>");
  EXPECT_FALSE(ReadRequestDocument(document));
}

}  // namespace
}  // namespace ovalink
