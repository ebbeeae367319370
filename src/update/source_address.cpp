#include "update/source_address.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "base/text.h"

namespace kitbay::update {
namespace {

constexpr std::array<std::string_view, 4> kDevices = {"con", "prn", "aux", "nul"};
constexpr std::array<std::string_view, 2> kNumberedDevices = {"com", "lpt"};

// A device is meant whatever extension follows its name.
bool NamesDevice(const std::string& name) {
  const std::string stem = base::Trim(base::ToLower(name.substr(0, name.find('.'))));
  const bool is_numbered = stem.size() == 4 && stem.back() >= '0' && stem.back() <= '9';
  const std::string letters = is_numbered ? stem.substr(0, 3) : stem;
  return is_numbered ? std::find(kNumberedDevices.begin(), kNumberedDevices.end(), letters) !=
                           kNumberedDevices.end()
                     : std::find(kDevices.begin(), kDevices.end(), letters) != kDevices.end();
}

bool IsForbidden(char letter) {
  return static_cast<unsigned char>(letter) < 0x20 ||
         std::string_view("\\/:*?\"<>|").find(letter) != std::string_view::npos;
}

}  // namespace

Address SplitSource(const std::string& source) {
  const std::size_t slash = source.find('/');
  if (slash == std::string::npos) {
    return {.server = source, .file_path = source};
  }
  return {.server = source.substr(0, slash), .file_path = source.substr(slash)};
}

bool IsPlainFileName(const std::string& name) {
  return !name.empty() && name.back() != '.' && name.back() != ' ' &&
         std::none_of(name.begin(), name.end(), IsForbidden) && !NamesDevice(name);
}

}  // namespace kitbay::update
