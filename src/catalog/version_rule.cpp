#include "catalog/version_rule.h"

#include <charconv>
#include <system_error>
#include <vector>

#include "base/failure.h"

namespace kitbay::catalog {
namespace {

using base::Failure;
using base::RuntimeError;

bool BeginsNumber(std::string_view text) {
  const std::size_t sign = text.starts_with('+') || text.starts_with('-') ? 1 : 0;
  return text.size() > sign && text[sign] >= '0' && text[sign] <= '9';
}

// An empty text has no parts at all.
std::vector<std::string_view> Parts(std::string_view version) {
  std::vector<std::string_view> parts;
  while (!version.empty()) {
    const std::size_t dot = version.find('.');
    parts.push_back(version.substr(0, dot));
    if (dot == std::string_view::npos) {
      return parts;
    }
    version.remove_prefix(dot + 1);
    if (version.empty()) {
      parts.emplace_back();
    }
  }
  return parts;
}

}  // namespace

double LeadingNumber(std::string_view part) {
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

bool IsNewer(const std::string& installed, const std::string& offered) {
  const std::vector<std::string_view> installed_parts = Parts(installed);
  const std::vector<std::string_view> offered_parts = Parts(offered);
  bool newer = false;
  for (std::size_t k = 0; k < installed_parts.size(); ++k) {
    if (k >= offered_parts.size()) {
      throw Failure(RuntimeError::kSubscriptOutOfRange);
    }
    newer = LeadingNumber(offered_parts[k]) > LeadingNumber(installed_parts[k]);
  }
  return newer;
}

}  // namespace kitbay::catalog
