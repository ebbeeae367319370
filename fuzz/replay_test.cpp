// Gives each fuzz target its corpus, one input after another, without a fuzzer. If an input fails,
// the target's own checks or the sanitizers end the program.
#include <gtest/gtest.h>

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

extern "C" {
int FuzzManifest(const std::uint8_t* data, std::size_t size);
int FuzzPackageExpansion(const std::uint8_t* data, std::size_t size);
int FuzzSignature(const std::uint8_t* data, std::size_t size);
int FuzzSourceFile(const std::uint8_t* data, std::size_t size);
int FuzzTransfer(const std::uint8_t* data, std::size_t size);
}

namespace kitbay::fuzz {
namespace {

struct Target {
  const char* name;
  int (*run)(const std::uint8_t* data, std::size_t size);
};

void PrintTo(const Target& target, std::ostream* out) { *out << target.name; }

class Corpus : public testing::TestWithParam<Target> {};

TEST_P(Corpus, IsTakenByItsTarget) {
  int inputs = 0;
  const auto folder = std::filesystem::path(KITBAY_FUZZ_CORPUS) / GetParam().name;
  for (const auto& entry : std::filesystem::directory_iterator(folder)) {
    SCOPED_TRACE(entry.path());
    std::ifstream file(entry.path(), std::ios::binary);
    ASSERT_TRUE(file.is_open());
    const std::vector<char> bytes{std::istreambuf_iterator<char>(file), {}};
    EXPECT_EQ(GetParam().run(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size()), 0);
    ++inputs;
  }
  EXPECT_GT(inputs, 0);
}

INSTANTIATE_TEST_SUITE_P(Fuzz, Corpus,
                         testing::Values(Target{"manifest", FuzzManifest},
                                         Target{"package_expansion", FuzzPackageExpansion},
                                         Target{"signature", FuzzSignature},
                                         Target{"source_file", FuzzSourceFile},
                                         Target{"transfer", FuzzTransfer}),
                         [](const auto& test) { return std::string(test.param.name); });

}  // namespace
}  // namespace kitbay::fuzz
