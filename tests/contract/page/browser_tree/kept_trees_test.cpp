#include <gmock/gmock.h>

#include <fstream>
#include <iterator>

#include "contract/page/browser_tree/tree_cases.h"

namespace kitbay::contract {
namespace {

std::vector<std::string> Lines(const std::string& text) {
  std::vector<std::string> lines;
  for (std::size_t at = 0; at < text.size();) {
    const std::size_t end = std::min(text.find('\n', at), text.size());
    lines.push_back(text.substr(at, end - at));
    at = end + 1;
  }
  return lines;
}

/// trees.json is what the browser is compared with, so it must be what the page in memory does now.
TEST(BrowserTree, KeptTreesAreThoseOfThePageInMemory) {
  std::ifstream file(KITBAY_KEPT_TREES, std::ios::binary);
  const std::string kept{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  const auto expected = Lines(kept);
  const auto actual = Lines(TreeCasesAsJson());
  ASSERT_FALSE(expected.empty()) << "cannot read " << KITBAY_KEPT_TREES;
  for (std::size_t i = 0; i < std::min(expected.size(), actual.size()); ++i) {
    ASSERT_EQ(actual[i], expected[i]) << "line " << i + 1 << " of trees.json; when the change is "
                                      << "meant, build the target update_browser_trees";
  }
  EXPECT_EQ(actual.size(), expected.size());
}

}  // namespace
}  // namespace kitbay::contract
