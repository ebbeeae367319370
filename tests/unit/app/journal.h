#pragma once

#include <cstddef>
#include <string>
#include <utility>
#include <vector>

namespace kitbay::app {

/// The calls that several fakes received, in a single order. A fake that creates a `Moment` in each
/// of its calls gets its calls into the right place among the others.
class Journal {
 public:
  /// Watches the calls that a fake records; they must outlive the journal.
  void Watch(const std::vector<std::string>& calls) { sources_.emplace_back(&calls, 0); }

  /// Adds what has been recorded since the last time.
  void Drain() {
    for (auto& [source, taken] : sources_) {
      for (; taken < source->size(); ++taken) {
        calls_.push_back((*source)[taken]);
      }
    }
  }

  /// Drains at the start and at the end of a call.
  class Moment {
   public:
    explicit Moment(Journal& journal) : journal_(journal) { journal_.Drain(); }
    ~Moment() { journal_.Drain(); }
    Moment(const Moment&) = delete;
    Moment& operator=(const Moment&) = delete;

   private:
    Journal& journal_;
  };

  const std::vector<std::string>& calls() {
    Drain();
    return calls_;
  }

  /// Forgets the calls until now.
  void Clear() {
    Drain();
    calls_.clear();
  }

 private:
  std::vector<std::pair<const std::vector<std::string>*, std::size_t>> sources_;
  std::vector<std::string> calls_;
};

}  // namespace kitbay::app
