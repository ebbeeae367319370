#include "update/progress_display.h"

#include <gmock/gmock.h>

#include "fakes/fake_main_window.h"
#include "fakes/recording_error_log.h"

namespace kitbay::update {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ProgressDisplay : public testing::Test {
 protected:
  fakes::RecordingErrorLog log_;
  fakes::FakeMainWindow window_{"<html><body></body></html>"};
};

TEST_F(ProgressDisplay, ShowingPutsTheEmptyBarOntoTheFirstPanel) {
  ShowProgressInStatusBar(log_, window_, true);
  EXPECT_THAT(window_.calls().all(), ElementsAre("SetParent status bar", "Move 6 8 94 14",
                                                 "SetVisible true", "SetValue 0"));
  EXPECT_THAT(log_.entries, IsEmpty());
}

TEST_F(ProgressDisplay, HidingGivesTheBarBackToTheWindow) {
  ShowProgressInStatusBar(log_, window_, false);
  EXPECT_THAT(window_.calls().all(), ElementsAre("SetParent window", "SetVisible false"));
}

TEST_F(ProgressDisplay, FailureIsLoggedAndEndsTheSteps) {
  window_.calls().FailMember("Move", base::Failure(base::RuntimeError::kInvalidProcedureCall));
  ShowProgressInStatusBar(log_, window_, true);
  EXPECT_THAT(window_.calls().all(), ElementsAre("SetParent status bar", "Move 6 8 94 14"));
  EXPECT_THAT(log_.entries, ElementsAre(fakes::Entry("Kitbay::ShowProgressInStatusBar", 5,
                                                     "Invalid procedure call or argument")));
}

}  // namespace
}  // namespace kitbay::update
