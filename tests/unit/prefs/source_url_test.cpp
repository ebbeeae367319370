#include "prefs/source_url.h"

#include <gtest/gtest.h>

#include <ostream>

namespace kitbay::prefs {
namespace {

struct Typed {
  const char* text;
  const char* kept;
};
void PrintTo(const Typed& typed, std::ostream* out) { *out << '"' << typed.text << '"'; }

class SchemeRule : public testing::TestWithParam<Typed> {};

TEST_P(SchemeRule, KeepsHostAndPath) { EXPECT_EQ(WithoutScheme(GetParam().text), GetParam().kept); }

INSTANTIATE_TEST_SUITE_P(
    WithAScheme, SchemeRule,
    testing::Values(Typed{"http://updates.example.com/a.xml", "updates.example.com/a.xml"},
                    Typed{"http://127.0.0.1:8080/a.xml", "127.0.0.1:8080/a.xml"},
                    Typed{"http://", ""}, Typed{"  http://example.com/a.xml", "example.com/a.xml"},
                    Typed{"http://example.com/http://other.com/a.xml",
                          "example.com/http://other.com/a.xml"},
                    // The first "://" counts, whatever stands before it.
                    Typed{"ftp://http://example.com/a.xml", "http://example.com/a.xml"}));

INSTANTIATE_TEST_SUITE_P(
    WithAWwwHost, SchemeRule,
    testing::Values(Typed{"http://www.example.com/a.xml", "www.example.com/a.xml"},
                    Typed{"http://user@www.example.com/a.xml", "www.example.com/a.xml"},
                    Typed{"www.example.com/a.xml", "www.example.com/a.xml"},
                    Typed{"my www.example.com/a.xml", "www.example.com/a.xml"},
                    Typed{"http://example.com/www/a.xml", "www/a.xml"},
                    Typed{"www.example.com/www/a.xml", "www.example.com/www/a.xml"}));

INSTANTIATE_TEST_SUITE_P(
    Otherwise, SchemeRule,
    testing::Values(Typed{"example.com/a.xml", "example.com/a.xml"},
                    Typed{"https://example.com/a.xml", "https://example.com/a.xml"},
                    Typed{"HTTP://example.com/a.xml", "HTTP://example.com/a.xml"},
                    Typed{"http:/example.com/a.xml", "http:/example.com/a.xml"},
                    Typed{"WWW.example.com/a.xml", "WWW.example.com/a.xml"},
                    Typed{"ftp://example.com/a.xml", "ftp://example.com/a.xml"}, Typed{"", ""},
                    Typed{" a ", " a "}));

class ValidUrl : public testing::TestWithParam<const char*> {};
class InvalidUrl : public testing::TestWithParam<const char*> {};

TEST_P(ValidUrl, IsValid) { EXPECT_TRUE(ValidateUrl(GetParam())); }
TEST_P(InvalidUrl, IsNot) { EXPECT_FALSE(ValidateUrl(GetParam())); }

INSTANTIATE_TEST_SUITE_P(EachDomainEnding, ValidUrl,
                         testing::Values("a.org/x.xml", "a.com/x.xml", "a.net/x.xml", "a.gov/x.xml",
                                         "a.ac/x.xml", "a.mil/x.xml", "a.edu/x.xml"));

INSTANTIATE_TEST_SUITE_P(AnEndingWhereverItStands, ValidUrl,
                         testing::Values("127.0.0.1:8080/list.com.xml", ".xml.org", "a.comet/x.xml",
                                         "localhost/x.xml?from=a.net", "a.academy/x.xmlish",
                                         "a.org.xml", " .xml  .edu "));

INSTANTIATE_TEST_SUITE_P(WithoutXml, InvalidUrl,
                         testing::Values("", "a.com", "a.com/", "a.com/xml", "a.com/x.XML",
                                         "a.com/x.Xml", "a.com/x. xml", "a.com/x.htm"));

INSTANTIATE_TEST_SUITE_P(WithoutADomainEnding, InvalidUrl,
                         testing::Values(".xml", "x.xml", "localhost/x.xml", "127.0.0.1/x.xml",
                                         "a.COM/x.xml", "a.Org/x.xml", "a.info/x.xml", "acom/x.xml",
                                         "a.co/m.xml", "a. com/x.xml"));

}  // namespace
}  // namespace kitbay::prefs
