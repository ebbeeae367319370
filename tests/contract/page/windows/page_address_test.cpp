#include "platform/win32/browser/page_address.h"

#include <gtest/gtest.h>

namespace kitbay::platform::win32 {
namespace {

constexpr const char* kPagePath = "C:\\Program Files\\Kitbay\\AddonUpdates.html";

TEST(PageAddress, APathIsItsOwnAddress) {
  EXPECT_TRUE(IsAddressOfFile(kPagePath, kPagePath));
  EXPECT_TRUE(IsAddressOfFile("c:/program files/kitbay/addonupdates.HTML", kPagePath));
}

TEST(PageAddress, AFileUrlNamesThePathWithAndWithoutEscapes) {
  EXPECT_TRUE(IsAddressOfFile("file:///C:/Program%20Files/Kitbay/AddonUpdates.html", kPagePath));
  EXPECT_TRUE(IsAddressOfFile("file:///C:/Program Files/Kitbay/AddonUpdates.html", kPagePath));
  EXPECT_TRUE(IsAddressOfFile("FILE:///c:/program%20files/kitbay/addonupdates.html", kPagePath));
  EXPECT_TRUE(IsAddressOfFile("file://C:\\Program Files\\Kitbay\\AddonUpdates.html", kPagePath));
  EXPECT_TRUE(
      IsAddressOfFile("file://localhost/C:/Program%20Files/Kitbay/AddonUpdates.html", kPagePath));
}

TEST(PageAddress, EscapesOfLettersBeyondAsciiAreUtf8) {
  EXPECT_TRUE(IsAddressOfFile("file:///C:/B%C3%BCro/p.html", "C:\\B\xC3\xBCro\\p.html"));
  EXPECT_TRUE(IsAddressOfFile("file:///C:/B\xC3\xBCro/p.html", "C:\\B\xC3\xBCro\\p.html"));
}

TEST(PageAddress, APercentSignInAPathIsNoEscape) {
  EXPECT_TRUE(IsAddressOfFile("C:\\50%41\\p.html", "C:\\50%41\\p.html"));
  EXPECT_FALSE(IsAddressOfFile("C:\\50%41\\p.html", "C:\\50A\\p.html"));
  EXPECT_TRUE(IsAddressOfFile("file:///C:/100%/p.html", "C:\\100%\\p.html"));
}

TEST(PageAddress, AFileOfAServerKeepsTheServer) {
  const char* path = "\\\\server\\share\\p.html";
  EXPECT_TRUE(IsAddressOfFile("file://server/share/p.html", path));
  EXPECT_TRUE(IsAddressOfFile("file://///server/share/p.html", path));
  EXPECT_FALSE(IsAddressOfFile("file://other/share/p.html", path));
  EXPECT_FALSE(IsAddressOfFile("file:///C:/share/p.html", path));
}

TEST(PageAddress, OtherAddressesAreNotThePage) {
  EXPECT_FALSE(IsAddressOfFile("", kPagePath));
  EXPECT_FALSE(IsAddressOfFile("about:blank", kPagePath));
  EXPECT_FALSE(IsAddressOfFile("http://update.example/AddonUpdates.html", kPagePath));
  EXPECT_FALSE(IsAddressOfFile("javascript:0", kPagePath));
  EXPECT_FALSE(IsAddressOfFile("file:///C:/Program%20Files/Kitbay/Other.html", kPagePath));
  EXPECT_FALSE(IsAddressOfFile("file:///D:/Program%20Files/Kitbay/AddonUpdates.html", kPagePath));
  EXPECT_FALSE(
      IsAddressOfFile("file:///C:/Program%20Files/Kitbay/AddonUpdates.html#top", kPagePath));
  EXPECT_FALSE(IsAddressOfFile("file:///C:/Program%20Files/Kitbay/AddonUpdates.html?a", kPagePath));
}

}  // namespace
}  // namespace kitbay::platform::win32
