#include "catalog/installed_components.h"
#include "catalog_fixture.h"
#include "fakes/fake_version_resource.h"
#include "recording_row_writer.h"

namespace kitbay::catalog {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr std::size_t kMegabyte = 1024 * 1024;
constexpr std::size_t kMillion = 1000000;

/// `text`, `count` times in a row.
std::string Repeated(std::size_t count, const std::string& text) {
  std::string all;
  all.reserve(count * text.size());
  for (std::size_t i = 0; i < count; ++i) {
    all += text;
  }
  return all;
}

/// Datastores that no program writes, read by the listing of addons.
class HostileDatastore : public CatalogTest {
 protected:
  void List(const std::string& datastore) {
    SetDatastore(datastore);
    installed_.InitialInstalledAddons();
  }

  fakes::FakeVersionResource resources_;
  FileVersions versions_{log_, settings_, resources_};
  RecordingRowWriter rows_;
  InstalledComponents installed_{log_, catalog_files_, versions_, rows_};
};

TEST_F(HostileDatastore, BillionLaughsExpandsNothing) {
  std::string types = "<!DOCTYPE root [<!ENTITY l0 \"ha\">";
  for (int i = 1; i <= 9; ++i) {
    types += "<!ENTITY l" + std::to_string(i) + " \"" +
             Repeated(10, "&l" + std::to_string(i - 1) + ";") + "\">";
  }
  List(types + "]>" + RegistryText(Addon("a", "&l9;", "a.dll"), "", ""));
  EXPECT_THAT(rows_.calls, IsEmpty());
  EXPECT_THAT(log_.entries,
              ElementsAre(Entry("Kitbay::InitialInstalledAddons", kInvalidData,
                                "C:\\Suite\\Datastore\\olregistry.xml is not a well-formed "
                                "document: a document type declaration is not allowed")));
}

TEST_F(HostileDatastore, UndeclaredEntityStaysAsItIsWritten) {
  List(RegistryText(Addon("a", "&lol;", "a.dll"), "", ""));
  ASSERT_THAT(rows_.calls, SizeIs(2));
  EXPECT_EQ(rows_.calls[1], "fillDiv installedaddons|&lol;|N/A|About &lol;|1|-");
}

TEST_F(HostileDatastore, CutOffAnywhereListsNothing) {
  const std::string whole =
      RegistryText(Addon("a", "A", "a.dll") + Addon("b", "B", "b.dll", "1"), "", "");
  for (std::size_t length = 0; length < whole.size(); ++length) {
    List(whole.substr(0, length));
    ASSERT_THAT(rows_.calls, IsEmpty()) << "cut off after " << length << " bytes";
    ASSERT_THAT(log_.entries, SizeIs(length + 1));
    ASSERT_EQ(log_.entries.back().number, kInvalidData);
  }
}

TEST_F(HostileDatastore, AttributeOfAMegabyteIsHandedOnWhole) {
  const std::string name(kMegabyte, 'n');
  List(RegistryText(Addon("a", name, "a.dll"), "", ""));
  ASSERT_THAT(rows_.calls, SizeIs(2));
  EXPECT_EQ(rows_.calls[1], "fillDiv installedaddons|" + name + "|N/A|About " + name + "|1|-");
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(HostileDatastore, FiftyMegabytesAreListed) {
  const std::string filler(64 * 1024, 'x');
  List(RegistryText(Repeated(800, "<addon id='a' name='A'><filename>a.dll</filename><description>" +
                                      filler + "</description><core>0</core></addon>"),
                    "", ""));
  ASSERT_THAT(rows_.calls, SizeIs(1 + 800));
  EXPECT_EQ(rows_.calls.back(), "fillDiv installedaddons|A|N/A|" + filler + "|800|-");
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(HostileDatastore, FiftyMegabytesOfEntriesEndInAnOverflow) {
  const std::string entry = "<addon id='a' name='A'><filename/><description/><core/></addon>";
  List(RegistryText(Repeated(50 * kMegabyte / entry.size(), entry), "", ""));
  EXPECT_THAT(rows_.calls, SizeIs(1 + 32767));
  EXPECT_THAT(log_.entries, ElementsAre(Entry("Kitbay::InitialInstalledAddons", 6, "Overflow")));
}

// Reading the text below an element once recursed per level and overran the stack.
TEST_F(HostileDatastore, DescriptionNestedAMillionDeepIsRead) {
  List(RegistryText("<addon id='a' name='A'><filename/><description>" + Repeated(kMillion, "<b>") +
                        "deep" + Repeated(kMillion, "</b>") + "</description><core/></addon>",
                    "", ""));
  EXPECT_THAT(rows_.calls,
              ElementsAre("FillDivHeader installedaddons|itabencloser|Currently Installed  Addons",
                          "fillDiv installedaddons|A|N/A|deep|1|-"));
}

TEST_F(HostileDatastore, EntryAMillionDeepIsListed) {
  List(RegistryText(
      Repeated(kMillion, "<b>") + Addon("a", "A", "a.dll") + Repeated(kMillion, "</b>"), "", ""));
  ASSERT_THAT(rows_.calls, SizeIs(2));
  EXPECT_EQ(rows_.calls[1], "fillDiv installedaddons|A|N/A|About A|1|-");
}

TEST_F(HostileDatastore, EntriesNestedInEachOtherAreListedInDocumentOrder) {
  constexpr int kDepth = 2000;
  std::string opening;
  for (int i = 1; i <= kDepth; ++i) {
    opening += "<addon id='a' name='A" + std::to_string(i) + "'><filename/><core/><description/>";
  }
  List(RegistryText(opening + Repeated(kDepth, "</addon>"), "", ""));
  ASSERT_THAT(rows_.calls, SizeIs(1 + kDepth));
  for (int i = 1; i <= kDepth; ++i) {
    const std::string number = std::to_string(i);
    ASSERT_EQ(rows_.calls[i], "fillDiv installedaddons|A" + number + "|N/A||" + number + "|-");
  }
}

TEST_F(HostileDatastore, NulByteMakesTheFileInvalid) {
  List(std::string("<root><addons>\0</addons></root>", 31));
  EXPECT_THAT(rows_.calls, IsEmpty());
  ASSERT_THAT(log_.entries, SizeIs(1));
  EXPECT_EQ(log_.entries[0].number, kInvalidData);
}

}  // namespace
}  // namespace kitbay::catalog
