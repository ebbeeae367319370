// What a file loaded for changes keeps when it is saved, and what may be put into it.
#include "catalog/xml_characters.h"
#include "catalog/xml_file.h"
#include "catalog_fixture.h"

namespace kitbay::catalog {
namespace {

constexpr const char* kSavedPath = "C:\\Suite\\a.xml";

class XmlSaving : public CatalogTest {
 protected:
  /// The bytes of a file with these bytes after it was loaded and saved again.
  std::string SavedAgain(const std::string& bytes) {
    files_.AddFile(kSavedPath, bytes);
    XmlDocument document;
    LoadXmlToChange(files_, kSavedPath, document);
    SaveXml(files_, kSavedPath, document);
    return files_.Bytes(kSavedPath).value_or("(none)");
  }
};

TEST_F(XmlSaving, UnchangedPartsAreKeptByteForByte) {
  const std::string bytes =
      "<?xml version=\"1.0\" encoding=\"utf-8\" standalone=\"yes\"?>\r\n"
      "<!-- by hand: <addons> -->\r\n<?client keep='<'?>\n\n"
      "<root b=\"it's\" a=\"&lt;&amp;>&quot; &#10;\">\r\n"
      "\t<unknown><deep/> mixed <b>t</b>ext <![CDATA[</addons> <b> ]]></unknown>\n"
      "  <addons>\r\n    <!-- none -->\n    <addon id=\"1\"> &lt; &amp; &gt; \"'\t</addon> \n"
      "<params> </params></addons>\n\n</root>\r\n<!-- the end -->\r\n ";
  EXPECT_EQ(SavedAgain(bytes), bytes);
}

TEST_F(XmlSaving, QuotesTagsAndReferencesGetTheFormInWhichTheyAreWritten) {
  EXPECT_EQ(SavedAgain("<root  a = 'x\"y'\tb=\"&#65;\" ><c   ></c ><d />&quot;&#x42;></root>"),
            "<root a=\"x&quot;y\" b=\"A\"><c/><d/>\"B&gt;</root>");
}

TEST_F(XmlSaving, LineEndsAndTabsInAnAttributeAreTheBlanksThatAreRead) {
  EXPECT_EQ(SavedAgain("<r a='1\n2\t3'/>"), "<r a=\"1 2 3\"/>");
}

TEST_F(XmlSaving, ByteOrderMarkGoes) {
  EXPECT_EQ(SavedAgain("\xEF\xBB\xBF<r>\u00FC</r>"), "<r>\u00FC</r>");
}

TEST_F(XmlSaving, SavingTwiceChangesNothingMore) {
  const std::string once = SavedAgain("<r a='\"'>\r\n <b></b>&#13; &#x9; ]]&gt; <c/></r>");
  EXPECT_EQ(SavedAgain(once), once);
}

TEST(XmlText, HoldsEveryCharacterThatXmlKnows) {
  for (const char* text : {"", "a\t\r\n b\x7F", "\u0080 \u07FF \u0800 \uD7FF \uE000 \uFFFD",
                           "\U00010000 \U0010FFFF", "B\u00FCcher <&>\"'"}) {
    EXPECT_TRUE(IsXmlText(text)) << text;
  }
}

TEST(XmlText, HoldsNoControlCharacters) {
  for (int code = 1; code < 0x20; ++code) {
    const bool is_white_space = code == '\t' || code == '\r' || code == '\n';
    EXPECT_EQ(IsXmlText(std::string("a") + static_cast<char>(code)), is_white_space) << code;
  }
  EXPECT_FALSE(IsXmlText(std::string_view("a\0b", 3)));
}

TEST(XmlText, HoldsNothingThatIsNotUtf8) {
  for (const char* text : {"\x80", "\xBF", "\xFF", "\xFE", "\xC3", "\xC3(", "\xE2\x82", "\xE2(\xA1",
                           "\xF0\x9F\x93", "\xF0\x9F(\xA8", "\xF5\x80\x80\x80"}) {
    EXPECT_FALSE(IsXmlText(text)) << text;
  }
}

TEST(XmlText, HoldsNoOverlongSequencesSurrogatesOrNonCharacters) {
  for (const char* text :
       {"\xC0\xAF", "\xC1\xBF", "\xE0\x80\xAF", "\xF0\x80\x80\xAF", "\xED\xA0\x80", "\xED\xBF\xBF",
        "\xEF\xBF\xBE", "\xEF\xBF\xBF", "\xF4\x90\x80\x80"}) {
    EXPECT_FALSE(IsXmlText(text)) << text;
  }
}

}  // namespace
}  // namespace kitbay::catalog
