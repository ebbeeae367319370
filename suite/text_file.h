#pragma once

#include <windows.h>

#include <array>
#include <optional>
#include <string>
#include <string_view>

#include "platform/win32/system/handles.h"

namespace ovalink {

enum class TextFormat { kEightBit, kUnicode };

/// Reads the text of an open file from its start, skipping the mark of its format. Lines end with
/// CR LF or LF. Failures are `kitbay::base::Failure`.
class TextReader {
 public:
  TextReader(kitbay::platform::win32::UniqueFile file, TextFormat format);

  bool AtEnd();

  /// Both fail with 62 at the end of the file.
  std::wstring ReadLine();
  std::wstring ReadAll();

 private:
  std::optional<unsigned char> NextByte();
  std::optional<wchar_t> NextUnit();
  void SkipMark();
  std::wstring TextOf(const std::wstring& units) const;

  kitbay::platform::win32::UniqueFile file_;
  TextFormat format_;
  std::array<unsigned char, 4096> buffer_{};
  DWORD filled_ = 0;
  DWORD position_ = 0;
  std::optional<wchar_t> peeked_;
};

/// Writes text to an open file immediately, piece by piece. Failures are `kitbay::base::Failure`.
class TextWriter {
 public:
  /// A Unicode file that is still empty gets its byte-order mark.
  TextWriter(kitbay::platform::win32::UniqueFile file, TextFormat format);

  void Write(std::wstring_view text);

 private:
  kitbay::platform::win32::UniqueFile file_;
  TextFormat format_;
};

}  // namespace ovalink
