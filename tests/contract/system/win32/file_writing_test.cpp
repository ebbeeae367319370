#include <gmock/gmock.h>
#include <windows.h>

#include <cstdint>
#include <memory>
#include <string>
#include <vector>

#include "contract/system/win32/scratch_folder.h"
#include "contract/windows/replaced_import.h"
#include "platform/win32/system/handles.h"
#include "platform/win32/system/utf.h"
#include "platform/win32/win32_platform.h"

// What a change of a file requests from the system. Observed at the calls themselves, because
// otherwise only a power cut, or another program at that very moment, would show it.
namespace kitbay::platform::win32 {
namespace {

using contract::ReplacedImport;
using contract::ScratchFolder;
using testing::ElementsAre;

constexpr DWORD kShareAll = FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE;

/// Watches the calls by which files are written. Only one may exist at a time.
class WatchedWriting {
 public:
  WatchedWriting() { watching_ = this; }
  ~WatchedWriting() { watching_ = nullptr; }
  WatchedWriting(const WatchedWriting&) = delete;
  WatchedWriting& operator=(const WatchedWriting&) = delete;

  /// A file that another program tries to open at each call, and how.
  std::wstring intruder_path;
  DWORD intruder_access = GENERIC_READ;

  std::vector<std::string> calls;
  std::vector<DWORD> intruder_errors;

 private:
  static WINBOOL WINAPI Write(HANDLE file, LPCVOID bytes, DWORD size, LPDWORD written,
                              LPOVERLAPPED place) {
    watching_->Note("write");
    return watching_->write_.original(::WriteFile)(file, bytes, size, written, place);
  }
  static WINBOOL WINAPI Flush(HANDLE file) {
    watching_->Note("flush");
    return watching_->flush_.original(::FlushFileBuffers)(file);
  }
  static WINBOOL WINAPI Move(LPCWSTR from, LPCWSTR to, DWORD flags) {
    watching_->Note("move " + std::to_string(flags));
    return watching_->move_.original(::MoveFileExW)(from, to, flags);
  }

  void Note(const std::string& call) {
    calls.push_back(call);
    if (intruder_path.empty()) {
      return;
    }
    const UniqueFile file(CreateFileW(intruder_path.c_str(), intruder_access, kShareAll, nullptr,
                                      OPEN_EXISTING, 0, nullptr));
    intruder_errors.push_back(file ? ERROR_SUCCESS : GetLastError());
  }

  static inline WatchedWriting* watching_ = nullptr;
  ReplacedImport write_{"WriteFile", reinterpret_cast<void*>(&Write)};
  ReplacedImport flush_{"FlushFileBuffers", reinterpret_cast<void*>(&Flush)};
  ReplacedImport move_{"MoveFileExW", reinterpret_cast<void*>(&Move)};
};

class Win32FileWriting : public testing::Test {
 protected:
  std::string In(const std::string& name) const { return folder_.path() + "\\" + name; }

  /// The path of a replacement's temporary file.
  std::string Temporary(int number) const {
    return In("~kb" + std::to_string(GetCurrentProcessId()) + "-" + std::to_string(number) +
              ".tmp");
  }

  ScratchFolder folder_;
  std::unique_ptr<Files> files_ = MakeFiles();
};

TEST_F(Win32FileWriting, AReplacementIsOnTheDiskBeforeItTakesItsPlaceAndStaysThere) {
  WatchedWriting watched;
  files_->Replace(In("a.xml"), "new");
  EXPECT_THAT(watched.calls, ElementsAre("write", "flush",
                                         "move " + std::to_string(MOVEFILE_REPLACE_EXISTING |
                                                                  MOVEFILE_WRITE_THROUGH)));
}

TEST_F(Win32FileWriting, NobodyOpensAReplacementThatIsBeingWritten) {
  WatchedWriting watched;
  watched.intruder_path = ToUtf16(Temporary(1));
  files_->Replace(In("a.xml"), "new");
  ASSERT_EQ(watched.intruder_errors.size(), 3U);
  EXPECT_EQ(watched.intruder_errors[0], DWORD{ERROR_SHARING_VIOLATION});
  EXPECT_EQ(watched.intruder_errors[1], DWORD{ERROR_SHARING_VIOLATION});
}

TEST_F(Win32FileWriting, NobodyWritesAFileThatIsBeingCreated) {
  WatchedWriting watched;
  watched.intruder_path = ToUtf16(In("a.xml"));
  watched.intruder_access = GENERIC_WRITE;
  files_->Create(In("a.xml"), "new");
  EXPECT_THAT(watched.intruder_errors, ElementsAre(DWORD{ERROR_SHARING_VIOLATION}));
}

TEST_F(Win32FileWriting, AReplacementTakesANameThatIsFree) {
  files_->Create(Temporary(1), "somebody's");
  files_->Replace(In("a.xml"), "new");
  EXPECT_EQ(files_->Read(In("a.xml")), "new");
  EXPECT_EQ(files_->Read(Temporary(1)), "somebody's");
  EXPECT_FALSE(files_->Exists(Temporary(2)));
}

TEST_F(Win32FileWriting, AFileIsReadWhileAnotherProgramWritesIt) {
  files_->Create(In("a.xml"), "old");
  const UniqueFile writer(CreateFileW(ToUtf16(In("a.xml")).c_str(), GENERIC_WRITE, kShareAll,
                                      nullptr, OPEN_EXISTING, 0, nullptr));
  ASSERT_TRUE(writer);
  EXPECT_EQ(files_->Read(In("a.xml")), "old");
}

TEST_F(Win32FileWriting, APackageIsOpenedThoughItsWriterStillHoldsIt) {
  files_->Create(In("a.zip"), "PK");
  const UniqueFile writer(CreateFileW(ToUtf16(In("a.zip")).c_str(), GENERIC_WRITE, kShareAll,
                                      nullptr, OPEN_EXISTING, 0, nullptr));
  ASSERT_TRUE(writer);
  std::string bytes(2, '.');
  EXPECT_EQ(files_->Open(In("a.zip"))->ReadAt(0, bytes.data(), bytes.size()), 2U);
  EXPECT_EQ(bytes, "PK");
}

TEST_F(Win32FileWriting, AFileIsReadPastFourGigabytes) {
  constexpr std::uint64_t kFar = 0x1'0000'0000;
  files_->Create(In("big.bin"), "near");
  {
    const UniqueFile file(CreateFileW(ToUtf16(In("big.bin")).c_str(), GENERIC_WRITE, 0, nullptr,
                                      OPEN_EXISTING, 0, nullptr));
    ASSERT_TRUE(file);
    LARGE_INTEGER place{};
    place.QuadPart = static_cast<LONGLONG>(kFar);
    ASSERT_TRUE(SetFilePointerEx(file.get(), place, nullptr, FILE_BEGIN));
    DWORD written = 0;
    ASSERT_TRUE(WriteFile(file.get(), "far.", 4, &written, nullptr));
  }
  const auto reader = files_->Open(In("big.bin"));
  EXPECT_EQ(reader->Size(), kFar + 4);
  std::string bytes(4, ' ');
  EXPECT_EQ(reader->ReadAt(kFar, bytes.data(), 4), 4U);
  EXPECT_EQ(bytes, "far.");
}

}  // namespace
}  // namespace kitbay::platform::win32
