#pragma once

#include <map>
#include <stdexcept>
#include <string>
#include <vector>

namespace kitbay::source_tool {

/// The arguments after a command are not valid for it; the text says why.
class WrongUsage : public std::runtime_error {
 public:
  using std::runtime_error::runtime_error;
};

/// The arguments after a command, sorted into files and options.
class Arguments {
 public:
  /// `words` are the arguments after the command. Each option in `valued` takes a value, each in
  /// `flags` takes none. Throws `WrongUsage` for any other word that begins with "--".
  Arguments(const std::vector<std::string>& words, const std::vector<std::string>& valued,
            const std::vector<std::string>& flags);

  const std::vector<std::string>& files() const { return files_; }
  bool Has(const std::string& option) const { return options_.contains(option); }

  /// The last value of an option, or `otherwise` if it was not given.
  std::string Value(const std::string& option, const std::string& otherwise = "") const;

  /// All values of an option that may be repeated, in order.
  std::vector<std::string> Values(const std::string& option) const;

  /// The only file. Throws `WrongUsage` unless there is exactly one.
  const std::string& OnlyFile() const;

 private:
  std::vector<std::string> files_;
  std::map<std::string, std::vector<std::string>> options_;
};

}  // namespace kitbay::source_tool
