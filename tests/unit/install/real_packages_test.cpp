#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <stdlib.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <ostream>
#include <string>

#include "fakes/disk_files.h"
#include "fakes/recording_error_log.h"
#include "install/package_expansion.h"

// Archives made by other programs, as Debian ships them: Kitbay expands them as unzip does, except
// for empty files and folders.
namespace kitbay::install {
namespace {

namespace fs = std::filesystem;

class TemporaryFolder {
 public:
  TemporaryFolder() {
    std::string name = (fs::temp_directory_path() / "kitbay-packages-XXXXXX").string();
    if (mkdtemp(name.data()) != nullptr) {
      path_ = name;
    }
  }
  ~TemporaryFolder() { fs::remove_all(path_); }
  TemporaryFolder(const TemporaryFolder&) = delete;
  TemporaryFolder& operator=(const TemporaryFolder&) = delete;
  const fs::path& path() const { return path_; }

 private:
  fs::path path_;
};

using Tree = std::map<std::string, std::string>;

/// Every path below `folder`, with the bytes of files, and "/" for a folder that is not empty.
Tree TreeOf(const fs::path& folder, bool with_empty) {
  Tree tree;
  for (const fs::directory_entry& entry : fs::recursive_directory_iterator(folder)) {
    const std::string name = entry.path().lexically_relative(folder).string();
    if (entry.is_directory()) {
      if (with_empty) {
        tree[name] = "/";
      }
      continue;
    }
    std::ifstream file(entry.path(), std::ios::binary);
    const std::string bytes(std::istreambuf_iterator<char>(file), {});
    if (!bytes.empty() || with_empty) {
      tree[name] = bytes;
      for (fs::path above = fs::path(name).parent_path(); !above.empty();
           above = above.parent_path()) {
        tree[above.string()] = "/";
      }
    }
  }
  return tree;
}

/// The file in a folder whose name has this start; a version follows.
struct Package {
  const char* folder;
  const char* beginning;

  fs::path Path() const {
    for (const fs::directory_entry& entry : fs::directory_iterator(folder)) {
      if (entry.path().filename().string().starts_with(beginning)) {
        return entry.path();
      }
    }
    return fs::path(folder) / beginning;
  }
};

void PrintTo(const Package& package, std::ostream* out) { *out << package.beginning; }

class RealPackages : public testing::TestWithParam<Package> {};

TEST_P(RealPackages, ExpandToWhatUnzipMakesOfThem) {
  const fs::path package = GetParam().Path();
  ASSERT_TRUE(fs::exists(package)) << "tools/setup installs what it comes with";
  const TemporaryFolder folder;
  const fs::path expected = folder.path() / "expected";
  fs::create_directory(folder.path() / "found");
  fs::copy_file(package, folder.path() / "package.zip");
  const std::string unzip =
      "unzip -qq -o '" + package.string() + "' -d '" + expected.string() + "'";
  ASSERT_EQ(std::system(unzip.c_str()), 0);  // NOLINT(concurrency-mt-unsafe): nothing else runs

  fakes::RecordingErrorLog log;
  fakes::DiskFiles files(folder.path().string());
  std::string destination = "C:\\found";
  EXPECT_TRUE(PackageExpansion(log, files).ExpandZipFile(destination, "C:\\package.zip"));
  EXPECT_THAT(log.entries, testing::IsEmpty());

  const Tree wanted = TreeOf(expected, false);
  const Tree found = TreeOf(folder.path() / "found", true);
  EXPECT_GT(wanted.size(), 5U);
  EXPECT_EQ(found.size(), wanted.size());
  for (const auto& [name, bytes] : wanted) {
    const auto at = found.find(name);
    ASSERT_TRUE(at != found.end()) << name;
    EXPECT_TRUE(at->second == bytes) << name;
  }
}

INSTANTIATE_TEST_SUITE_P(Debian, RealPackages,
                         testing::Values(Package{"/usr/share/java", "hamcrest.jar"},
                                         Package{"/usr/share/java", "jaxen.jar"},
                                         Package{"/usr/share/java", "jsr305.jar"},
                                         Package{"/usr/share/python-wheels", "setuptools-"},
                                         Package{"/usr/share/python-wheels", "wheel-"},
                                         Package{"/usr/lib/libreoffice/share/config",
                                                 "images_sukapura.zip"}));

}  // namespace
}  // namespace kitbay::install
