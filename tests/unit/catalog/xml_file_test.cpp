#include "catalog/xml_file.h"

#include <limits>

#include "catalog_fixture.h"
#include "contract/failure_number.h"

namespace kitbay::catalog {
namespace {

using base::Failure;
using contract::FailureNumber;
using testing::ElementsAre;

constexpr const char* kPath = "C:\\Suite\\a.xml";

class XmlFile : public CatalogTest {
 protected:
  /// The number of the failure to load a file with these bytes; 0 if it loads.
  std::int32_t LoadNumber(const std::string& bytes) { return NumberOfLoading(LoadXml, bytes); }

  std::int32_t LoadToChangeNumber(const std::string& bytes) {
    return NumberOfLoading(LoadXmlToChange, bytes);
  }

  template <typename Loader>
  std::int32_t NumberOfLoading(Loader load, const std::string& bytes) {
    files_.AddFile(kPath, bytes);
    try {
      load(files_, kPath, document_);
    } catch (const Failure& failure) {
      description_ = failure.description();
      return failure.number();
    }
    return 0;
  }

  std::string Saved() const { return files_.Bytes(kPath).value_or("(no file)"); }

  XmlDocument document_;
  std::string description_;
};

TEST_F(XmlFile, LoadsOneDocumentElementAmongCommentsAndInstructions) {
  EXPECT_EQ(LoadNumber("<?xml version='1.0'?><!-- a --><?b c?><root id='1'/><!-- d -->\r\n"), 0);
  EXPECT_STREQ(document_.child("root").attribute("id").value(), "1");
}

TEST_F(XmlFile, MissingFileIsItsOwnFailure) {
  files_.AddFolder("C:\\Suite");
  EXPECT_EQ(FailureNumber([&] { LoadXml(files_, kPath, document_); }), 53);
  EXPECT_EQ(FailureNumber([&] { LoadXml(files_, "C:\\None\\a.xml", document_); }), 76);
}

TEST_F(XmlFile, FileInUseElsewhereIsDenied) {
  files_.AddFile(kPath, "<root/>");
  files_.SetInUse(kPath);
  EXPECT_EQ(FailureNumber([&] { LoadXml(files_, kPath, document_); }), 70);
}

TEST_F(XmlFile, TryingGivesFalseInsteadOfAFailure) {
  EXPECT_FALSE(TryLoadXml(files_, kPath, document_));
  files_.AddFile(kPath, "<root>");
  EXPECT_FALSE(TryLoadXml(files_, kPath, document_));
  files_.AddFile(kPath, "<root/>");
  EXPECT_TRUE(TryLoadXml(files_, kPath, document_));
}

struct Refused {
  const char* name;
  std::string bytes;
  const char* why;
};

class RefusedFile : public XmlFile, public testing::WithParamInterface<Refused> {};

TEST_P(RefusedFile, IsInvalidDataAndLeavesAnEmptyDocument) {
  ASSERT_EQ(LoadNumber("<root><before/></root>"), 0);
  EXPECT_EQ(LoadToChangeNumber(GetParam().bytes), kInvalidData);
  EXPECT_FALSE(document_.first_child());
  ASSERT_EQ(LoadNumber("<root><before/></root>"), 0);
  EXPECT_EQ(LoadNumber(GetParam().bytes), kInvalidData);
  EXPECT_EQ(description_,
            "C:\\Suite\\a.xml is not a well-formed document: " + std::string(GetParam().why));
  EXPECT_FALSE(document_.first_child());
}

constexpr const char* kOneElement = "exactly one document element is allowed";
constexpr const char* kNoType = "a document type declaration is not allowed";
constexpr const char* kNoText = "text outside of the document element is not allowed";

INSTANTIATE_TEST_SUITE_P(
    Kinds, RefusedFile,
    testing::Values(
        Refused{"Empty", "", kOneElement}, Refused{"OnlyWhiteSpace", " \r\n\t", kOneElement},
        Refused{"OnlyAComment", "<!-- nothing -->", kOneElement},
        Refused{"OnlyText", "not a document", kNoText},
        Refused{"TwoRoots", "<root/><root/>", kOneElement},
        Refused{"TextBefore", "x<root/>", kNoText}, Refused{"TextAfter", "<root/>x", kNoText},
        Refused{"CdataAfter", "<root/><![CDATA[x]]>", kNoText},
        Refused{"Unclosed", "<root><a>", "Start-end tags mismatch at byte 8"},
        Refused{"Crossed", "<root><a></root></a>", "Start-end tags mismatch at byte 11"},
        Refused{"CutOffInATag", "<root><a id='1", "Error parsing element attribute at byte 13"},
        Refused{"TypeDeclaration", "<!DOCTYPE root><root/>", kNoType},
        Refused{"TypeDeclarationOfAFile", "<!DOCTYPE root SYSTEM 'file:///c:/a.dtd'><root/>",
                kNoType},
        Refused{"BillionLaughs",
                "<!DOCTYPE l [<!ENTITY a \"ha\"><!ENTITY b \"&a;&a;\"><!ENTITY c \"&b;&b;\">]>"
                "<l>&c;</l>",
                kNoType}),
    [](const auto& info) { return info.param.name; });

TEST_F(XmlFile, ReadsUtf8WithAndWithoutAMark) {
  EXPECT_EQ(LoadNumber("<r a='B\u00FCcher \u0416'/>"), 0);
  EXPECT_STREQ(document_.child("r").attribute("a").value(), "B\u00FCcher \u0416");
  EXPECT_EQ(LoadNumber("\xEF\xBB\xBF<r a='B\u00FCcher'/>"), 0);
  EXPECT_STREQ(document_.child("r").attribute("a").value(), "B\u00FCcher");
}

std::string Utf16(const std::u16string& text, bool big_endian) {
  std::string bytes;
  for (const char16_t unit : u"\uFEFF" + text) {
    const char high = static_cast<char>(unit >> 8);
    const char low = static_cast<char>(unit & 0xFF);
    bytes += big_endian ? high : low;
    bytes += big_endian ? low : high;
  }
  return bytes;
}

TEST_F(XmlFile, ReadsUtf16OfBothByteOrders) {
  for (const bool big_endian : {false, true}) {
    EXPECT_EQ(LoadNumber(Utf16(u"<r a='B\u00FCcher \u0416 \U0001F4E8'/>", big_endian)), 0);
    EXPECT_STREQ(document_.child("r").attribute("a").value(), "B\u00FCcher \u0416 \U0001F4E8");
  }
}

TEST_F(XmlFile, ReadsLatin1AsItDeclares) {
  EXPECT_EQ(LoadNumber("<?xml version='1.0' encoding='ISO-8859-1'?><r a='B\xFC"
                       "cher'/>"),
            0);
  EXPECT_STREQ(document_.child("r").attribute("a").value(), "B\u00FCcher");
}

TEST_F(XmlFile, SavedInUtf8WhateverEncodingItWasReadIn) {
  ASSERT_EQ(LoadToChangeNumber("<?xml version='1.0' encoding='ISO-8859-1'?><r a='\xFC'/>"), 0);
  SaveXml(files_, kPath, document_);
  EXPECT_EQ(Saved(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?><r a=\"\u00FC\"/>");
  ASSERT_EQ(LoadNumber(Saved()), 0);
  EXPECT_STREQ(document_.child("r").attribute("a").value(), "\u00FC");
}

TEST_F(XmlFile, SavedUtf16DeclaresItselfAsUtf8) {
  ASSERT_EQ(LoadToChangeNumber(Utf16(u"<?xml version='1.0' encoding='UTF-16'?><r/>", false)), 0);
  SaveXml(files_, kPath, document_);
  EXPECT_EQ(Saved(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?><r/>");
}

TEST_F(XmlFile, OfAnUnknownEncodingReadsWhatCanBeRead) {
  EXPECT_EQ(LoadNumber("<?xml version='1.0' encoding='windows-1252'?><r a='B\xFC' b='News'/>"), 0);
  EXPECT_STREQ(document_.child("r").attribute("b").value(), "News");
}

TEST_F(XmlFile, OfAnUnknownEncodingIsNotChanged) {
  for (const char* encoding : {"windows-1252", "ISO-8859-15", "Shift_JIS"}) {
    const std::string bytes =
        std::string("<?xml version='1.0' encoding='") + encoding + "'?><r a='B\xFC'/>";
    EXPECT_EQ(LoadToChangeNumber(bytes), kInvalidData);
    EXPECT_EQ(description_,
              std::string("C:\\Suite\\a.xml cannot be changed in its encoding, ") + encoding);
    EXPECT_FALSE(document_.first_child());
  }
}

TEST_F(XmlFile, OfLettersThatEveryEncodingHasIsSavedAsTheUtf8ThatItIs) {
  ASSERT_EQ(LoadToChangeNumber("<?xml version='1.0' encoding='windows-1252'?><r a='B'/>"), 0);
  document_.child("r").attribute("a").set_value("B\u00FC");
  SaveXml(files_, kPath, document_);
  EXPECT_EQ(Saved(), "<?xml version=\"1.0\" encoding=\"UTF-8\"?><r a=\"B\u00FC\"/>");
}

TEST_F(XmlFile, WithBytesThatAreNotItsUtf8KeepsThem) {
  for (const std::string declaration : {"", "<?xml version=\"1.0\" encoding=\"utf-8\"?>"}) {
    const std::string bytes = declaration + "<r a=\"\xFC\"/>";
    ASSERT_EQ(LoadToChangeNumber(bytes), 0);
    SaveXml(files_, kPath, document_);
    EXPECT_EQ(Saved(), bytes);
  }
}

TEST_F(XmlFile, SavedWithNoDeclarationLineBreakOrIndentOfItsOwn) {
  ASSERT_EQ(LoadToChangeNumber("<root><a>B\u00FCcher &lt;&amp;</a><b/></root>"), 0);
  document_.child("root").append_child("c").text() = "d";
  SaveXml(files_, kPath, document_);
  EXPECT_EQ(Saved(), "<root><a>B\u00FCcher &lt;&amp;</a><b/><c>d</c></root>");
}

TEST_F(XmlFile, LoadedToChangeKeepsWhatAFileHoldsBesidesElementsAndTexts) {
  const std::string bytes =
      "<?xml version=\"1.0\"?>\r\n<!--head-->\r\n<root>\r\n  <a> x <!--c--> y </a>\r\n"
      "  <?app do?><![CDATA[<&]]>\r\n</root>\r\n";
  ASSERT_EQ(LoadToChangeNumber(bytes), 0);
  SaveXml(files_, kPath, document_);
  EXPECT_EQ(Saved(), bytes);
}

TEST_F(XmlFile, DocumentNestedAMillionDeepIsSavedAsItWasRead) {
  constexpr int kDepth = 1000000;
  std::string bytes;
  for (int i = 0; i < kDepth; ++i) {
    bytes += "<b>";
  }
  bytes += "deep";
  for (int i = 0; i < kDepth; ++i) {
    bytes += "</b>";
  }
  ASSERT_EQ(LoadNumber(bytes), 0);
  SaveXml(files_, kPath, document_);
  EXPECT_TRUE(Saved() == bytes);
}

TEST_F(XmlFile, SavingReplacesTheFileInOneStep) {
  ASSERT_EQ(LoadNumber("<root/>"), 0);
  SaveXml(files_, kPath, document_);
  EXPECT_THAT(files_.operations(),
              ElementsAre("Read C:\\Suite\\a.xml", "Replace C:\\Suite\\a.xml"));
}

TEST_F(XmlFile, SavingThatFailsLeavesTheOldFile) {
  ASSERT_EQ(LoadNumber("<root/>"), 0);
  document_.child("root").append_attribute("a").set_value("b");
  files_.FailWritesTo(kPath, base::RuntimeError::kDiskFull);
  EXPECT_EQ(FailureNumber([&] { SaveXml(files_, kPath, document_); }), 61);
  EXPECT_EQ(Saved(), "<root/>");
}

TEST_F(XmlFile, TextIsAllTextBelowTheElementWithoutOuterWhiteSpace) {
  ASSERT_EQ(LoadNumber("<r> \r\n a <b>c<d>e</d></b> f <![CDATA[ <g> ]]><!--h-->\t</r>"), 0);
  EXPECT_EQ(ElementText(document_.child("r")), "a ce f  <g>");
}

TEST_F(XmlFile, TextStopsAtTheElementsEnd) {
  ASSERT_EQ(LoadNumber("<r><a><b>in</b></a>out<c>out</c></r>"), 0);
  EXPECT_EQ(ElementText(document_.child("r").child("a")), "in");
  ASSERT_EQ(LoadNumber("<r><x><a><b>in</b></a></x>out</r>"), 0);
  EXPECT_EQ(ElementText(document_.child("r").child("x").child("a")), "in");
}

TEST_F(XmlFile, ElementWithoutTextHasTheEmptyText) {
  ASSERT_EQ(LoadNumber("<r><a/><b> \t\r\n</b></r>"), 0);
  EXPECT_EQ(ChildText(document_.child("r"), "a"), "");
  EXPECT_EQ(ChildText(document_.child("r"), "b"), "");
}

TEST_F(XmlFile, TextOfWhatIsMissingIsError91) {
  ASSERT_EQ(LoadNumber("<r/>"), 0);
  const pugi::xml_node entry = document_.child("r");
  EXPECT_EQ(FailureNumber([&] { ElementText(pugi::xml_node()); }), 91);
  EXPECT_EQ(FailureNumber([&] { ChildText(entry, "description"); }), 91);
  EXPECT_EQ(FailureNumber([&] { AttributeText(entry, "id"); }), 91);
  EXPECT_EQ(FailureNumber([&] { FirstAttributeText(entry); }), 91);
  EXPECT_EQ(FailureNumber([&] { AttributeText(pugi::xml_node(), "id"); }), 91);
}

TEST_F(XmlFile, EmptyAttributeIsNotMissing) {
  ASSERT_EQ(LoadNumber("<r id=''/>"), 0);
  EXPECT_EQ(AttributeText(document_.child("r"), "id"), "");
  EXPECT_EQ(FirstAttributeText(document_.child("r")), "");
}

TEST_F(XmlFile, IdThatIsNotTheFirstAttributeIsNotReadByPosition) {
  ASSERT_EQ(LoadNumber("<r name='Chat' id='chat'/>"), 0);
  EXPECT_EQ(FirstAttributeText(document_.child("r")), "Chat");
  EXPECT_EQ(AttributeText(document_.child("r"), "id"), "chat");
}

TEST_F(XmlFile, SelectedNodesStandInDocumentOrder) {
  ASSERT_EQ(LoadNumber("<root><addons><g><addon id='1'/></g><addon id='2'><addon id='3'/></addon>"
                       "</addons><addons><addon id='4'/></addons></root>"),
            0);
  std::string ids;
  for (const auto& node : SelectNodes(document_, "root/addons//addon")) {
    ids += node.node().attribute("id").value();
  }
  EXPECT_EQ(ids, "1234");
}

}  // namespace
}  // namespace kitbay::catalog
