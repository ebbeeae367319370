#include <gtest/gtest.h>
#include <windows.h>

#include <wrl/client.h>

#include <memory>
#include <string>
#include <vector>

#include "contract/com/win32/registered_suite.h"
#include "contract/failure_number.h"
#include "contract/system/file_system_object_contract.h"
#include "contract/system/win32/folder_link.h"
#include "contract/system/win32/scratch_folder.h"
#include "contract/windows/replaced_import.h"
#include "platform/win32/com/bstr.h"
#include "platform/win32/com/com_failure.h"
#include "platform/win32/system/handles.h"
#include "platform/win32/system/overwriting.h"
#include "platform/win32/system/system_path.h"
#include "platform/win32/win32_platform.h"
#include "suite.h"

namespace kitbay::contract {
namespace {

using Microsoft::WRL::ComPtr;
using platform::win32::Bstr;
using platform::win32::Check;
using platform::win32::CheckWithErrorInfo;
using platform::win32::ToSystemPath;
using platform::win32::UniqueFile;

std::string BytesOf(const std::string& path) {
  // Shared as by a reader of an open log.
  const UniqueFile file(CreateFileW(ToSystemPath(path).c_str(), GENERIC_READ,
                                    FILE_SHARE_READ | FILE_SHARE_WRITE, nullptr, OPEN_EXISTING, 0,
                                    nullptr));
  if (!file) {
    return "(missing)";
  }
  std::string bytes(1 << 16, '\0');
  DWORD read = 0;
  ReadFile(file.get(), bytes.data(), static_cast<DWORD>(bytes.size()), &read, nullptr);
  bytes.resize(read);
  return bytes;
}

void WriteBytes(const std::string& path, const std::string& bytes) {
  const UniqueFile file(CreateFileW(ToSystemPath(path).c_str(), GENERIC_WRITE, 0, nullptr,
                                    CREATE_ALWAYS, 0, nullptr));
  platform::win32::WriteAll(file.get(), bytes);
}

class SuiteFileSystemObjectWorld : public FileSystemObjectWorld {
 public:
  platform::FileSystemObject& object() override { return *object_; }
  std::string folder() const override { return folder_.path(); }
  std::string Bytes(const std::string& path) const override { return BytesOf(path); }
  void AddFile(const std::string& path, const std::string& bytes) override {
    WriteBytes(path, bytes);
  }
  void SetReadOnly(const std::string& path, bool read_only) override {
    SetFileAttributesW(ToSystemPath(path).c_str(),
                       read_only ? FILE_ATTRIBUTE_READONLY : FILE_ATTRIBUTE_NORMAL);
  }

 private:
  ScratchFolder folder_;
  std::unique_ptr<platform::FileSystemObject> object_ =
      platform::win32::MakeSuiteObjects(SuiteFolder())
          ->CreateFileSystemObject("FileSystemLib.FileSystemObject");
};

std::unique_ptr<FileSystemObjectWorld> MakeWorld() {
  return std::make_unique<SuiteFileSystemObjectWorld>();
}

INSTANTIATE_TEST_SUITE_P(Suite, FileSystemObjectContract, testing::Values(&MakeWorld));

// What only the suite's own object can show, late-bound and by its interface.
class SuiteFileSystemObject : public testing::Test {
 protected:
  SuiteFileSystemObject() {
    CLSID id;
    Check(CLSIDFromProgID(L"FileSystemLib.FileSystemObject", &id));
    Check(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&early_)));
  }

  std::string In(const std::string& name) const { return folder_.path() + "\\" + name; }

  /// The same path in the form that may have any length.
  std::wstring OfAnyLength(const std::string& name) const {
    return L"\\\\?\\" + ToSystemPath(In(name));
  }

  ComPtr<::ITextStream> Create(const std::string& name, bool unicode) {
    ComPtr<::ITextStream> stream;
    CheckWithErrorInfo(early_->CreateTextFile(Bstr(In(name)).get(), VARIANT_TRUE,
                                              unicode ? VARIANT_TRUE : VARIANT_FALSE, &stream));
    return stream;
  }
  ComPtr<::ITextStream> Open(const std::string& name, IOMode mode, bool create, Tristate format) {
    ComPtr<::ITextStream> stream;
    CheckWithErrorInfo(early_->OpenTextFile(
        Bstr(In(name)).get(), mode, create ? VARIANT_TRUE : VARIANT_FALSE, format, &stream));
    return stream;
  }
  static void Write(const ComPtr<::ITextStream>& stream, const std::string& text) {
    CheckWithErrorInfo(stream->Write(Bstr(text).get()));
  }
  static std::string ReadLine(const ComPtr<::ITextStream>& stream) {
    Bstr text;
    CheckWithErrorInfo(stream->ReadLine(text.receive()));
    return text.ToText();
  }
  static std::string ReadAll(const ComPtr<::ITextStream>& stream) {
    Bstr text;
    CheckWithErrorInfo(stream->ReadAll(text.receive()));
    return text.ToText();
  }
  static bool AtEnd(const ComPtr<::ITextStream>& stream) {
    VARIANT_BOOL at_end = VARIANT_FALSE;
    CheckWithErrorInfo(stream->get_AtEndOfStream(&at_end));
    return at_end != VARIANT_FALSE;
  }

  ScratchFolder folder_;
  std::unique_ptr<platform::FileSystemObject> object_ =
      platform::win32::MakeSuiteObjects(SuiteFolder())
          ->CreateFileSystemObject("FileSystemLib.FileSystemObject");
  ComPtr<::IFileSystemObject> early_;
};

TEST_F(SuiteFileSystemObject, EightBitTextIsUtf8) {
  const auto text = object_->CreateTextFile(In("Größe 数据.log"), true);
  text->WriteLine("Zoë installiert “Größe” 数据 😀");
  EXPECT_EQ(BytesOf(In("Größe 数据.log")), "Zoë installiert “Größe” 数据 😀\r\n");
  text->Close();
  EXPECT_EQ(object_->OpenTextFile(In("Größe 数据.log"))->ReadLine(),
            "Zoë installiert “Größe” 数据 😀");
}

TEST_F(SuiteFileSystemObject, AMarkAtTheStartIsNoText) {
  WriteBytes(In("install.txt"),
             "\xEF\xBB\xBF"
             "Tessel 2\r\n");
  EXPECT_EQ(object_->OpenTextFile(In("install.txt"))->ReadLine(), "Tessel 2");
  WriteBytes(In("mark.txt"), "\xEF\xBB\xBF");
  EXPECT_EQ(FailureNumber([&] { object_->OpenTextFile(In("mark.txt"))->ReadLine(); }), 62);
}

TEST_F(SuiteFileSystemObject, LongLinesAreReadWhole) {
  // Longer than any buffer, with a multi-byte letter wherever a buffer may end.
  std::string line;
  for (int count = 0; count < 10000; ++count) {
    line += "ä€";
  }
  WriteBytes(In("long.txt"), "x" + line + "\r\nlast");
  const auto text = object_->OpenTextFile(In("long.txt"));
  EXPECT_EQ(text->ReadLine(), "x" + line);
  EXPECT_EQ(text->ReadLine(), "last");
}

TEST_F(SuiteFileSystemObject, ALogIsReadAndNotWrittenByOthersWhileItIsOpen) {
  const auto log = object_->CreateTextFile(In("log.txt"), true);
  log->WriteLine("one");
  EXPECT_EQ(object_->OpenTextFile(In("log.txt"))->ReadLine(), "one");
  EXPECT_EQ(FailureNumber([&] { object_->CreateTextFile(In("log.txt"), true); }), 70);
  EXPECT_EQ(BytesOf(In("log.txt")), "one\r\n");
  EXPECT_EQ(FailureNumber([&] { object_->DeleteFolder(folder_.path(), true); }), 70);
  EXPECT_EQ(BytesOf(In("log.txt")), "one\r\n");
}

TEST_F(SuiteFileSystemObject, AStreamIsClosedWithItsLastReference) {
  object_->CreateTextFile(In("a.txt"), true)->Write("1");
  object_->CreateTextFile(In("a.txt"), true)->Write("2");
  EXPECT_EQ(BytesOf(In("a.txt")), "2");
}

TEST_F(SuiteFileSystemObject, AStreamGoesOneWayUntilItIsClosed) {
  const auto writer = object_->CreateTextFile(In("a.txt"), true);
  EXPECT_EQ(FailureNumber([&] { writer->ReadLine(); }), 54);
  writer->WriteLine("1");
  writer->Close();
  writer->Close();
  EXPECT_EQ(FailureNumber([&] { writer->WriteLine("2"); }), 54);
  const auto reader = object_->OpenTextFile(In("a.txt"));
  EXPECT_EQ(FailureNumber([&] { reader->WriteLine("2"); }), 54);
  reader->Close();
  EXPECT_EQ(FailureNumber([&] { reader->ReadLine(); }), 54);
  EXPECT_EQ(BytesOf(In("a.txt")), "1\r\n");
}

TEST_F(SuiteFileSystemObject, FailuresCarryTheirDescription) {
  try {
    object_->OpenTextFile(In("missing.txt"));
    FAIL() << "a missing file was opened";
  } catch (const base::Failure& failure) {
    EXPECT_EQ(failure.number(), 53);
    EXPECT_EQ(failure.description(), "File not found");
  }
  ComPtr<::ITextStream> stream;
  EXPECT_EQ(early_->OpenTextFile(Bstr(In("missing.txt")).get(), ForReading, VARIANT_FALSE,
                                 TristateFalse, &stream),
            static_cast<HRESULT>(0x800A0035U));
  EXPECT_EQ(stream.Get(), nullptr);
}

TEST_F(SuiteFileSystemObject, UnicodeTextIsUtf16WithAMark) {
  const auto writer = Create("unicode.txt", true);
  Write(writer, "aß😀");
  writer->WriteLine(Bstr("").get());
  writer->Close();
  EXPECT_EQ(BytesOf(In("unicode.txt")), std::string("\xFF\xFE"
                                                    "a\0\xDF\0\x3D\xD8\x00\xDE\r\0\n\0",
                                                    14));
  const auto appended = Open("unicode.txt", ForAppending, false, TristateTrue);
  Write(appended, "2");
  appended->Close();
  const auto reader = Open("unicode.txt", ForReading, false, TristateTrue);
  EXPECT_EQ(ReadLine(reader), "aß😀");
  EXPECT_FALSE(AtEnd(reader));
  EXPECT_EQ(ReadAll(reader), "2");
  EXPECT_TRUE(AtEnd(reader));
  EXPECT_EQ(FailureNumber([&] { ReadAll(reader); }), 62);
}

TEST_F(SuiteFileSystemObject, AllTextIsReadWithItsLineEnds) {
  WriteBytes(In("a.txt"), "1\r\n2\n\r3");
  const auto reader = Open("a.txt", ForReading, false, TristateUseDefault);
  EXPECT_FALSE(AtEnd(reader));
  EXPECT_EQ(ReadAll(reader), "1\r\n2\n\r3");
  EXPECT_TRUE(AtEnd(reader));
}

TEST_F(SuiteFileSystemObject, AHiddenFileIsOverwrittenAndStaysHidden) {
  WriteBytes(In("a.txt"), "1");
  const std::wstring path = ToSystemPath(In("a.txt"));
  ASSERT_TRUE(SetFileAttributesW(path.c_str(), FILE_ATTRIBUTE_HIDDEN));
  object_->CreateTextFile(In("a.txt"), true)->Write("2");
  EXPECT_EQ(BytesOf(In("a.txt")), "2");
  EXPECT_NE(GetFileAttributesW(path.c_str()) & FILE_ATTRIBUTE_HIDDEN, 0U);
}

TEST_F(SuiteFileSystemObject, FilesAreOpenedForWritingAndAppending) {
  EXPECT_EQ(FailureNumber([&] { Open("a.txt", ForWriting, false, TristateFalse); }), 53);
  EXPECT_EQ(FailureNumber([&] { Open("a.txt", ForAppending, false, TristateFalse); }), 53);
  Write(Open("a.txt", ForAppending, true, TristateFalse), "1");
  Write(Open("a.txt", ForAppending, true, TristateFalse), "2");
  EXPECT_EQ(BytesOf(In("a.txt")), "12");
  Write(Open("a.txt", ForWriting, false, TristateFalse), "3");
  EXPECT_EQ(BytesOf(In("a.txt")), "3");
  EXPECT_TRUE(AtEnd(Open("new.txt", ForReading, true, TristateFalse)));
  EXPECT_EQ(FailureNumber([&] { Open("a.txt", static_cast<IOMode>(3), true, TristateFalse); }), 5);
}

TEST_F(SuiteFileSystemObject, WhatFollowsTheReadOnlyFileIsNotDeleted) {
  object_->CreateFolder(In("Temp"));
  object_->CreateFolder(In("Temp\\sub"));
  WriteBytes(In("Temp\\sub\\kept.txt"), "1");
  SetFileAttributesW(ToSystemPath(In("Temp\\sub\\kept.txt")).c_str(), FILE_ATTRIBUTE_READONLY);
  EXPECT_EQ(FailureNumber([&] { object_->DeleteFolder(In("Temp"), false); }), 70);
  EXPECT_EQ(BytesOf(In("Temp\\sub\\kept.txt")), "1");
}

TEST_F(SuiteFileSystemObject, AFolderOfAnyDepthIsDeleted) {
  std::string path = In("deep");
  object_->CreateFolder(path);
  for (int depth = 0; depth < 40; ++depth) {
    path += "\\a folder of eighteen";
    object_->CreateFolder(path);
  }
  WriteBytes(path + "\\file.txt", "1");
  object_->DeleteFolder(In("deep") + "\\", false);
  EXPECT_FALSE(object_->FolderExists(In("deep")));
}

std::vector<std::wstring>& RemovedFolders() {
  static std::vector<std::wstring> paths;
  return paths;
}

BOOL WINAPI NoteRemoval(LPCWSTR path) {
  RemovedFolders().emplace_back(path);
  return RemoveDirectoryW(path);
}

// Wine takes a path of any length, Windows only one in this form.
TEST_F(SuiteFileSystemObject, FoldersAreDeletedByPathsThatMayHaveAnyLength) {
  RemovedFolders().clear();
  const ReplacedImport noted("RemoveDirectoryW", reinterpret_cast<void*>(&NoteRemoval),
                             L"OvalinkSuite.dll");
  object_->CreateFolder(In("Temp"));
  object_->CreateFolder(In("Temp\\sub"));
  object_->DeleteFolder(In("Temp"), false);
  EXPECT_EQ(RemovedFolders(),
            (std::vector<std::wstring>{OfAnyLength("Temp\\sub"), OfAnyLength("Temp")}));
}

TEST_F(SuiteFileSystemObject, AFileInUseEndsTheDeletion) {
  object_->CreateFolder(In("Temp"));
  const auto log = object_->CreateTextFile(In("Temp\\log.txt"), true);
  log->WriteLine("1");
  EXPECT_EQ(FailureNumber([&] { object_->DeleteFolder(In("Temp"), true); }), 70);
  log->Close();
  object_->DeleteFolder(In("Temp"), false);
  EXPECT_FALSE(object_->FolderExists(In("Temp")));
}

BOOL WINAPI NoteOnly(LPCWSTR path) {
  RemovedFolders().emplace_back(path);
  return TRUE;
}

// Observed at the calls, because Wine lists links but removes none.
TEST_F(SuiteFileSystemObject, ALinkToAFolderIsRemovedAndNotFollowed) {
  object_->CreateFolder(In("outside"));
  WriteBytes(In("outside\\kept.txt"), "1");
  object_->CreateFolder(In("Temp"));
  for (const std::string link : {"Temp\\link", "link"}) {
    if (!MakeFolderLink(ToSystemPath(In(link)), ToSystemPath(In("outside")))) {
      GTEST_SKIP() << "this system makes no links";
    }
  }
  RemovedFolders().clear();
  const ReplacedImport noted("RemoveDirectoryW", reinterpret_cast<void*>(&NoteOnly),
                             L"OvalinkSuite.dll");
  object_->DeleteFolder(In("Temp"), true);
  object_->DeleteFolder(In("link"), true);
  EXPECT_EQ(BytesOf(In("outside\\kept.txt")), "1");
  EXPECT_EQ(RemovedFolders(),
            (std::vector<std::wstring>{OfAnyLength("Temp\\link"), OfAnyLength("Temp"),
                                       OfAnyLength("link")}));
}

}  // namespace
}  // namespace kitbay::contract
