#pragma once

#include <string>
#include <string_view>

#include "contract/windows/replaced_import.h"
#include "platform/win32/system/handles.h"

/// Holds a file as another program would, until the suite's objects have failed a number of times
/// to replace it. Only one may exist.
class HeldFile {
 public:
  /// The suite's library must be loaded. Throws `std::runtime_error` if the file does not exist.
  HeldFile(const std::string& path, int failures);
  ~HeldFile();
  HeldFile(const HeldFile&) = delete;
  HeldFile& operator=(const HeldFile&) = delete;

  /// How often the file was to be replaced, with or without success.
  int attempts() const { return attempts_; }

  /// Counts an attempt, if `to` is the file.
  void OnMove(std::wstring_view to);

 private:
  std::wstring path_;
  kitbay::platform::win32::UniqueFile file_;
  int failures_;
  int attempts_ = 0;
  kitbay::contract::ReplacedImport moving_;
};
