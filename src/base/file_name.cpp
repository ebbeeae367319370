#include "base/file_name.h"

#include <algorithm>
#include <array>
#include <string_view>

#include "base/text.h"

namespace kitbay::base {
namespace {

constexpr std::array<std::string_view, 6> kDevices = {"con", "prn",    "aux",
                                                      "nul", "conin$", "conout$"};
constexpr std::array<std::string_view, 2> kNumberedDevices = {"com", "lpt"};

// The digits that number a device; superscript ones count too.
constexpr std::array<std::string_view, 13> kDigits = {
    "0", "1", "2", "3", "4", "5", "6", "7", "8", "9", "\u00B9", "\u00B2", "\u00B3"};

// A device's name means the device whatever extension follows it.
bool NamesDevice(const std::string& name) {
  const std::string stem = Trim(ToLower(name.substr(0, name.find('.'))));
  const auto is_first_part = [&](std::string_view device) { return stem.starts_with(device); };
  const bool is_numbered =
      std::any_of(kNumberedDevices.begin(), kNumberedDevices.end(), is_first_part) &&
      std::find(kDigits.begin(), kDigits.end(), stem.substr(3)) != kDigits.end();
  return is_numbered || std::find(kDevices.begin(), kDevices.end(), stem) != kDevices.end();
}

bool IsForbidden(char letter) {
  return static_cast<unsigned char>(letter) < 0x20 ||
         std::string_view("\\/:*?\"<>|").find(letter) != std::string_view::npos;
}

}  // namespace

bool IsPlainFileName(const std::string& name) {
  return !name.empty() && name.back() != '.' && name.back() != ' ' &&
         std::none_of(name.begin(), name.end(), IsForbidden) && !NamesDevice(name);
}

bool IsPlainLongName(const std::string& name) {
  return IsPlainFileName(name) && name.find('~') == std::string::npos;
}

}  // namespace kitbay::base
