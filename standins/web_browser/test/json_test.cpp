#include "json.h"

#include <gmock/gmock.h>

namespace kitbay::web_browser {
namespace {

TEST(Json, ReadsWhatItWrites) {
  const std::string text =
      R"({"a":[1,-2.5,true,false,null,"x"],"empty":{},"list":[],"name":"\u00e4\ud800\u0022"})";
  EXPECT_EQ(Json::Parse(text).Write(), text);
}

TEST(Json, TextsKeepUnitsThatAreNoCharacters) {
  const std::wstring text = {L'a', wchar_t{0xd800}, L'\0', L'\\', L'"', wchar_t{0xffff}};
  EXPECT_EQ(Json(text).Write(), R"("a\ud800\u0000\u005c\u0022\uffff")");
  EXPECT_EQ(Json::Parse(Json(text).Write()).Text(), text);
}

TEST(Json, EscapesOfOneLetterAreRead) {
  EXPECT_EQ(Json::Parse(R"("\n\t\/\"\\")").Text(), L"\n\t/\"\\");
}

TEST(Json, TextThatIsNoJsonIsRefused) {
  for (const char* text : {"", "{", "[1,", "{\"a\"}", "\"a", "\"\\u12\"", "\"\\uzzzz\"", "nul",
                           "1 2", "{1:2}", "-", "[1}"}) {
    EXPECT_THROW(Json::Parse(text), JsonError) << text;
  }
}

TEST(Json, NestingIsLimited) {
  EXPECT_THROW(Json::Parse(std::string(100, '[') + std::string(100, ']')), JsonError);
}

TEST(Json, MemberOfAnotherTypeIsRefused) {
  const Json object = Json::Parse(R"({"a":1})");
  EXPECT_EQ(object.At("a").Integer(), 1);
  EXPECT_THROW(object.At("a").Text(), JsonError);
  EXPECT_THROW(object.At("b"), JsonError);
  EXPECT_EQ(object.Find("b"), nullptr);
}

}  // namespace
}  // namespace kitbay::web_browser
