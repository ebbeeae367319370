#include "source_tool/arguments.h"

#include <algorithm>

namespace kitbay::source_tool {

Arguments::Arguments(const std::vector<std::string>& words, const std::vector<std::string>& valued,
                     const std::vector<std::string>& flags) {
  for (auto word = words.begin(); word != words.end(); ++word) {
    if (!word->starts_with("--")) {
      files_.push_back(*word);
    } else if (std::ranges::find(flags, *word) != flags.end()) {
      options_[*word];
    } else if (std::ranges::find(valued, *word) == valued.end()) {
      throw WrongUsage(*word + " is not an option of this command");
    } else if (word + 1 == words.end()) {
      throw WrongUsage(*word + " needs a value");
    } else {
      options_[*word].push_back(*(word + 1));
      ++word;
    }
  }
}

std::string Arguments::Value(const std::string& option, const std::string& otherwise) const {
  const auto found = options_.find(option);
  return found == options_.end() ? otherwise : found->second.back();
}

std::vector<std::string> Arguments::Values(const std::string& option) const {
  const auto found = options_.find(option);
  return found == options_.end() ? std::vector<std::string>{} : found->second;
}

const std::string& Arguments::OnlyFile() const {
  if (files_.size() != 1) {
    throw WrongUsage("one file is needed");
  }
  return files_.front();
}

}  // namespace kitbay::source_tool
