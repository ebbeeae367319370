#pragma once

#include <string>
#include <vector>

#include "platform/main_window.h"

namespace kitbay::update {

/// The requests that await an answer, each with its status text. They are transferred one after
/// another, in the order of the requests. File paths are compared without regard to case.
class UnansweredRequests {
 public:
  explicit UnansweredRequests(platform::MainWindow& window) : window_(window) {}

  /// Adds a request with the current status text.
  void Add(const std::string& file_path);

  /// Forgets the latest request for that path, which was refused.
  void TakeBack(const std::string& file_path);

  /// Shows the text of a request whose transfer has started; from now on it has the progress bar.
  void Begin(const std::string& file_path);

  void End(const std::string& file_path);
  void Clear() { requests_.clear(); }
  bool Contains(const std::string& file_path) const;

  /// Restores the text and the bar of the current transfer after something else changed them.
  void ShowStatus();

 private:
  struct Request {
    std::string file_path;
    std::string status;
    bool has_begun = false;
  };

  void SetStatus(const std::string& text);

  platform::MainWindow& window_;
  std::vector<Request> requests_;
};

}  // namespace kitbay::update
