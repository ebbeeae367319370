#include <optional>

#include "contract/system/clock_contract.h"
#include "contract/system/desktop_contract.h"
#include "contract/system/elevation_contract.h"
#include "contract/system/file_system_object_contract.h"
#include "contract/system/files_contract.h"
#include "contract/system/libraries_contract.h"
#include "contract/system/registry_contract.h"
#include "contract/system/version_resource_contract.h"
#include "fakes/fake_clock.h"
#include "fakes/fake_elevation.h"
#include "fakes/fake_version_resource.h"
#include "fakes/memory_files.h"
#include "fakes/memory_registry.h"
#include "fakes/recording_desktop.h"
#include "fakes/recording_libraries.h"

namespace kitbay::contract {
namespace {

constexpr const char* kFolder = "C:\\Tests";
constexpr const char* kHelpers = "C:\\Helpers";

class MemoryFilesWorld : public FilesWorld {
 public:
  MemoryFilesWorld() { files_.AddFolder(kFolder); }
  platform::Files& files() override { return files_; }
  std::string folder() const override { return kFolder; }
  std::string OthersFolder() override {
    files_.AddFolder("C:\\Program Files\\Ovalink");
    return "C:\\Program Files\\Ovalink";
  }
  void SetReadOnly(const std::string& path) override { files_.SetReadOnly(path); }
  void SetLastModified(const std::string& path, const platform::LocalTime& time) override {
    files_.SetLastModified(path, time);
  }
  void HoldOpen(const std::string& path) override { files_.SetInUse(path); }
  void Hold(const std::string& path, Held how) override {
    using Hold = fakes::MemoryFiles::Hold;
    files_.SetHeld(path, how == Held::kReading   ? Hold::kReading
                         : how == Held::kWriting ? Hold::kWriting
                                                 : Hold::kLoaded);
  }
  void LetGo() override {
    for (const std::string& name : files_.Names(kFolder)) {
      files_.SetHeld(std::string(kFolder) + "\\" + name, fakes::MemoryFiles::Hold::kNone);
    }
  }
  void AddLibrary(const std::string& path) override { files_.AddFile(path, "a library"); }
  bool MakeLink(const std::string& path, const std::string& /*target*/) override {
    files_.AddFolder(path);
    files_.SetLink(path);
    return true;
  }
  std::vector<std::string> Names(const std::string& folder) const override {
    return files_.Names(folder);
  }

 private:
  fakes::MemoryFiles files_;
};

class MemoryFileSystemObjectWorld : public FileSystemObjectWorld {
 public:
  MemoryFileSystemObjectWorld() { files_.AddFolder(kFolder); }
  platform::FileSystemObject& object() override { return object_; }
  std::string folder() const override { return kFolder; }
  std::string Bytes(const std::string& path) const override {
    return files_.Bytes(path).value_or("(missing)");
  }
  void AddFile(const std::string& path, const std::string& bytes) override {
    files_.AddFile(path, bytes);
  }
  void SetReadOnly(const std::string& path, bool read_only) override {
    files_.SetReadOnly(path, read_only);
  }

 private:
  fakes::MemoryFiles files_;
  fakes::MemoryFileSystemObject object_{files_};
};

class MemoryRegistryWorld : public RegistryWorld {
 public:
  MemoryRegistryWorld() { registry_.AddKey(kPath); }
  platform::RegistryKeys& keys() override { return registry_; }
  std::string scratch() const override { return "Software\\Kitbay.Tests"; }
  std::string ReadOnlyMachineKey() override {
    registry_.AddKey("HKEY_LOCAL_MACHINE\\Software\\Kitbay.Tests");
    return "Software\\Kitbay.Tests";
  }
  void AddText(const std::string& name, const std::string& text) override {
    registry_.AddText(kPath, name, text);
  }
  void AddExpandableText(const std::string& name, const std::string& text) override {
    registry_.AddValue(kPath, name, text + std::string(1, '\0'), fakes::kExpandableTextType);
  }
  void AddBinary(const std::string& name, const std::string& bytes) override {
    registry_.AddValue(kPath, name, bytes, fakes::kBinaryType);
  }
  void AddNumber(const std::string& name, std::uint32_t number) override {
    const std::string bytes(reinterpret_cast<const char*>(&number), sizeof(number));
    registry_.AddValue(kPath, name, bytes, fakes::kNumberType);
  }

 private:
  static constexpr const char* kPath = "HKEY_CURRENT_USER\\Software\\Kitbay.Tests";
  fakes::MemoryRegistry registry_;
};

class FakeElevationWorld : public ElevationWorld {
 public:
  platform::Elevation& elevation() override { return elevation_; }
  void AnswerWith(platform::ElevationAnswer answer) override { elevation_.answer = answer; }
  int questions() const override { return elevation_.questions; }

 private:
  fakes::FakeElevation elevation_;
};

class FakeClockWorld : public ClockWorld {
 public:
  platform::Clock& clock() override { return clock_; }
  platform::LocalTime WallClock() const override { return kNow; }

 private:
  static constexpr platform::LocalTime kNow{2026, 3, 1, 8, 30, 0};
  fakes::FakeClock clock_{kNow};
};

class FakeVersionResourceWorld : public VersionResourceWorld {
 public:
  FakeVersionResourceWorld() { versions_.Add(folder() + "\\Größe 1.dll", 1, 2, 40000, 65535); }
  const platform::VersionResource& versions() override { return versions_; }
  std::string folder() const override { return kFolder; }

 private:
  fakes::FakeVersionResource versions_;
};

class RecordingDesktopWorld : public DesktopWorld {
 public:
  platform::Desktop& desktop() override { return desktop_; }
  platform::WindowHandle AddWindow(const std::string& caption, bool stays) override {
    const auto window = desktop_.AddWindow("Kitbay.Tests.Ä", caption);
    if (stays) {
      desktop_.IgnoreClose(window);
    }
    return window;
  }
  bool HasWindow(platform::WindowHandle window) const override {
    return desktop_.HasWindow(window);
  }
  platform::WindowHandle AddHangingWindow(const std::string& caption) override {
    return AddWindow(caption, true);
  }
  platform::WindowHandle AddAskingWindow(const std::string& caption) override {
    return AddWindow(caption, true);
  }
  void LetAnswer() override {}
  void AnswerNext(const std::string& title, const std::string& text, int answer) override {
    expected_ = "ShowMessage [" + text + "] [" + title + "] ";
    desktop_.AddAnswer(answer);
  }
  bool UserSawThem() override { return desktop_.calls().back().starts_with(expected_); }

 private:
  fakes::RecordingDesktop desktop_;
  std::string expected_;
};

class RecordingLibrariesWorld : public LibrariesWorld {
 public:
  RecordingLibrariesWorld() {
    constexpr const char* kFunction = "DllRegisterServer";
    libraries_.Add(folder() + "\\refusing ö.dll", {{kFunction, {0x80040201}}});
    libraries_.Add(folder() + "\\slow.dll", {{kFunction, {0, true}}});
    libraries_.Add(folder() + "\\mute.dll", {{"OvlMuteVersion", {1}}});
    libraries_.Add(folder() + "\\needy.dll", {{kFunction, {}}});
    libraries_.Need(folder() + "\\needy.dll", helpers());
    libraries_.AddUnloadable(folder() + "\\text.dll", {193, "Bad EXE format."});
  }
  platform::Libraries& libraries() override { return libraries_; }
  std::string folder() const override { return kFolder; }
  std::string helpers() const override { return kHelpers; }
  void LetReturn() override { libraries_.LetReturn(); }

 private:
  fakes::RecordingLibraries libraries_;
};

template <typename Base, typename World>
std::unique_ptr<Base> Make() {
  return std::make_unique<World>();
}

}  // namespace

INSTANTIATE_TEST_SUITE_P(Fake, ElevationContract,
                         testing::Values(&Make<ElevationWorld, FakeElevationWorld>));
INSTANTIATE_TEST_SUITE_P(Memory, FilesContract,
                         testing::Values(&Make<FilesWorld, MemoryFilesWorld>));
INSTANTIATE_TEST_SUITE_P(
    Memory, FileSystemObjectContract,
    testing::Values(&Make<FileSystemObjectWorld, MemoryFileSystemObjectWorld>));
INSTANTIATE_TEST_SUITE_P(Memory, RegistryContract,
                         testing::Values(&Make<RegistryWorld, MemoryRegistryWorld>));
INSTANTIATE_TEST_SUITE_P(Fake, ClockContract, testing::Values(&Make<ClockWorld, FakeClockWorld>));
INSTANTIATE_TEST_SUITE_P(Fake, VersionResourceContract,
                         testing::Values(&Make<VersionResourceWorld, FakeVersionResourceWorld>));
INSTANTIATE_TEST_SUITE_P(Recording, LibrariesContract,
                         testing::Values(&Make<LibrariesWorld, RecordingLibrariesWorld>));
INSTANTIATE_TEST_SUITE_P(Recording, DesktopContract,
                         testing::Values(&Make<DesktopWorld, RecordingDesktopWorld>));

}  // namespace kitbay::contract
