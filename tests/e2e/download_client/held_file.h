#pragma once

#include <string>
#include <string_view>

#include "contract/windows/replaced_import.h"
#include "platform/win32/system/handles.h"

/// A hold on a file, as another program's, that ends when so many attempts of the suite's objects
/// to put a file in its place have failed. There is one at most.
class HeldFile {
 public:
  /// The suite's library has to be loaded. Throws `std::runtime_error` when the file is not there.
  HeldFile(const std::string& path, int failures);
  ~HeldFile();
  HeldFile(const HeldFile&) = delete;
  HeldFile& operator=(const HeldFile&) = delete;

  /// How often a file was to be put in its place, with success or without.
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
