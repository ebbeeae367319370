#include <windows.h>
// After windows.h, which it needs.
#include <sddl.h>

#include <memory>
#include <string>
#include <vector>

#include "contract/system/clock_contract.h"
#include "contract/system/desktop_contract.h"
#include "contract/system/files_contract.h"
#include "contract/system/libraries_contract.h"
#include "contract/system/registry_contract.h"
#include "contract/system/version_resource_contract.h"
#include "contract/system/win32/folder_link.h"
#include "contract/system/win32/message_box_user.h"
#include "contract/system/win32/scratch_folder.h"
#include "contract/system/win32/test_window.h"
#include "contract/system/win32/troubled_libraries.h"
#include "platform/win32/system/handles.h"
#include "platform/win32/system/system_path.h"
#include "platform/win32/system/utf.h"
#include "platform/win32/win32_platform.h"

namespace kitbay::contract {
namespace {

using platform::win32::ToSystemPath;
using platform::win32::ToUtf16;
using platform::win32::ToUtf8;
using platform::win32::UniqueFile;
using platform::win32::UniqueFind;
using platform::win32::UniqueRegistryKey;

class Win32FilesWorld : public FilesWorld {
 public:
  Win32FilesWorld() { SetCurrentDirectoryW(L"C:\\"); }
  platform::Files& files() override { return *files_; }
  std::string folder() const override { return folder_.path(); }
  // Nobody may change it, not even the user who runs everything else.
  std::string OthersFolder() override { return "Z:\\sys\\kernel"; }
  void SetReadOnly(const std::string& path) override {
    ASSERT_TRUE(SetFileAttributesW(ToSystemPath(path).c_str(), FILE_ATTRIBUTE_READONLY));
  }
  void SetLastModified(const std::string& path, const platform::LocalTime& time) override {
    const SYSTEMTIME local{static_cast<WORD>(time.year),
                           static_cast<WORD>(time.month),
                           0,
                           static_cast<WORD>(time.day),
                           static_cast<WORD>(time.hour),
                           static_cast<WORD>(time.minute),
                           static_cast<WORD>(time.second),
                           0};
    SYSTEMTIME utc{};
    FILETIME file_time{};
    ASSERT_TRUE(TzSpecificLocalTimeToSystemTime(nullptr, &local, &utc));
    ASSERT_TRUE(SystemTimeToFileTime(&utc, &file_time));
    const UniqueFile file(CreateFileW(ToSystemPath(path).c_str(), FILE_WRITE_ATTRIBUTES, 0, nullptr,
                                      OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(SetFileTime(file.get(), nullptr, nullptr, &file_time));
  }
  void HoldOpen(const std::string& path) override {
    held_.emplace_back(CreateFileW(ToSystemPath(path).c_str(), GENERIC_READ, 0, nullptr,
                                   OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(held_.back());
  }
  void Hold(const std::string& path, Held how) override {
    const std::wstring system_path = ToSystemPath(path);
    if (how == Held::kLoaded) {
      loaded_.emplace_back(LoadLibraryW(system_path.c_str()));
      ASSERT_TRUE(loaded_.back());
      return;
    }
    const bool writes = how == Held::kWriting;
    held_.emplace_back(CreateFileW(system_path.c_str(), writes ? GENERIC_WRITE : GENERIC_READ,
                                   FILE_SHARE_READ | (writes ? FILE_SHARE_WRITE : 0), nullptr,
                                   OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(held_.back());
  }
  void LetGo() override {
    held_.clear();
    loaded_.clear();
  }
  void AddLibrary(const std::string& path) override {
    files_->Create(path, files_->Read(platform::win32::FindProgramPlace().folder +
                                      "\\kitbay_contract_plain.dll"));
  }
  bool MakeLink(const std::string& path, const std::string& target) override {
    return MakeFolderLink(ToUtf16(path), ToUtf16(target));
  }
  std::vector<std::string> Names(const std::string& folder) const override {
    std::vector<std::string> names;
    WIN32_FIND_DATAW entry{};
    const UniqueFind listing(FindFirstFileW((ToUtf16(folder) + L"\\*").c_str(), &entry));
    do {
      const std::string name = ToUtf8(entry.cFileName);
      if (listing && name != "." && name != "..") {
        names.push_back(name);
      }
    } while (listing && FindNextFileW(listing.get(), &entry));
    return names;
  }

 private:
  ScratchFolder folder_;
  std::unique_ptr<platform::Files> files_ = platform::win32::MakeFiles();
  std::vector<UniqueFile> held_;
  std::vector<platform::win32::UniqueModule> loaded_;
};

class Win32RegistryWorld : public RegistryWorld {
 public:
  Win32RegistryWorld() {
    RegCreateKeyExW(HKEY_CURRENT_USER, ToUtf16(scratch()).c_str(), 0, nullptr,
                    REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr, key_.put(), nullptr);
  }
  ~Win32RegistryWorld() override {
    key_.reset();
    RegDeleteTreeW(HKEY_CURRENT_USER, ToUtf16(scratch()).c_str());
    RegDeleteTreeW(HKEY_LOCAL_MACHINE, ToUtf16(scratch()).c_str());
  }
  platform::RegistryKeys& keys() override { return *keys_; }
  std::string scratch() const override {
    return "Software\\Kitbay.Tests\\" + std::to_string(GetCurrentProcessId());
  }
  std::string ReadOnlyMachineKey() override {
    UniqueRegistryKey key;
    PSECURITY_DESCRIPTOR descriptor = nullptr;
    // Everybody may read, and may delete the key again.
    EXPECT_TRUE(ConvertStringSecurityDescriptorToSecurityDescriptorW(
        L"D:P(A;;KR;;;WD)(A;;SD;;;WD)", SDDL_REVISION_1, &descriptor, nullptr));
    EXPECT_EQ(RegCreateKeyExW(HKEY_LOCAL_MACHINE, ToUtf16(scratch()).c_str(), 0, nullptr,
                              REG_OPTION_NON_VOLATILE, KEY_ALL_ACCESS, nullptr, key.put(), nullptr),
              ERROR_SUCCESS);
    EXPECT_EQ(RegSetKeySecurity(key.get(), DACL_SECURITY_INFORMATION, descriptor), ERROR_SUCCESS);
    LocalFree(descriptor);
    return scratch();
  }
  void AddText(const std::string& name, const std::string& text) override {
    Add(name, REG_SZ, ToUtf16(text));
  }
  void AddExpandableText(const std::string& name, const std::string& text) override {
    Add(name, REG_EXPAND_SZ, ToUtf16(text));
  }
  void AddBinary(const std::string& name, const std::string& bytes) override {
    Add(name, REG_BINARY, bytes.data(), bytes.size());
  }
  void AddNumber(const std::string& name, std::uint32_t number) override {
    Add(name, REG_DWORD, &number, sizeof(number));
  }

 private:
  void Add(const std::string& name, DWORD type, const std::wstring& text) {
    Add(name, type, text.c_str(), (text.size() + 1) * sizeof(wchar_t));
  }
  void Add(const std::string& name, DWORD type, const void* data, std::size_t size) {
    ASSERT_EQ(RegSetValueExW(key_.get(), ToUtf16(name).c_str(), 0, type,
                             static_cast<const BYTE*>(data), static_cast<DWORD>(size)),
              ERROR_SUCCESS);
  }

  UniqueRegistryKey key_;
  std::unique_ptr<platform::RegistryKeys> keys_ = platform::win32::MakeRegistryKeys();
};

class Win32ClockWorld : public ClockWorld {
 public:
  platform::Clock& clock() override { return *clock_; }
  platform::LocalTime WallClock() const override {
    FILETIME now{};
    FILETIME local_now{};
    SYSTEMTIME local{};
    GetSystemTimeAsFileTime(&now);
    FileTimeToLocalFileTime(&now, &local_now);
    FileTimeToSystemTime(&local_now, &local);
    return {local.wYear, local.wMonth, local.wDay, local.wHour, local.wMinute, local.wSecond};
  }

 private:
  std::unique_ptr<platform::Clock> clock_ = platform::win32::MakeClock();
};

class Win32VersionResourceWorld : public VersionResourceWorld {
 public:
  Win32VersionResourceWorld() {
    const std::string built = platform::win32::FindProgramPlace().folder;
    const auto files = platform::win32::MakeFiles();
    const std::string versioned = files->Read(built + "\\kitbay_contract_versioned.dll");
    files->Create(folder() + "\\Größe 1.dll", versioned);
    files->Create(folder() + "\\cut.dll", versioned.substr(0, 1024));
    files->Create(folder() + "\\plain.dll", files->Read(built + "\\kitbay_contract_plain.dll"));
    files->Create(folder() + "\\text.dll", "no library");
  }
  const platform::VersionResource& versions() override { return *versions_; }
  std::string folder() const override { return folder_.path(); }

 private:
  ScratchFolder folder_;
  std::unique_ptr<platform::VersionResource> versions_ = platform::win32::MakeVersionResource();
};

class Win32DesktopWorld : public DesktopWorld {
 public:
  platform::Desktop& desktop() override { return *desktop_; }
  platform::WindowHandle AddWindow(const std::string& caption, bool stays) override {
    return Add(caption, stays ? OnClose::kStays : OnClose::kCloses);
  }
  platform::WindowHandle AddHangingWindow(const std::string& caption) override {
    return Add(caption, OnClose::kHangs);
  }
  platform::WindowHandle AddAskingWindow(const std::string& caption) override {
    return Add(caption, OnClose::kAsks);
  }
  void LetAnswer() override {
    for (const auto& window : windows_) {
      window->LetAnswer();
    }
  }
  bool HasWindow(platform::WindowHandle window) const override {
    return IsWindow(reinterpret_cast<HWND>(window.value));
  }
  void AnswerNext(const std::string& title, const std::string& text, int answer) override {
    user_.reset();
    user_ = std::make_unique<MessageBoxUser>(title, text, answer);
  }
  bool UserSawThem() override { return user_->SawThem(); }

 private:
  platform::WindowHandle Add(const std::string& caption, OnClose on_close) {
    windows_.push_back(std::make_unique<TestWindow>(caption, on_close));
    return {reinterpret_cast<std::uintptr_t>(windows_.back()->handle())};
  }

  std::unique_ptr<platform::Desktop> desktop_ = platform::win32::MakeDesktop();
  std::vector<std::unique_ptr<TestWindow>> windows_;
  std::unique_ptr<MessageBoxUser> user_;
};

class Win32LibrariesWorld : public LibrariesWorld {
 public:
  Win32LibrariesWorld() {
    CopyTroubledLibrary("OvlRefusing", folder() + "\\refusing ö.dll");
    CopyTroubledLibrary("OvlSlow", folder() + "\\slow.dll");
    CopyTroubledLibrary("OvlMute", folder() + "\\mute.dll");
    CopyTroubledLibrary("OvlNeedy", folder() + "\\needy.dll");
    CopyTroubledLibrary("OvlHelper", helpers() + "\\OvlHelper.dll");
    platform::win32::MakeFiles()->Create(folder() + "\\text.dll", "no library");
  }
  platform::Libraries& libraries() override { return *libraries_; }
  std::string folder() const override { return folder_.path(); }
  std::string helpers() const override { return helpers_.path(); }
  void LetReturn() override { slow_.LetReturn(); }

 private:
  ScratchFolder folder_;
  ScratchFolder helpers_;
  SlowLibrary slow_;
  std::unique_ptr<platform::Libraries> libraries_ = platform::win32::MakeLibraries();
};

template <typename Base, typename World>
std::unique_ptr<Base> Make() {
  return std::make_unique<World>();
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Win32, FilesContract, testing::Values(&Make<FilesWorld, Win32FilesWorld>));
INSTANTIATE_TEST_SUITE_P(Win32, RegistryContract,
                         testing::Values(&Make<RegistryWorld, Win32RegistryWorld>));
INSTANTIATE_TEST_SUITE_P(Win32, ClockContract, testing::Values(&Make<ClockWorld, Win32ClockWorld>));
INSTANTIATE_TEST_SUITE_P(Win32, VersionResourceContract,
                         testing::Values(&Make<VersionResourceWorld, Win32VersionResourceWorld>));
INSTANTIATE_TEST_SUITE_P(Win32, LibrariesContract,
                         testing::Values(&Make<LibrariesWorld, Win32LibrariesWorld>));
INSTANTIATE_TEST_SUITE_P(Win32, DesktopContract,
                         testing::Values(&Make<DesktopWorld, Win32DesktopWorld>));

}  // namespace kitbay::contract
