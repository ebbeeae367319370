#include "file_system_object.h"

#include <memory>
#include <string>
#include <utility>

#include "base/failure.h"
#include "folder_deletion.h"
#include "platform/win32/com/bstr.h"
#include "platform/win32/com/com_failure.h"
#include "platform/win32/system/overwriting.h"
#include "platform/win32/system/system_failure.h"
#include "platform/win32/system/system_path.h"
#include "text_file.h"
#include "text_stream.h"

namespace ovalink {

namespace win32 = kitbay::platform::win32;
using kitbay::base::Failure;
using kitbay::base::RuntimeError;
using win32::ReportCurrentException;
using win32::TextOf;

namespace {

/// The attributes of what exists at `path`; INVALID_FILE_ATTRIBUTES if there is nothing or `path`
/// is not a valid path.
DWORD AttributesOf(BSTR path) {
  try {
    return GetFileAttributesW(win32::ToSystemPath(TextOf(path)).c_str());
  } catch (const Failure&) {
    return INVALID_FILE_ATTRIBUTES;
  }
}

win32::UniqueFile Open(const std::wstring& path, DWORD access, DWORD share, DWORD disposition,
                       DWORD attributes) {
  win32::UniqueFile file(
      CreateFileW(path.c_str(), access, share, nullptr, disposition, attributes, nullptr));
  const DWORD error = GetLastError();
  if (file) {
    return file;
  }
  if (error == ERROR_FILE_EXISTS || error == ERROR_ALREADY_EXISTS) {
    throw Failure(RuntimeError::kFileAlreadyExists);
  }
  throw win32::FileFailure(error);
}

template <typename Stream>
HRESULT Give(std::unique_ptr<Stream> file, ::ITextStream** stream) {
  *stream = new TextStream(std::move(file));
  return S_OK;
}

/// A writer that shares its file with readers.
HRESULT GiveWriter(BSTR path, DWORD disposition, TextFormat format, ::ITextStream** stream) {
  const std::wstring full = win32::ToSystemPath(TextOf(path));
  const DWORD attributes =
      disposition == CREATE_NEW ? FILE_ATTRIBUTE_NORMAL : win32::DemandOverwritable(full);
  win32::UniqueFile file = Open(full, GENERIC_WRITE, FILE_SHARE_READ, disposition, attributes);
  // Appending starts at the end of the existing text; a file opened otherwise is empty.
  SetFilePointer(file.get(), 0, nullptr, FILE_END);
  return Give(std::make_unique<TextWriter>(std::move(file), format), stream);
}

/// A reader that shares its file with a writer.
HRESULT GiveReader(BSTR path, DWORD disposition, TextFormat format, ::ITextStream** stream) {
  win32::UniqueFile file =
      Open(win32::ToSystemPath(TextOf(path)), GENERIC_READ, FILE_SHARE_READ | FILE_SHARE_WRITE,
           disposition, FILE_ATTRIBUTE_NORMAL);
  return Give(std::make_unique<TextReader>(std::move(file), format), stream);
}

}  // namespace

STDMETHODIMP FileSystemObject::FileExists(BSTR path, VARIANT_BOOL* exists) {
  if (exists == nullptr) {
    return E_POINTER;
  }
  try {
    const DWORD attributes = AttributesOf(path);
    const bool is_file =
        attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
    *exists = is_file ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
  } catch (...) {
    return ReportCurrentException();
  }
}

STDMETHODIMP FileSystemObject::FolderExists(BSTR path, VARIANT_BOOL* exists) {
  if (exists == nullptr) {
    return E_POINTER;
  }
  try {
    const DWORD attributes = AttributesOf(path);
    const bool is_folder =
        attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
    *exists = is_folder ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
  } catch (...) {
    return ReportCurrentException();
  }
}

STDMETHODIMP FileSystemObject::CreateFolder(BSTR path) {
  try {
    const BOOL created = CreateDirectoryW(win32::ToSystemPath(TextOf(path)).c_str(), nullptr);
    const DWORD error = GetLastError();
    if (created) {
      return S_OK;
    }
    if (error == ERROR_ALREADY_EXISTS) {
      throw Failure(RuntimeError::kFileAlreadyExists);
    }
    throw win32::FileFailure(error);
  } catch (...) {
    return ReportCurrentException();
  }
}

STDMETHODIMP FileSystemObject::DeleteFolder(BSTR path, VARIANT_BOOL force) {
  try {
    DeleteFolderTree(win32::ToSystemPath(TextOf(path)), force != VARIANT_FALSE);
    return S_OK;
  } catch (...) {
    return ReportCurrentException();
  }
}

STDMETHODIMP FileSystemObject::CreateTextFile(BSTR path, VARIANT_BOOL overwrite,
                                              VARIANT_BOOL unicode, ::ITextStream** stream) {
  if (stream == nullptr) {
    return E_POINTER;
  }
  *stream = nullptr;
  try {
    return GiveWriter(path, overwrite != VARIANT_FALSE ? CREATE_ALWAYS : CREATE_NEW,
                      unicode != VARIANT_FALSE ? TextFormat::kUnicode : TextFormat::kEightBit,
                      stream);
  } catch (...) {
    return ReportCurrentException();
  }
}

STDMETHODIMP FileSystemObject::OpenTextFile(BSTR path, IOMode mode, VARIANT_BOOL create,
                                            Tristate format, ::ITextStream** stream) {
  if (stream == nullptr) {
    return E_POINTER;
  }
  *stream = nullptr;
  const bool may_create = create != VARIANT_FALSE;
  const TextFormat text_format =
      format == TristateTrue ? TextFormat::kUnicode : TextFormat::kEightBit;
  try {
    switch (mode) {
      case ForReading:
        return GiveReader(path, may_create ? OPEN_ALWAYS : OPEN_EXISTING, text_format, stream);
      case ForWriting:
        return GiveWriter(path, may_create ? CREATE_ALWAYS : TRUNCATE_EXISTING, text_format,
                          stream);
      case ForAppending:
        return GiveWriter(path, may_create ? OPEN_ALWAYS : OPEN_EXISTING, text_format, stream);
    }
    throw Failure(RuntimeError::kInvalidProcedureCall);
  } catch (...) {
    return ReportCurrentException();
  }
}

}  // namespace ovalink
