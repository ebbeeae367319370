// kitbay_bench_make_packages FOLDER
// Creates small.zip, 5 000 files of up to 8 KB in 200 folders, large.zip, 20 files of 20 MB, and
// stored.zip, these files without compression.
// Their text compresses to about a third, as programs and texts do, and is the same in every run.
#include <minizip/zip.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

/// Text of made-up words, from a generator with a fixed seed.
class Text {
 public:
  std::string Take(std::size_t length) {
    std::string text;
    text.reserve(length + kLongestWord);
    while (text.size() < length) {
      // A few words are frequent, many are rare.
      const std::uint32_t word = Next() % (1U + Next() % 4000U);
      AppendWord(text, word);
    }
    text.resize(length);
    return text;
  }

  std::uint32_t Next() {
    state_ = state_ * 6364136223846793005U + 1442695040888963407U;
    return static_cast<std::uint32_t>(state_ >> 33U);
  }

 private:
  static constexpr std::size_t kLongestWord = 16;

  void AppendWord(std::string& text, std::uint32_t word) {
    std::uint32_t letters = word * 2654435761U;
    const std::size_t length = 3 + letters % 8;
    for (std::size_t i = 0; i < length; ++i) {
      letters = letters * 1664525U + 1013904223U;
      text.push_back(static_cast<char>('a' + (letters >> 16U) % 26));
    }
    text.push_back(Next() % 12 == 0 ? '\n' : ' ');
  }

  std::uint64_t state_ = 1;
};

void Demand(int result) {
  if (result != ZIP_OK) {
    std::fputs("the archive cannot be written\n", stderr);
    std::exit(1);
  }
}

void Add(zipFile archive, const std::string& name, const std::string& bytes,
         int method = Z_DEFLATED) {
  const zip_fileinfo info{};
  Demand(zipOpenNewFileInZip(archive, name.c_str(), &info, nullptr, 0, nullptr, 0, nullptr, method,
                             Z_DEFAULT_COMPRESSION));
  Demand(zipWriteInFileInZip(archive, bytes.data(), static_cast<unsigned>(bytes.size())));
  Demand(zipCloseFileInZip(archive));
}

}  // namespace

int main(int count, char** words) {
  if (count != 2) {
    std::fputs("usage: kitbay_bench_make_packages FOLDER\n", stderr);
    return 2;
  }
  const std::string folder = words[1];
  Text text;
  zipFile archive = zipOpen((folder + "/small.zip").c_str(), APPEND_STATUS_CREATE);
  for (int file = 0; file < 5000; ++file) {
    const int in = file / 25;
    Add(archive,
        "part" + std::to_string(in / 20) + "/folder" + std::to_string(in % 20) + "/file" +
            std::to_string(file) + ".txt",
        text.Take(1 + text.Next() % 8192));
  }
  Demand(zipClose(archive, nullptr));
  archive = zipOpen((folder + "/large.zip").c_str(), APPEND_STATUS_CREATE);
  zipFile stored = zipOpen((folder + "/stored.zip").c_str(), APPEND_STATUS_CREATE);
  for (int file = 0; file < 20; ++file) {
    const std::string name = "file" + std::to_string(file) + ".bin";
    const std::string bytes = text.Take(20'000'000);
    Add(archive, name, bytes);
    Add(stored, name, bytes, 0);
  }
  Demand(zipClose(archive, nullptr));
  Demand(zipClose(stored, nullptr));
  return 0;
}
