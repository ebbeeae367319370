#include "update/source_address.h"

#include <gtest/gtest.h>

#include <ostream>
#include <string>

namespace kitbay::update {
namespace {

struct Split {
  const char* source;
  const char* server;
  const char* file_path;
};

void PrintTo(const Split& split, std::ostream* out) { *out << split.source; }

class SourceSplitting : public testing::TestWithParam<Split> {};

TEST_P(SourceSplitting, IsAtTheFirstSlash) {
  const Address address = SplitSource(GetParam().source);
  EXPECT_EQ(address.server, GetParam().server);
  EXPECT_EQ(address.file_path, GetParam().file_path);
}

INSTANTIATE_TEST_SUITE_P(
    Sources, SourceSplitting,
    testing::Values(Split{"updates.example/components.xml", "updates.example", "/components.xml"},
                    Split{"updates.example/a/b/c.xml", "updates.example", "/a/b/c.xml"},
                    Split{"updates.example:8080/a.xml", "updates.example:8080", "/a.xml"},
                    Split{"[::1]:8080/a.xml", "[::1]:8080", "/a.xml"},
                    // With a scheme, the scheme and its colon become the server.
                    Split{"https://updates.example/a.xml", "https:", "//updates.example/a.xml"},
                    Split{"http://h/a", "http:", "//h/a"},
                    // Without a slash, both are the whole text.
                    Split{"updates.example", "updates.example", "updates.example"},
                    Split{"", "", ""}, Split{"a\\b.xml", "a\\b.xml", "a\\b.xml"},
                    Split{"updates.example/", "updates.example", "/"},
                    Split{"updates.example//", "updates.example", "//"},
                    Split{"/a.xml", "", "/a.xml"}, Split{"/", "", "/"},
                    Split{"//host/a.xml", "", "//host/a.xml"},
                    Split{"h/a.xml?x=1/2", "h", "/a.xml?x=1/2"},
                    Split{"h<i>/a&b.xml", "h<i>", "/a&b.xml"}, Split{" h /a b", " h ", "/a b"}));

}  // namespace
}  // namespace kitbay::update
