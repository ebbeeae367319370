#include "fakes/fake_preference_window.h"
#include "contract/dialog/preference_window_contract.h"

namespace kitbay::contract {
namespace {

class FakePreferenceWindowWorld : public PreferenceWindowWorld {
 public:
  platform::PreferenceWindow& window() override { return window_; }
  platform::WindowHandle owner() const override { return {0x10042}; }
  void EndOwner() override { window_.Unload(); }
  bool IsShown() const override { return window_.shown(); }
  bool IsRemoveEnabled() const override { return window_.remove_enabled(); }
  std::string StatusText() const override { return window_.status_text(); }
  std::string Focus() const override { return window_.focus(); }
  void FocusRemoveButton() override { window_.FocusRemoveButton(); }
  void Type(const std::string& text) override { window_.Type(text); }
  void Select(int position) override { window_.Select(position); }
  void Click(int position) override { window_.Click(position); }

 private:
  fakes::FakePreferenceWindow window_;
};

std::unique_ptr<PreferenceWindowWorld> Make() {
  return std::make_unique<FakePreferenceWindowWorld>();
}

TEST(FakePreferenceWindow, ADisabledButtonCannotBePressed) {
  fakes::FakePreferenceWindow window;
  RecordingPreferenceEvents events;
  window.Load(events, {0x10042});
  window.PressRemove();
  EXPECT_THAT(events.told, IsEmpty());
  window.EnableRemoveButton(true);
  window.PressRemove();
  EXPECT_THAT(events.told, ElementsAre("Command1_Click"));
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Fake, PreferenceWindowContract, testing::Values(&Make));

}  // namespace kitbay::contract
