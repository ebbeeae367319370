#include "catalog/version_rule.h"

#include <charconv>
#include <cstdint>
#include <optional>
#include <system_error>

#include "base/failure.h"

namespace kitbay::catalog {
namespace {

using base::Failure;
using base::RuntimeError;

bool BeginsNumber(std::string_view text) {
  const std::size_t sign = text.starts_with('+') || text.starts_with('-') ? 1 : 0;
  return text.size() > sign && text[sign] >= '0' && text[sign] <= '9';
}

// Most parts are a few digits, whose value needs no conversion.
std::optional<double> ValueOfDigits(std::string_view part) {
  constexpr std::size_t kExactDigits = 15;
  if (part.empty() || part.size() > kExactDigits) {
    return std::nullopt;
  }
  std::int64_t value = 0;
  for (const char digit : part) {
    if (digit < '0' || digit > '9') {
      return std::nullopt;
    }
    value = 10 * value + (digit - '0');
  }
  return static_cast<double>(value);
}

/// The parts of a version from first to last. An empty text has no parts at all.
class Parts {
 public:
  explicit Parts(std::string_view version) : rest_(version), is_at_end_(version.empty()) {}

  /// The next part; none after the last.
  std::optional<std::string_view> Next() {
    if (is_at_end_) {
      return std::nullopt;
    }
    const std::size_t dot = rest_.find('.');
    const std::string_view part = rest_.substr(0, dot);
    is_at_end_ = dot == std::string_view::npos;
    rest_.remove_prefix(is_at_end_ ? rest_.size() : dot + 1);
    return part;
  }

 private:
  std::string_view rest_;
  bool is_at_end_;
};

}  // namespace

double LeadingNumber(std::string_view part) {
  if (const auto value = ValueOfDigits(part)) {
    return *value;
  }
  const std::size_t first = part.find_first_not_of(' ');
  std::string_view number = first == std::string_view::npos ? "" : part.substr(first);
  if (!BeginsNumber(number)) {
    return 0;
  }
  if (number.front() == '+') {
    number.remove_prefix(1);
  }
  double value = 0;
  const auto result = std::from_chars(number.data(), number.data() + number.size(), value);
  if (result.ec == std::errc::result_out_of_range) {
    throw Failure(RuntimeError::kOverflow);
  }
  return value;
}

bool IsNewer(std::string_view installed, std::string_view offered) {
  Parts installed_parts(installed);
  Parts offered_parts(offered);
  bool newer = false;
  while (const auto installed_part = installed_parts.Next()) {
    const auto offered_part = offered_parts.Next();
    if (!offered_part) {
      throw Failure(RuntimeError::kSubscriptOutOfRange);
    }
    newer = LeadingNumber(*offered_part) > LeadingNumber(*installed_part);
  }
  return newer;
}

}  // namespace kitbay::catalog
