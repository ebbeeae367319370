#include <windows.h>

#include <gmock/gmock.h>
#include <shellapi.h>

#include <span>
#include <string>
#include <vector>

#include "platform/win32/system/utf.h"
#include "platform/win32/win32_platform.h"

// What Kitbay.exe, named on the command line, says about itself.
namespace kitbay::contract {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

std::wstring& ProgramPath() {
  static std::wstring path;
  return path;
}

/// Kitbay.exe, loaded only for its resources.
class ProgramFile : public ::testing::Test {
 protected:
  void SetUp() override {
    module_ = LoadLibraryExW(ProgramPath().c_str(), nullptr,
                             LOAD_LIBRARY_AS_DATAFILE | LOAD_LIBRARY_AS_IMAGE_RESOURCE);
    ASSERT_NE(module_, nullptr) << GetLastError();
  }
  void TearDown() override { FreeLibrary(module_); }

  /// The bytes of resource number 1 of that type; empty if it does not exist.
  std::span<const BYTE> FirstResource(const wchar_t* type) const {
    const HRSRC found = FindResourceW(module_, MAKEINTRESOURCEW(1), type);
    if (found == nullptr) {
      return {};
    }
    const auto* bytes = static_cast<const BYTE*>(LockResource(LoadResource(module_, found)));
    return {bytes, SizeofResource(module_, found)};
  }

 private:
  HMODULE module_ = nullptr;
};

std::vector<BYTE> VersionOf(const std::wstring& path) {
  std::vector<BYTE> version(GetFileVersionInfoSizeW(path.c_str(), nullptr));
  if (version.empty() ||
      !GetFileVersionInfoW(path.c_str(), 0, static_cast<DWORD>(version.size()), version.data())) {
    version.clear();
  }
  return version;
}

std::string VersionText(const std::vector<BYTE>& version, const std::wstring& name) {
  void* text = nullptr;
  UINT length = 0;
  if (!VerQueryValueW(version.data(), (L"\\StringFileInfo\\040904B0\\" + name).c_str(), &text,
                      &length)) {
    return "(missing)";
  }
  return platform::win32::ToUtf8(static_cast<const wchar_t*>(text));
}

std::string FixedVersion(const std::vector<BYTE>& version) {
  void* fixed = nullptr;
  UINT length = 0;
  if (!VerQueryValueW(version.data(), L"\\", &fixed, &length)) {
    return "(missing)";
  }
  const auto* info = static_cast<const VS_FIXEDFILEINFO*>(fixed);
  return std::to_string(HIWORD(info->dwFileVersionMS)) + "." +
         std::to_string(LOWORD(info->dwFileVersionMS)) + "." +
         std::to_string(HIWORD(info->dwFileVersionLS)) + "." +
         std::to_string(LOWORD(info->dwFileVersionLS));
}

TEST_F(ProgramFile, CarriesTheVersionOfTheProject) {
  const std::vector<BYTE> version = VersionOf(ProgramPath());
  ASSERT_FALSE(version.empty());
  EXPECT_EQ(FixedVersion(version), KITBAY_VERSION ".0");
  EXPECT_EQ(VersionText(version, L"FileVersion"), KITBAY_VERSION ".0");
  EXPECT_EQ(VersionText(version, L"ProductVersion"), KITBAY_VERSION ".0");
  EXPECT_EQ(VersionText(version, L"ProductName"), "Kitbay");
  EXPECT_EQ(VersionText(version, L"OriginalFilename"), "Kitbay.exe");
  EXPECT_EQ(VersionText(version, L"FileDescription"), "Component manager of the Ovalink suite");
}

TEST_F(ProgramFile, CarriesItsIconInEverySizeThatWindowsShows) {
  const std::span<const BYTE> group = FirstResource(RT_GROUP_ICON);
  constexpr std::size_t kHead = 6;
  constexpr std::size_t kEntry = 14;
  ASSERT_GT(group.size(), kHead);
  std::vector<int> widths;
  for (std::size_t at = kHead; at + kEntry <= group.size(); at += kEntry) {
    widths.push_back(group[at] == 0 ? 256 : group[at]);  // a byte cannot hold 256
  }
  EXPECT_THAT(widths, ElementsAre(16, 20, 24, 32, 40, 48, 64, 256));
}

TEST_F(ProgramFile, ItsIconIsTheOneThatTheShellShows) {
  HICON large = nullptr;
  HICON small = nullptr;
  EXPECT_EQ(ExtractIconExW(ProgramPath().c_str(), 0, &large, &small, 1), 2U);
  EXPECT_NE(large, nullptr);
  EXPECT_NE(small, nullptr);
  DestroyIcon(large);
  DestroyIcon(small);
}

TEST_F(ProgramFile, TellsWindowsHowItWantsToBeRun) {
  const std::span<const BYTE> bytes = FirstResource(RT_MANIFEST);
  const std::string manifest(bytes.begin(), bytes.end());
  EXPECT_THAT(manifest, HasSubstr("name=\"Kitbay\" version=\"" KITBAY_VERSION ".0\""));
  EXPECT_THAT(manifest, HasSubstr(">UTF-8</activeCodePage>"));
  EXPECT_THAT(manifest, HasSubstr("\"Microsoft.Windows.Common-Controls\" version=\"6.0.0.0\""));
  EXPECT_THAT(manifest, HasSubstr(">PerMonitorV2, PerMonitor</dpiAwareness>"));
  EXPECT_THAT(manifest, HasSubstr(">true/pm</dpiAware>"));
  EXPECT_THAT(manifest, HasSubstr("level=\"asInvoker\" uiAccess=\"false\""));
  for (const char* windows : {"{35138b9a-5d96-4fbd-8e2d-a2440225f93a}",     // 7
                              "{4a2f28e3-53b9-4441-ba9c-d69d4a4a6e38}",     // 8
                              "{1f676c76-80e1-4239-95bb-83d0f6d0da78}",     // 8.1
                              "{8e0f7a12-bfb3-4fe8-b9a5-48fd50a15a9a}"}) {  // 10 and 11
    EXPECT_THAT(manifest, HasSubstr(std::string("<supportedOS Id=\"") + windows));
  }
}

// Nothing here shows whether the system obeys: Wine never replaces a window by a ghost.
TEST_F(ProgramFile, CanTellWindowsNotToShowGhosts) {
  const std::string bytes =
      platform::win32::MakeFiles()->Read(platform::win32::ToUtf8(ProgramPath()));
  EXPECT_THAT(bytes, HasSubstr("DisableProcessWindowsGhosting"));
}

}  // namespace
}  // namespace kitbay::contract

// kitbay_contract_program Kitbay.exe
int main(int argc, char** argv) {
  testing::InitGoogleMock(&argc, argv);
  if (argc != 2) {
    return 2;
  }
  kitbay::contract::ProgramPath() = kitbay::platform::win32::ToUtf16(argv[1]);
  return RUN_ALL_TESTS();
}
