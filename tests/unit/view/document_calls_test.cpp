// How many calls into the document a refresh takes: each is noticeable in a list of thousands of
// rows.
#include "page_fixture.h"
#include "two_bars_page.h"

namespace kitbay::view {
namespace {

using ::testing::IsEmpty;

constexpr int kRows = 1000;

std::string Numbered(const char* text, int number) { return text + std::to_string(number); }

class DocumentCalls : public PageTest {
 protected:
  DocumentCalls() { Show(kTwoBarsPage); }

  /// Installs channels that an update source offers in a newer version, and makes it offer as many
  /// new ones: half of all rows each.
  void InstallAndOffer(int rows) {
    std::string installed;
    std::string offered;
    for (int i = 0; i < rows / 2; ++i) {
      installed += Numbered("<channel id='old", i) + Numbered("' name='Old ", i) +
                   "' version='1.0'><description>Old.</description><core>0</core></channel>";
      offered += Offer(Numbered("old", i)) + Offer(Numbered("new", i));
    }
    InstallDatastore("<root><channels>" + installed + "</channels></root>");
    OfferManifest(fakes::ManifestText(base::ComponentKind::kChannel, offered));
  }

  static std::string Offer(const std::string& id) {
    return fakes::OfferText(base::ComponentKind::kChannel,
                            {.id = id, .name = id, .version = "1.5", .description = "New."});
  }
};

TEST_F(DocumentCalls, ARefreshMakesAtMostTenForARowAlsoWhileButtonsAreOff) {
  InstallAndOffer(kRows);
  state_.download_in_progress = true;
  const int before = document_->calls();
  categories_.ShowDetails();
  EXPECT_LE(document_->calls() - before, 10 * kRows);
  EXPECT_EQ(At("installedchannels")->ChildCount(), 1 + kRows / 2);
  EXPECT_EQ(At("updatedchannels")->ChildCount(), 1 + kRows / 2);
  ASSERT_EQ(At("installedchannels")->Child(kRows / 2)->Property("className"), "hasupdate");
  EXPECT_TRUE(Button("installedchannels", kRows / 2, 0)->Disabled());
  EXPECT_TRUE(Button("installedchannels", kRows / 2, 1)->Disabled());
  EXPECT_TRUE(Button("updatedchannels", kRows / 2)->Disabled());
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(DocumentCalls, AListIsLookedUpOnceForAListing) {
  rows_.FillDivHeader("installedaddons", "itabencloser", "Currently Installed  Addons");
  document_->FailMember("AllItem", base::Failure(base::RuntimeError::kOutOfMemory));
  for (const std::int16_t row : {1, 2, 3}) {
    rows_.fillDiv("installedaddons", "Notes", "1", "Keeps notes.", row, false);
  }
  EXPECT_EQ(At("installedaddons")->ChildCount(), 4);
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(DocumentCalls, AListOfAnEarlierPageIsNotWrittenTo) {
  rows_.FillDivHeader("installedaddons", "itabencloser", "Currently Installed  Addons");
  document_->MakeStale();
  Show(kTwoBarsPage);
  rows_.fillDiv("installedaddons", "Notes", "1", "Keeps notes.", 1, false);
  EXPECT_EQ(At("installedaddons")->ChildCount(), 1);
  EXPECT_THAT(log_.entries, IsEmpty());
}

}  // namespace
}  // namespace kitbay::view
