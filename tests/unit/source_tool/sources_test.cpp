// Signatures and lists of sources, as `check` and as Kitbay judge them.
#include "catalog/manifest_trust.h"
#include "fakes/fake_clock.h"
#include "fakes/recording_error_log.h"
#include "fakes/signing_maker.h"
#include "tool_fixture.h"

namespace kitbay::source_tool {
namespace {

using testing::HasSubstr;

class Sources : public testing::Test {
 protected:
  /// Kitbay's own verdict on a manifest of that key; empty if it accepts it.
  std::string Judged(const std::string& bytes) const {
    fakes::RecordingErrorLog log;
    const fakes::FakeClock clock;
    const catalog::UpdateSourceList sources = {
        .UpdateSources = {}, .PendingSources = {}, .keys = {{"list.xml", {.key = maker_.key()}}}};
    try {
      catalog::ManifestTrust(log, clock, sources).CheckSignature("list.xml", bytes);
      return "";
    } catch (const base::Failure& failure) {
      return failure.description();
    }
  }

  std::string Checked(const std::string& bytes) {
    work_.Run({"check", work_.Write("list.xml", bytes), "--public", maker_.key()});
    return work_.out;
  }

  Workplace work_;
  fakes::SigningMaker maker_{1};
  std::string honest_ = maker_.Sign(
      ManifestOf(Announcing("<size>1</size><sha256>00</sha256>", Entry("chess"))), 1, kToday);
};

// K14
TEST_F(Sources, SignaturesThatKitbayWouldNotTake) {
  EXPECT_EQ(Checked(honest_), "0 findings\n");
  EXPECT_EQ(Judged(honest_), "");
  std::string changed = honest_;
  changed.replace(changed.find("things"), 6, "evil!!");
  for (const auto& [bytes, why] : std::vector<std::pair<std::string, std::string>>{
           {ManifestOf(Entry("chess")), "is not signed"},
           {changed, "was changed after it was signed"},
           {fakes::SigningMaker(2).Sign(honest_, 1, kToday), "is signed with another key"},
           {fakes::SigningMaker(1, "more.xml").Sign(honest_, 1, kToday), "is signed as more.xml"},
           {maker_.Sign(honest_, 1, kToday - std::chrono::days(1)),
            "held until 2026-11-20 only"}}) {
    EXPECT_THAT(Checked(bytes), HasSubstr("K14 the manifest " + why));
    EXPECT_EQ(Judged(bytes), "list.xml " + why);
  }
}

// K13
TEST_F(Sources, SignedEntriesThatDoNotSayWhatTheirPackageIs) {
  for (const char* said : {"", "<size>1</size>", "<size>x</size><sha256>00</sha256>"}) {
    const std::string manifest = ManifestOf(Announcing(said, Entry("chess")));
    EXPECT_THAT(Checked(manifest), testing::Not(HasSubstr("K13")));
    EXPECT_THAT(
        Checked(maker_.Sign(manifest, 1, kToday)),
        HasSubstr("list.xml:3:1: K13 the manifest is signed, and size or sha256 is missing"));
  }
}

// K11
TEST_F(Sources, TwoOfOneFileName) {
  const std::string manifest = work_.Write("list.xml", ManifestOf(Entry("chess")));
  const std::string sources = work_.Write(
      "sources.xml",
      "<root><preferences><preference url='a.org/list.xml'/>\n<preference url='b.org/LIST.xml'/>"
      "\n<preference url='c.org/list.html'/></preferences></root>");
  EXPECT_EQ(work_.Run({"check", manifest, "--sources", sources}), kFound);
  EXPECT_THAT(work_.out,
              HasSubstr("sources.xml:2:1: K11 b.org/LIST.xml has the file name of a.org/list.xml"));
  EXPECT_THAT(work_.out, HasSubstr("sources.xml:3:1: K08"));
  work_.Run({"rehearse", manifest, manifest, "--registry", work_.Write("r.xml", RegistryOf(""))});
  const std::string row = "  chess, Version 1.2.0.7 [Install]\n";
  EXPECT_THAT(work_.out, HasSubstr(row + row));
}

}  // namespace
}  // namespace kitbay::source_tool
