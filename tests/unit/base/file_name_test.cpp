#include "base/file_name.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace kitbay::base {
namespace {

struct Name {
  const char* name;
  bool is_plain;
};

void PrintTo(const Name& name, std::ostream* out) { *out << '"' << name.name << '"'; }

class FileNames : public testing::TestWithParam<Name> {};

TEST_P(FileNames, ArePlainWhenTheyCanLeadNowhereElse) {
  EXPECT_EQ(IsPlainFileName(GetParam().name), GetParam().is_plain);
}

INSTANTIATE_TEST_SUITE_P(
    Plain, FileNames,
    testing::Values(Name{"components.xml", true}, Name{"a", true}, Name{".hidden", true},
                    Name{"..a", true}, Name{"two words.xml", true}, Name{" leading", true},
                    Name{"\xC3\xBC.xml", true}, Name{"a.b.c", true}, Name{"a&b;=+,[]#%~!", true},
                    // Names that only resemble a device's.
                    Name{"console", true}, Name{"con-1.xml", true}, Name{"com", true},
                    Name{"com10", true}, Name{"comx", true}, Name{"lpt12.xml", true},
                    Name{"nulls", true}, Name{"xcon", true}, Name{"auxiliary.xml", true},
                    Name{"abc1", true}, Name{"a.con", true}));

INSTANTIATE_TEST_SUITE_P(
    NotPlain, FileNames,
    testing::Values(Name{"", false}, Name{".", false}, Name{"..", false}, Name{"...", false},
                    Name{"a.", false}, Name{"a ", false}, Name{" ", false}, Name{"a/b", false},
                    Name{"a\\b", false}, Name{"..\\a", false}, Name{"..\\..\\evil.xml", false},
                    Name{"\\\\server\\share\\a", false}, Name{"C:", false}, Name{"C:a.xml", false},
                    Name{"a.xml:stream", false}, Name{"a.xml::$DATA", false}, Name{"a*", false},
                    Name{"a?", false}, Name{"a\"b", false}, Name{"a<b", false}, Name{"a>b", false},
                    Name{"a|b", false}, Name{"a\nb", false}, Name{"a\tb", false},
                    Name{"\x01", false}, Name{"a\x1F", false},
                    // Devices, in any letter case and whatever follows their name.
                    Name{"con", false}, Name{"CON", false}, Name{"Nul", false},
                    Name{"prn.xml", false}, Name{"aux.tar.gz", false}, Name{"nul .xml", false},
                    Name{"com1", false}, Name{"COM9.xml", false}, Name{"com0", false},
                    Name{"lpt1", false}, Name{"LPT3.xml", false}, Name{" con.xml", false}));

INSTANTIATE_TEST_SUITE_P(ConsoleAndSuperscriptDevices, FileNames,
                         testing::Values(Name{"CONIN$", false}, Name{"conout$", false},
                                         Name{"conin$.xml", false}, Name{"com\xC2\xB9", false},
                                         Name{"LPT\xC2\xB2.xml", false},
                                         Name{"com\xC2\xB3.a", false}, Name{"con$", true},
                                         Name{"com\xC2\xBD", true}));

TEST(FileNames, ANameThatMayBeAShortOneIsNotLong) {
  EXPECT_TRUE(IsPlainLongName("chess"));
  EXPECT_FALSE(IsPlainLongName("CHESS~1"));
  EXPECT_FALSE(IsPlainLongName("chess~"));
  EXPECT_FALSE(IsPlainLongName("nul"));
}

TEST(FileNames, NulByteIsNotPlain) { EXPECT_FALSE(IsPlainFileName(std::string("a\0b", 3))); }

}  // namespace
}  // namespace kitbay::base
