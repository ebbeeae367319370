#include "install/refusal.h"

#include <algorithm>
#include <array>
#include <cstdint>

namespace kitbay::install {
namespace {

bool IsRefusal(const base::Failure& failure) {
  using base::RuntimeError;
  constexpr std::array kRefusals = {RuntimeError::kDiskFull, RuntimeError::kPermissionDenied,
                                    RuntimeError::kPathFileAccessError};
  return std::ranges::any_of(kRefusals, [&](RuntimeError refusal) {
    return failure.number() == static_cast<std::int32_t>(refusal);
  });
}

}  // namespace

void TellRefusal(platform::Desktop& desktop, const std::string& could_not, const std::string& path,
                 const base::Failure& failure) {
  if (IsRefusal(failure)) {
    desktop.ShowMessage(could_not + " " + path + ": " + failure.description() + ".",
                        platform::kMessageTitle, platform::kOkOnly);
  }
}

}  // namespace kitbay::install
