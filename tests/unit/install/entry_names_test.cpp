#include "install/entry_names.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <functional>
#include <ostream>
#include <string>

#include "base/failure.h"
#include "fakes/memory_files.h"

namespace kitbay::install {
namespace {

using namespace std::string_literals;
using testing::ElementsAre;

std::string Refusal(const std::function<void()>& step) {
  try {
    step();
  } catch (const base::Failure& failure) {
    return std::to_string(failure.number()) + " " + failure.description();
  }
  return "taken";
}

std::string JudgedAsFile(const std::string& name) {
  return Refusal([&] { EntryNames::DemandPlain(name, false); });
}

TEST(EntryNames, PathsOfPlainNamesAreTaken) {
  for (const std::string& name :
       {"a.dll"s, "bin\\a.dll"s, "a\\b\\c\\d\\e.txt"s, "Größe\\設定.xml"s, "two words\\ leading"s,
        "..a\\.hidden"s, "a\\console\\com10.txt"s, "\xF0\x9F\x98\x80.png"s, "a\\b.c.d"s}) {
    EXPECT_EQ(JudgedAsFile(name), "taken") << name;
  }
}

TEST(EntryNames, TheNameOfAFolderMayEndInASeparator) {
  EXPECT_EQ(Refusal([] { EntryNames::DemandPlain("bin\\sub\\", true); }), "taken");
  EXPECT_EQ(Refusal([] { EntryNames::DemandPlain("bin\\sub", true); }), "taken");
  EXPECT_EQ(Refusal([] { EntryNames::DemandPlain("bin\\sub\\", false); }),
            "75 Path/File access error: bin\\sub\\");
  EXPECT_EQ(Refusal([] { EntryNames::DemandPlain("bin\\\\", true); }),
            "75 Path/File access error: bin\\\\");
  EXPECT_EQ(Refusal([] { EntryNames::DemandPlain("\\", true); }), "75 Path/File access error: \\");
  EXPECT_EQ(Refusal([] { EntryNames::DemandPlain("", true); }), "75 Path/File access error: ");
}

struct HostileName {
  const char* what;
  std::string name;
  std::string logged = name;
};

void PrintTo(const HostileName& hostile, std::ostream* out) { *out << hostile.what; }

class HostileNames : public testing::TestWithParam<HostileName> {};

TEST_P(HostileNames, AreRefusedByName) {
  EXPECT_EQ(JudgedAsFile(GetParam().name), "75 Path/File access error: " + GetParam().logged);
}

INSTANTIATE_TEST_SUITE_P(
    All, HostileNames,
    testing::Values(
        HostileName{"parent", ".."}, HostileName{"parent first", "..\\a.txt"},
        HostileName{"parent inside", "bin\\..\\..\\a.txt"}, HostileName{"parent last", "bin\\.."},
        HostileName{"this folder", ".\\a.txt"}, HostileName{"drive", "C:\\Windows\\a.txt"},
        HostileName{"drive without folder", "C:a.txt"}, HostileName{"rooted", "\\Windows\\a.txt"},
        HostileName{"UNC", "\\\\server\\share\\a.txt"},
        HostileName{"long path", "\\\\?\\C:\\a.txt"},
        HostileName{"device path", "\\\\.\\C:\\a.txt"}, HostileName{"stream", "a.txt:stream"},
        HostileName{"data stream", "bin\\a.txt::$DATA"}, HostileName{"device", "con"},
        HostileName{"device with ending", "bin\\NUL.txt"},
        HostileName{"device as folder", "aux\\a.txt"}, HostileName{"numbered device", "com1"},
        HostileName{"raised digit", "lpt\xC2\xB9.txt"}, HostileName{"console", "CONIN$"},
        HostileName{"line end", "a\r\nb.txt", "a??b.txt"}, HostileName{"tabulator", "a\tb", "a?b"},
        HostileName{"escape", "\x1B[2J", "?[2J"}, HostileName{"delete character", "a\x7F.", "a?."},
        HostileName{"full stop last", "a.txt."},
        HostileName{"folder with full stop", "bin.\\a.txt"}, HostileName{"blank last", "a.txt "},
        HostileName{"folder with blank", "bin \\a.txt"}, HostileName{"three dots", "...\\a.txt"},
        HostileName{"empty part", "bin\\\\a.txt"}, HostileName{"empty name", ""},
        HostileName{"pattern", "*.dll"}, HostileName{"question mark", "a?.txt"},
        HostileName{"quote", "a\".txt"}, HostileName{"pipe", "a|b"}, HostileName{"angle", "<a>"},
        HostileName{"slash", "bin/a.txt"}));

INSTANTIATE_TEST_SUITE_P(NotUtf8, HostileNames,
                         testing::Values(HostileName{"code page letter",
                                                     "Gr\xF6\xDF"
                                                     "e.txt",
                                                     "Gr??e.txt"},
                                         HostileName{"long spelling of a full stop",
                                                     "\xC0\xAE\xC0\xAE\\a", "????\\a"},
                                         HostileName{"long spelling of a slash",
                                                     "..\xE0\x80\xAF"
                                                     "a",
                                                     "..???a"},
                                         HostileName{"surrogate", "\xED\xA0\x80", "???"},
                                         HostileName{"past the end", "\xF4\x90\x80\x80", "????"},
                                         HostileName{"cut short", "a\xE8\xA8", "a??"},
                                         HostileName{"trail byte alone", "a\x80", "a?"}));

TEST(EntryNames, AZeroByteIsRefused) {
  EXPECT_EQ(JudgedAsFile("a\0b"s), "75 Path/File access error: a?b");
}

class LinkedFolders : public testing::Test {
 protected:
  std::string Judged(const std::string& name) {
    return Refusal([&] { names_.DemandNoLink(name); });
  }

  fakes::MemoryFiles files_;
  EntryNames names_{files_, "C:\\S\\"};
};

TEST_F(LinkedFolders, AreNotWrittenThrough) {
  files_.AddFolder("C:\\S\\plain\\link\\deep");
  files_.SetLink("C:\\S\\plain\\link");
  EXPECT_EQ(Judged("plain\\a.txt"), "taken");
  EXPECT_EQ(Judged("plain\\link\\a.txt"), "75 Path/File access error: plain\\link\\a.txt");
  EXPECT_EQ(Judged("plain\\LINK\\deep\\a.txt"),
            "75 Path/File access error: plain\\LINK\\deep\\a.txt");
  EXPECT_EQ(Judged("plain\\link"), "75 Path/File access error: plain\\link");
}

TEST_F(LinkedFolders, AboveTheDestinationAreTheUsersBusiness) {
  files_.AddFolder("C:\\S");
  files_.SetLink("C:\\S");
  EXPECT_EQ(Judged("a.txt"), "taken");
}

TEST_F(LinkedFolders, AreLookedForOnce) {
  files_.AddFolder("C:\\S\\a");
  EXPECT_EQ(Judged("a\\b\\c\\1.txt"), "taken");
  EXPECT_EQ(Judged("a\\b\\c\\2.txt"), "taken");
  EXPECT_EQ(Judged("a\\3.txt"), "taken");
  EXPECT_THAT(files_.operations(),
              ElementsAre("IsLink C:\\S\\a", "Exists C:\\S\\a", "IsLink C:\\S\\a\\b",
                          "Exists C:\\S\\a\\b", "IsLink C:\\S\\a\\3.txt"));
}

}  // namespace
}  // namespace kitbay::install
