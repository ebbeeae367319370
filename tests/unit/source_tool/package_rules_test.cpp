// What `check` finds in packages. For each rule, Kitbay's own procedures show what happens to such
// a package on a user's machine.
#include "base/failure.h"
#include "catalog/package_digest.h"
#include "installation_fixture.h"
#include "source_tool/disk.h"
#include "source_tool/library_header.h"
#include "tool_fixture.h"

namespace kitbay::source_tool {
namespace {

using fakes::ZipFile;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;

// A library's first bytes, and those of its version 1.2.0.7.
std::string Library(int bits, const std::string& last_part = std::string("\x07\x00", 2)) {
  std::string bytes(0x40, '\0');
  bytes.replace(0, 2, "MZ");
  bytes[0x3C] = 0x40;
  bytes += std::string("PE\0\0", 4) + (bits == 32 ? "\x4C\x01" : "\x64\x86");
  return bytes + std::string("\xBD\x04\xEF\xFE\x00\x00\x01\x00\x02\x00\x01\x00", 12) + last_part +
         std::string("\x00\x00", 2);
}

class PackageRules : public install::InstallationTest {
 protected:
  /// The findings about a package with these files; the manifest offers notes 1.2.0.7.
  std::string Check(const std::vector<ZipFile>& package,
                    const std::string& entry = Entry("notes")) {
    bytes_ = fakes::ZipOf(package);
    work_.Write("notes.zip", bytes_);
    work_.Run({"check", work_.Write("list.xml", ManifestOf(entry)), "--packages", work_.Path(""),
               "--quiet"});
    return work_.out;
  }

  /// Has Kitbay install the package checked last.
  void InstallIt() {
    files_.AddFile("C:\\Ovalink\\Temp\\notes.zip", bytes_);
    Install(base::ComponentKind::kAddon);
  }

  std::string Expanded(const std::string& name) const {
    return File("C:\\Ovalink\\addons\\notes\\" + name);
  }

  Workplace work_;
  std::string bytes_;
};

TEST_F(PackageRules, FindNothingInAPackageThatWorks) {
  EXPECT_EQ(Check({{.name = "own.dll", .bytes = Library(32)}, {.name = "d/a.txt", .bytes = "a"}}),
            "0 findings\n");
}

// K03
TEST_F(PackageRules, ALibraryOfAnotherVersion) {
  EXPECT_THAT(Check({{.name = "own.dll", .bytes = Library(32, std::string("\x06\x00", 2))}}),
              HasSubstr("K03 the package notes.zip has version 1.2.0.6 of own.dll, and version "
                        "1.2.0.7 is offered\n    The user: is offered the update again and again"));
}

// K05
TEST_F(PackageRules, OneOtherLibraryAlone) {
  EXPECT_THAT(Check({{.name = "own.dll", .bytes = "x"}, {.name = "other.dll", .bytes = "x"}},
                    Entry("notes", "dependencies", "other.dll")),
              HasSubstr("K05 the list of libraries is \"other.dll\" alone"));
  Offer("notes", "other.dll");
  AddLibrary("C:\\Ovalink\\addons\\notes\\own.dll");
  AddLibrary("C:\\Ovalink\\addons\\notes\\other.dll");
  InstallIt();
  EXPECT_THAT(Loaded(), ElementsAre("[C:\\Ovalink\\addons\\notes\\own.dll]"));
}

// K06
TEST_F(PackageRules, AComponentWithACategoryBelongsToTheCore) {
  std::string manifest = File("C:\\Ovalink\\Kitbay\\list.xml");
  manifest.replace(manifest.find("<category/>"), 11, "<category>games</category>");
  files_.AddFile("C:\\Ovalink\\Kitbay\\list.xml", manifest);
  AddLibrary("C:\\Ovalink\\addons\\notes\\own.dll");
  AddLibrary("C:\\Ovalink\\addons\\notes\\notes.dll");
  Install(base::ComponentKind::kAddon);
  EXPECT_THAT(File(install::kDatastore), HasSubstr("<core>1</core>"));
}

// K07
TEST_F(PackageRules, AnEmptyFile) {
  EXPECT_THAT(
      Check({{.name = "own.dll", .bytes = "x"}, {.name = "empty.txt"}, {.name = "folder/"}}),
      testing::AllOf(HasSubstr("K07 the package notes.zip has the empty file empty.txt"),
                     HasSubstr("1 finding\n")));
  InstallIt();
  EXPECT_EQ(Expanded("own.dll"), "x");
  EXPECT_EQ(Expanded("empty.txt"), "(none)");
}

// K08
TEST_F(PackageRules, ANameThatWindowsWillNotKeep) {
  for (const char* name : {"aux.txt", "a:b", "end.", "../up.dll", "what?.txt"}) {
    EXPECT_THAT(Check({{.name = "own.dll", .bytes = "x"}, {.name = name, .bytes = "x"}}),
                HasSubstr("K08 the package notes.zip would not be expanded: the name"))
        << name;
    InstallIt();
    EXPECT_EQ(Expanded("own.dll"), "(none)") << name;
  }
}

// K09: Windows loads no library of the other bitness; here there is none to load.
TEST_F(PackageRules, ALibraryOfTheOtherBitness) {
  EXPECT_THAT(Check({{.name = "own.dll", .bytes = Library(64)}}),
              HasSubstr("K09 the package notes.zip has a library of 64 bits, own.dll"));
  EXPECT_EQ(work_.Run({"check", work_.Path("list.xml"), "--packages", work_.Path(""), "--bits",
                       "64", "--quiet"}),
            kDone);
  Offer("notes", "own.dll");
  InstallIt();
  ASSERT_EQ(log_.entries.size(), 1U);
  EXPECT_EQ(log_.entries[0].procedure, " Kitbay::Loading of library failed");
  EXPECT_THAT(File(install::kDatastore), HasSubstr("id=\"notes\""));
}

// K10
TEST_F(PackageRules, AFileOfMoreThanTwoGigabytes) {
  EXPECT_THAT(Check({{.name = "small.txt", .bytes = "x"},
                     {.name = "large.bin", .bytes = "x", .declared_size = 0x80000000U}}),
              HasSubstr("K10 the package notes.zip has a file of more than 2 GB, large.bin"));
  InstallIt();
  EXPECT_EQ(Expanded("small.txt"), "(none)");
}

// K13
TEST_F(PackageRules, APackageOtherThanAnnounced) {
  const std::string entry = Announcing("<size>5</size><sha256>00</sha256>", Entry("notes"));
  EXPECT_THAT(Check({{.name = "own.dll", .bytes = "x"}}, entry), HasSubstr("K13"));
  const Disk disk;
  EXPECT_THROW(catalog::CheckDigest(*disk.Open(work_.Path("notes.zip")), {"list.xml", "5", "00"}),
               base::Failure);
}

// K17
TEST_F(PackageRules, NoPackage) {
  work_.Run({"check", work_.Write("list.xml", ManifestOf(Entry("other"))), "--packages",
             work_.Path(""), "--quiet"});
  EXPECT_THAT(work_.out, HasSubstr("list.xml:7:1: K17 the package other.zip is not there"));
  bytes_ = "no archive";
  work_.Write("notes.zip", bytes_);
  work_.Run({"check", work_.Write("list.xml", ManifestOf(Entry("notes"))), "--packages",
             work_.Path(""), "--quiet"});
  EXPECT_THAT(work_.out, HasSubstr("K17 the package notes.zip cannot be read"));
  InstallIt();
  EXPECT_THAT(Messages(), ElementsAre("Download of notes.zip is corrupt . Try again"));
}

TEST_F(PackageRules, ShowTheirProgressOnATerminalUnlessQuiet) {
  work_.Write("notes.zip", fakes::ZipOf({{.name = "own.dll", .bytes = "x"}}));
  const std::string manifest = work_.Write("list.xml", ManifestOf(Entry("notes")));
  const std::vector<std::string> words = {"check", manifest, "--packages", work_.Path("")};
  work_.Run(words, true);
  EXPECT_EQ(work_.err, "\r[" + std::string(40, ' ') + "]\r[" + std::string(40, '#') + "]\n");
  work_.Run(words, false);
  EXPECT_EQ(work_.err, "");
  work_.Run({"check", manifest, "--packages", work_.Path(""), "--quiet"}, true);
  EXPECT_EQ(work_.err, "");
}

TEST(LibraryHeaders, SayBitsAndVersion) {
  const auto header = ReadLibraryHeader(Library(32));
  ASSERT_TRUE(header);
  EXPECT_EQ(header->bits, 32);
  EXPECT_EQ(header->version, "1.2.0.7");
  EXPECT_EQ(ReadLibraryHeader(Library(64))->bits, 64);
  EXPECT_FALSE(ReadLibraryHeader("MZ"));
  EXPECT_FALSE(ReadLibraryHeader(""));
  EXPECT_FALSE(ReadLibraryHeader(std::string(0x60, '\xFF')));
}

}  // namespace
}  // namespace kitbay::source_tool
