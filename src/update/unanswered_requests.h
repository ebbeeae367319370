#pragma once

#include <string>
#include <vector>

#include "platform/main_window.h"

namespace kitbay::update {

/// The requests that were handed over and have not been answered, each with the status text that
/// was set for it. They are transferred one after the other, in the order in which they were asked.
/// File paths are compared without letter case.
class UnansweredRequests {
 public:
  explicit UnansweredRequests(platform::MainWindow& window) : window_(window) {}

  /// Adds a request, with the status text that is shown now.
  void Add(const std::string& file_path);

  /// Forgets the request for that path that was added last: it was refused.
  void TakeBack(const std::string& file_path);

  /// Shows the text of a request whose transfer has begun; what the bar shows is its own from now
  /// on.
  void Begin(const std::string& file_path);

  void End(const std::string& file_path);
  void Clear() { requests_.clear(); }
  bool Contains(const std::string& file_path) const;

  /// Shows the text and the bar of the transfer under way again, where something else has changed
  /// them.
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
