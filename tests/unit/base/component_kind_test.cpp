#include "base/component_kind.h"

#include <gmock/gmock.h>

namespace kitbay::base {
namespace {

TEST(ComponentKind, OrderIsAddonsTransportsChannels) {
  EXPECT_THAT(kComponentKinds,
              testing::ElementsAre(ComponentKind::kAddon, ComponentKind::kTransport,
                                   ComponentKind::kChannel));
}

TEST(ComponentKind, EachKindFindsItsOwnValue) {
  constexpr PerKind<int> values = {.addon = 1, .transport = 2, .channel = 3};
  EXPECT_EQ(values[ComponentKind::kAddon], 1);
  EXPECT_EQ(values[ComponentKind::kTransport], 2);
  EXPECT_EQ(values[ComponentKind::kChannel], 3);
}

}  // namespace
}  // namespace kitbay::base
