#pragma once

#include <gmock/gmock.h>

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include "contract/dialog/preference_window_world.h"
#include "contract/failure_number.h"

namespace kitbay::contract {

class PreferenceWindowContract
    : public testing::TestWithParam<std::unique_ptr<PreferenceWindowWorld> (*)()> {
 protected:
  platform::PreferenceWindow& window() { return world_->window(); }

  void Load(const std::vector<std::string>& items = {}) {
    window().Load(events_, world_->owner());
    for (const std::string& item : items) {
      window().AddItem(item);
    }
  }

  void LoadAndShow(const std::vector<std::string>& items) {
    Load(items);
    window().Show();
    events_.told.clear();
  }

  std::vector<std::string> Items() {
    std::vector<std::string> items;
    for (int position = 1; position <= window().ItemCount(); ++position) {
      items.push_back(window().ItemText(position));
    }
    return items;
  }

  RecordingPreferenceEvents events_;
  std::unique_ptr<PreferenceWindowWorld> world_ = GetParam()();
};

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::IsEmpty;
using testing::Not;

TEST_P(PreferenceWindowContract, LoadsHiddenEmptyAndWithItsRemoveButtonDisabled) {
  EXPECT_FALSE(window().IsLoaded());
  Load();
  EXPECT_TRUE(window().IsLoaded());
  EXPECT_FALSE(world_->IsShown());
  EXPECT_EQ(window().UrlText(), "");
  EXPECT_EQ(window().ItemCount(), 0);
  EXPECT_EQ(window().SelectedItem(), 0);
  EXPECT_FALSE(world_->IsRemoveEnabled());
  EXPECT_EQ(world_->StatusText(), "");
  EXPECT_THAT(events_.told, IsEmpty());
}

TEST_P(PreferenceWindowContract, ShowsItself) {
  Load();
  window().Show();
  EXPECT_TRUE(world_->IsShown());
}

TEST_P(PreferenceWindowContract, LoadingAgainChangesNothing) {
  LoadAndShow({"one"});
  RecordingPreferenceEvents others;
  window().Load(others, world_->owner());
  EXPECT_THAT(Items(), ElementsAre("one"));
  window().Unload();
  EXPECT_THAT(events_.told, ElementsAre("Form_Unload"));
  EXPECT_THAT(others.told, IsEmpty());
}

TEST_P(PreferenceWindowContract, EachLoadStartsFresh) {
  LoadAndShow({"one", "two"});
  world_->Type("half a URL");
  world_->Select(2);
  window().EnableRemoveButton(true);
  window().SetStatusText("Ready");
  window().Unload();
  Load();
  EXPECT_FALSE(world_->IsShown());
  EXPECT_EQ(window().UrlText(), "");
  EXPECT_EQ(window().ItemCount(), 0);
  EXPECT_EQ(window().SelectedItem(), 0);
  EXPECT_FALSE(world_->IsRemoveEnabled());
  EXPECT_EQ(world_->StatusText(), "");
}

TEST_P(PreferenceWindowContract, EveryMemberFailsWith91WhileItIsNotLoaded) {
  const std::vector<std::function<void()>> members = {
      [&] { window().Show(); },           [&] { window().UrlText(); },
      [&] { window().SetUrlText("a"); },  [&] { window().FocusUrlBox(); },
      [&] { window().FocusAddButton(); }, [&] { window().EnableRemoveButton(true); },
      [&] { window().ItemCount(); },      [&] { window().ItemText(1); },
      [&] { window().AddItem("a"); },     [&] { window().RemoveItem(1); },
      [&] { window().SelectedItem(); },   [&] { window().SetStatusText("a"); }};
  for (std::size_t member = 0; member < members.size(); ++member) {
    EXPECT_EQ(FailureNumber(members[member]), 91) << member;
  }
  window().Unload();
  EXPECT_FALSE(window().IsLoaded());
}

TEST_P(PreferenceWindowContract, ItemsKeepTheirTextsAndTheirOrder) {
  const std::string long_text = std::string(300, 'a') + "Größe 設" + std::string(2000, 'b');
  Load({"b", "", "a", long_text, "a"});
  EXPECT_THAT(Items(), ElementsAre("b", "", "a", long_text, "a"));
}

TEST_P(PreferenceWindowContract, ThereIsRoomForManyItems) {
  Load();
  for (int i = 1; i <= 2000; ++i) {
    window().AddItem("host" + std::to_string(i) + ".example.com/list.xml");
  }
  EXPECT_EQ(window().ItemCount(), 2000);
  EXPECT_EQ(window().ItemText(2000), "host2000.example.com/list.xml");
}

TEST_P(PreferenceWindowContract, PositionsBeyondFailWith9) {
  Load({"one"});
  EXPECT_EQ(FailureNumber([&] { window().ItemText(0); }), 9);
  EXPECT_EQ(FailureNumber([&] { window().ItemText(2); }), 9);
  EXPECT_EQ(FailureNumber([&] { window().RemoveItem(0); }), 9);
  EXPECT_EQ(FailureNumber([&] { window().RemoveItem(2); }), 9);
  EXPECT_THAT(Items(), ElementsAre("one"));
}

TEST_P(PreferenceWindowContract, TheTextBoxHoldsWhatIsTypedAndWhatIsSet) {
  LoadAndShow({});
  world_->Type("www.example.com/Größe.xml");
  EXPECT_EQ(window().UrlText(), "www.example.com/Größe.xml");
  window().SetUrlText("");
  EXPECT_EQ(window().UrlText(), "");
  window().SetUrlText(std::string(5000, 'x') + "設");
  EXPECT_EQ(window().UrlText(), std::string(5000, 'x') + "設");
}

TEST_P(PreferenceWindowContract, TheStatusBarShowsItsText) {
  LoadAndShow({});
  const char* const text = "The URL is saved. You will start getting updates from this location.";
  window().SetStatusText(text);
  EXPECT_EQ(world_->StatusText(), text);
  window().SetStatusText("");
  EXPECT_EQ(world_->StatusText(), "");
}

TEST_P(PreferenceWindowContract, TheFocusGoesWhereItIsSent) {
  LoadAndShow({"one"});
  window().FocusUrlBox();
  EXPECT_EQ(world_->Focus(), "txtPrefUrl");
  window().FocusAddButton();
  EXPECT_EQ(world_->Focus(), "cmdPrefOk");
  window().FocusUrlBox();
  EXPECT_EQ(world_->Focus(), "txtPrefUrl");
}

TEST_P(PreferenceWindowContract, ADisabledRemoveButtonLeavesTheFocusToTheList) {
  LoadAndShow({"one"});
  window().EnableRemoveButton(true);
  EXPECT_TRUE(world_->IsRemoveEnabled());
  world_->FocusRemoveButton();
  EXPECT_EQ(world_->Focus(), "Command1");
  window().EnableRemoveButton(false);
  EXPECT_FALSE(world_->IsRemoveEnabled());
  EXPECT_EQ(world_->Focus(), "lstPrefURL");
}

TEST_P(PreferenceWindowContract, ASelectionByKeyboardIsReported) {
  LoadAndShow({"one", "two", "three"});
  world_->Select(2);
  EXPECT_EQ(window().SelectedItem(), 2);
  EXPECT_THAT(events_.told, Contains("lstPrefURL_SelectionChange"));
  EXPECT_THAT(events_.told, Not(Contains("lstPrefURL_MouseUp")));
}

TEST_P(PreferenceWindowContract, AClickIsReportedWhenTheItemIsSelected) {
  LoadAndShow({"one", "two", "three"});
  int selected = 0;
  events_.on_told = [&](const std::string& what) {
    if (what == "lstPrefURL_MouseUp") {
      selected = window().SelectedItem();
    }
  };
  world_->Click(3);
  EXPECT_EQ(selected, 3);
  EXPECT_EQ(events_.told.back(), "lstPrefURL_MouseUp");
}

TEST_P(PreferenceWindowContract, RemovingTheSelectedItemSelectsTheNext) {
  LoadAndShow({"one", "two", "three"});
  world_->Select(2);
  events_.told.clear();
  window().RemoveItem(2);
  EXPECT_THAT(Items(), ElementsAre("one", "three"));
  EXPECT_EQ(window().SelectedItem(), 2);
  EXPECT_THAT(events_.told, Contains("lstPrefURL_SelectionChange"));
}

TEST_P(PreferenceWindowContract, RemovingTheSelectedLastItemSelectsTheOneBefore) {
  LoadAndShow({"one", "two"});
  world_->Select(2);
  window().RemoveItem(2);
  EXPECT_EQ(window().SelectedItem(), 1);
}

TEST_P(PreferenceWindowContract, RemovingTheOnlyItemSelectsNoneAndReportsIt) {
  LoadAndShow({"one"});
  world_->Select(1);
  int selected = -1;
  events_.on_told = [&](const std::string&) { selected = window().SelectedItem(); };
  window().RemoveItem(1);
  EXPECT_EQ(selected, 0);
  EXPECT_EQ(events_.told.back(), "lstPrefURL_SelectionChange");
}

TEST_P(PreferenceWindowContract, RemovingAnotherItemKeepsTheSelection) {
  LoadAndShow({"one", "two", "three"});
  world_->Select(2);
  window().RemoveItem(3);
  EXPECT_EQ(window().SelectedItem(), 2);
  window().RemoveItem(1);
  EXPECT_EQ(window().SelectedItem(), 1);
  EXPECT_THAT(Items(), ElementsAre("two"));
}

TEST_P(PreferenceWindowContract, UnloadingReportsWhileTheControlsCanStillBeRead) {
  LoadAndShow({"one", "two"});
  world_->Type("half a URL");
  std::vector<std::string> last;
  events_.on_told = [&](const std::string&) {
    last = Items();
    last.push_back(window().UrlText());
    window().Unload();
  };
  window().Unload();
  EXPECT_THAT(last, ElementsAre("one", "two", "half a URL"));
  EXPECT_THAT(events_.told, ElementsAre("Form_Unload"));
  EXPECT_FALSE(window().IsLoaded());
  window().Unload();
  EXPECT_THAT(events_.told, ElementsAre("Form_Unload"));
}

TEST_P(PreferenceWindowContract, EndsWithItsOwnerAndReportsIt) {
  LoadAndShow({"one", "two"});
  std::vector<std::string> last;
  events_.on_told = [&](const std::string&) { last = Items(); };
  world_->EndOwner();
  EXPECT_THAT(events_.told, ElementsAre("Form_Unload"));
  EXPECT_THAT(last, ElementsAre("one", "two"));
  EXPECT_FALSE(window().IsLoaded());
}

}  // namespace kitbay::contract
