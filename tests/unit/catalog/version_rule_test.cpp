#include "catalog/version_rule.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

#include "base/failure.h"

namespace kitbay::catalog {
namespace {

struct Pair {
  const char* installed;
  const char* offered;
  bool is_newer;
};

void PrintTo(const Pair& pair, std::ostream* out) {
  *out << "installed \"" << pair.installed << "\", offered \"" << pair.offered << "\"";
}

class VersionPairs : public testing::TestWithParam<Pair> {};

TEST_P(VersionPairs, LastInstalledPartDecides) {
  EXPECT_EQ(IsNewer(GetParam().installed, GetParam().offered), GetParam().is_newer);
}

INSTANTIATE_TEST_SUITE_P(
    VersionRule, VersionPairs,
    testing::Values(
        // Every step overwrites the previous one.
        Pair{"1.2.0.5", "1.3.0.0", false}, Pair{"2.0.0.0", "1.0.0.1", true},
        Pair{"1.0.0.9", "1.0.1.0", false}, Pair{"1.0.0.9", "0.0.0.10", true},
        Pair{"1.0.0.0", "1.0.0.0", false}, Pair{"1.0.0.0", "1.0.0.1", true},
        Pair{"1.0.0.1", "1.0.0.0", false}, Pair{"1.0.0.0", "9.9.9.0", false},
        Pair{"9.9.9.0", "0.0.0.1", true}, Pair{"1.2.3.4", "1.2.3.5", true},
        // Numbers, not texts.
        Pair{"1.0.0.9", "1.0.0.10", true}, Pair{"1.0.0.10", "1.0.0.9", false},
        Pair{"1.0.0.09", "1.0.0.9", false}, Pair{"1.0.0.2", "1.0.0.002", false},
        // Different numbers of parts.
        Pair{"1", "2", true}, Pair{"2", "2", false}, Pair{"1.5", "1.6", true},
        Pair{"1.5", "1.6.9.9", true}, Pair{"1.5", "9.5.9", false}, Pair{"3", "2.9.9.9", false},
        Pair{"1.0.0.0.1", "1.0.0.0.2", true},
        // An unreadable version has one part, which counts as 0.
        Pair{"N/A", "1.0.0.0", true}, Pair{"N/A", "0.9.9.9", false}, Pair{"N/A", "2", true},
        Pair{"N/A", "N/A", false},
        // Only the number at the start of a part counts.
        Pair{"1.0.0.3", "1.0.0.4beta", true}, Pair{"1.0.0.4", "1.0.0.4beta", false},
        Pair{"1.0.0.0", "1.0.0.beta4", false}, Pair{"1.0.0.x", "1.0.0.1", true},
        Pair{"1.0.0.", "1.0.0.1", true}, Pair{"1.0.0.1", "1.0.0.", false},
        Pair{"1.0.0.1", "1.0.0. 2", true}, Pair{"1.0.0.1", "1.0.0.+2", true},
        // Builds of 32768 and more are shown, and compared, as negative numbers.
        Pair{"1.2.-25536", "1.2.40000", true}, Pair{"1.2.-1", "1.2.0", true},
        Pair{"1.2.0", "1.2.-1", false},
        // An empty installed version has no part to compare.
        Pair{"", "1.0.0.0", false}, Pair{"", "", false}));

TEST(VersionRule, FewerOfferedPartsAreASubscriptError) {
  for (const char* offered : {"1.1", "1.0.0", "9", ""}) {
    try {
      IsNewer("1.0.0.0", offered);
      ADD_FAILURE() << offered;
    } catch (const base::Failure& failure) {
      EXPECT_EQ(failure.number(), 9) << offered;
    }
  }
}

TEST(VersionRule, EmptyOfferHasNoPartForAnInstalledOne) {
  EXPECT_THROW(IsNewer("N/A", ""), base::Failure);
}

TEST(LeadingNumber, IsWhatThePartBeginsWith) {
  EXPECT_EQ(LeadingNumber("12"), 12);
  EXPECT_EQ(LeadingNumber("  7 apples"), 7);
  EXPECT_EQ(LeadingNumber("-3x"), -3);
  EXPECT_EQ(LeadingNumber("+3"), 3);
}

TEST(LeadingNumber, CountsZeroWithoutOne) {
  for (const char* part : {"", " ", "x1", "+", "-", "+-5", "--5", "inf", "nan", "-inf"}) {
    EXPECT_EQ(LeadingNumber(part), 0) << part;
  }
}

TEST(LeadingNumber, BeyondADoubleIsAnOverflow) {
  try {
    LeadingNumber("1e999");
    ADD_FAILURE();
  } catch (const base::Failure& failure) {
    EXPECT_EQ(failure.number(), 6);
  }
}

}  // namespace
}  // namespace kitbay::catalog
