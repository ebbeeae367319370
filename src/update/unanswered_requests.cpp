#include "update/unanswered_requests.h"

#include <algorithm>
#include <iterator>

#include "base/text.h"

namespace kitbay::update {
namespace {

auto IsFor(const std::string& file_path) {
  return [wanted = base::ToLower(file_path)](const auto& request) {
    return base::ToLower(request.file_path) == wanted;
  };
}

}  // namespace

void UnansweredRequests::Add(const std::string& file_path) {
  requests_.push_back(
      {.file_path = file_path, .status = window_.status_bar().PanelText(platform::kStatusPanel)});
}

void UnansweredRequests::TakeBack(const std::string& file_path) {
  const auto request = std::find_if(requests_.rbegin(), requests_.rend(), IsFor(file_path));
  if (request != requests_.rend()) {
    requests_.erase(std::next(request).base());
  }
}

void UnansweredRequests::Begin(const std::string& file_path) {
  const auto request = std::find_if(requests_.begin(), requests_.end(), IsFor(file_path));
  if (request != requests_.end()) {
    request->has_begun = true;
    SetStatus(request->status);
  }
}

void UnansweredRequests::End(const std::string& file_path) {
  const auto request = std::find_if(requests_.begin(), requests_.end(), IsFor(file_path));
  if (request != requests_.end()) {
    requests_.erase(request);
  }
}

bool UnansweredRequests::Contains(const std::string& file_path) const {
  return std::any_of(requests_.begin(), requests_.end(), IsFor(file_path));
}

void UnansweredRequests::ShowStatus() {
  if (requests_.empty()) {
    return;
  }
  SetStatus(requests_.front().status);
  if (requests_.front().has_begun) {
    window_.progress_bar().SetVisible(true);
  }
}

void UnansweredRequests::SetStatus(const std::string& text) {
  platform::StatusBar& bar = window_.status_bar();
  if (bar.PanelText(platform::kStatusPanel) != text) {
    bar.SetPanelText(platform::kStatusPanel, text);
  }
}

}  // namespace kitbay::update
