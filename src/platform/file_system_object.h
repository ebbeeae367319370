#pragma once

#include <memory>
#include <string>

namespace kitbay::platform {

/// An open text file of the suite's file-system object: 8-bit text, lines ended by CR LF.
/// Failures are `base::Failure` with the number that the object reports.
class TextStream {
 public:
  virtual ~TextStream() = default;

  /// The next line without its end. Fails with 62 at the end of the file.
  virtual std::string ReadLine() = 0;
  virtual void WriteLine(const std::string& text) = 0;
  virtual void Write(const std::string& text) = 0;
  virtual void Close() = 0;
};

/// The suite's file-system object, which performs all operations on folders and text files.
class FileSystemObject {
 public:
  virtual ~FileSystemObject() = default;

  virtual bool FileExists(const std::string& path) = 0;
  virtual bool FolderExists(const std::string& path) = 0;

  /// Creates one folder. Fails with 58 if it exists, with 76 if its parent does not.
  virtual void CreateFolder(const std::string& path) = 0;

  /// Deletes a folder and everything below it. Unless `force`, the first read-only file stops it
  /// with 70.
  virtual void DeleteFolder(const std::string& path, bool force) = 0;

  /// Creates an 8-bit text file. Fails with 58 if it exists and `overwrite` is false, with 76 if
  /// its folder does not exist, with 70 if it may not be written.
  virtual std::unique_ptr<TextStream> CreateTextFile(const std::string& path, bool overwrite) = 0;

  /// Opens an existing text file for reading. Fails with 53 if there is none.
  virtual std::unique_ptr<TextStream> OpenTextFile(const std::string& path) = 0;
};

}  // namespace kitbay::platform
