#include "catalog/package_digest.h"

#include <gmock/gmock.h>

#include "base/failure.h"
#include "fakes/memory_files.h"

namespace kitbay::catalog {
namespace {

// Of "abc", from FIPS 180-2.
constexpr const char* kSha256 = "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad";

std::string Refusal(const std::string& bytes, const PackageDigest& digest) {
  fakes::MemoryFiles files;
  files.AddFile("C:\\p.zip", bytes);
  try {
    CheckDigest(*files.Open("C:\\p.zip"), digest);
    return "";
  } catch (const base::Failure& failure) {
    EXPECT_EQ(failure.number(), -2146893822);  // NTE_BAD_HASH
    return failure.description();
  }
}

TEST(PackageDigests, MatchTheVeryFile) { EXPECT_EQ(Refusal("abc", {"m.xml", "3", kSha256}), ""); }

TEST(PackageDigests, MatchNoOtherFileOfThatSize) {
  EXPECT_EQ(Refusal("abd", {"m.xml", "3", kSha256}),
            "m.xml announces a package of another SHA-256");
}

TEST(PackageDigests, MatchNoFileOfAnotherSize) {
  EXPECT_EQ(Refusal("abc", {"m.xml", "4", kSha256}),
            "m.xml announces 4 bytes, and the package has 3");
  EXPECT_EQ(Refusal("abc", {"m.xml", "+3", kSha256}),
            "m.xml announces +3 bytes, and the package has 3");
}

TEST(PackageDigests, ThatLackSomethingMatchNothing) {
  const std::string text = "m.xml does not say the size and the SHA-256 of the package";
  EXPECT_EQ(Refusal("abc", {"m.xml", "", kSha256}), text);
  EXPECT_EQ(Refusal("abc", {"m.xml", "3", ""}), text);
}

TEST(PackageDigests, HaveASizeIfTheyAnnounceAWholeNumber) {
  EXPECT_EQ(SizeIn({"m.xml", "3", kSha256}), 3U);
  EXPECT_EQ(SizeIn({"m.xml", "5000000000", ""}), 5000000000U);
  for (const char* size : {"", "-1", "+3", "3 ", "3.0", "18446744073709551616"}) {
    EXPECT_EQ(SizeIn({"m.xml", size, kSha256}), std::nullopt) << size;
  }
}

TEST(PackageDigests, OfALargeFileAreOfAllOfIt) {
  fakes::MemoryFiles files;
  files.AddFile("C:\\p.zip", std::string(1'000'000, 'a'));
  // Of a million times "a", from FIPS 180-2.
  EXPECT_EQ(Sha256Of(*files.Open("C:\\p.zip")),
            "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
}

TEST(PackageDigests, AreReadFromAnEntry) {
  pugi::xml_document document;
  document.load_string("<addon><size> 12 </size><sha256>ABCD</sha256></addon>");
  const PackageDigest digest = ReadDigest("m.xml", document.first_child());
  EXPECT_EQ(digest.manifest, "m.xml");
  EXPECT_EQ(digest.size, "12");
  EXPECT_EQ(digest.sha256, "abcd");
  const PackageDigest none = ReadDigest("m.xml", document);
  EXPECT_EQ(none.size + none.sha256, "");
}

}  // namespace
}  // namespace kitbay::catalog
