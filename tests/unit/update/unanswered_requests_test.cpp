#include "update/unanswered_requests.h"

#include <gmock/gmock.h>

#include "fakes/fake_main_window.h"

namespace kitbay::update {
namespace {

class Unanswered : public testing::Test {
 protected:
  void Add(const std::string& file_path, const std::string& status) {
    window_.status_bar().SetPanelText(platform::kStatusPanel, status);
    requests_.Add(file_path);
  }
  std::string ShownStatus() {
    requests_.ShowStatus();
    return window_.status_bar().PanelText(platform::kStatusPanel);
  }

  fakes::FakeMainWindow window_{"<html><body></body></html>"};
  UnansweredRequests requests_{window_};
};

TEST_F(Unanswered, TheLatestOfTwoEqualRequestsIsWithdrawn) {
  Add("/a.zip", "first");
  Add("/a.zip", "second");
  requests_.TakeBack("/a.zip");
  EXPECT_EQ(ShownStatus(), "first");
}

TEST_F(Unanswered, TheEarliestOfTwoEqualRequestsIsAnswered) {
  Add("/a.zip", "first");
  Add("/a.zip", "second");
  requests_.End("/a.zip");
  EXPECT_EQ(ShownStatus(), "second");
}

TEST_F(Unanswered, PathsAreComparedWithoutRegardToCase) {
  Add("/A.zip", "first");
  EXPECT_TRUE(requests_.Contains("/a.ZIP"));
  requests_.End("/a.zip");
  EXPECT_FALSE(requests_.Contains("/A.zip"));
}

}  // namespace
}  // namespace kitbay::update
