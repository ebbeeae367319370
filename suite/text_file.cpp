#include "text_file.h"

#include <utility>

#include "base/failure.h"
#include "platform/win32/system/overwriting.h"
#include "platform/win32/system/system_failure.h"
#include "platform/win32/system/utf.h"

namespace ovalink {

namespace win32 = kitbay::platform::win32;
using kitbay::base::Failure;
using kitbay::base::RuntimeError;

namespace {

constexpr wchar_t kMark = 0xFEFF;
constexpr std::string_view kEightBitMark = "\xEF\xBB\xBF";

std::string_view BytesOf(std::wstring_view text) {
  return {reinterpret_cast<const char*>(text.data()), text.size() * sizeof(wchar_t)};
}

}  // namespace

TextReader::TextReader(win32::UniqueFile file, TextFormat format)
    : file_(std::move(file)), format_(format) {
  SkipMark();
}

bool TextReader::AtEnd() {
  if (!peeked_) {
    peeked_ = NextUnit();
  }
  return !peeked_;
}

std::wstring TextReader::ReadLine() {
  if (AtEnd()) {
    throw Failure(RuntimeError::kInputPastEndOfFile);
  }
  std::wstring line;
  while (const std::optional<wchar_t> unit = NextUnit()) {
    if (*unit == L'\n') {
      if (line.ends_with(L'\r')) {
        line.pop_back();
      }
      break;
    }
    line += *unit;
  }
  return TextOf(line);
}

std::wstring TextReader::ReadAll() {
  if (AtEnd()) {
    throw Failure(RuntimeError::kInputPastEndOfFile);
  }
  std::wstring text;
  while (const std::optional<wchar_t> unit = NextUnit()) {
    text += *unit;
  }
  return TextOf(text);
}

std::optional<unsigned char> TextReader::NextByte() {
  if (position_ == filled_) {
    position_ = 0;
    const BOOL read = ReadFile(file_.get(), buffer_.data(), static_cast<DWORD>(buffer_.size()),
                               &filled_, nullptr);
    const DWORD error = GetLastError();
    if (!read) {
      filled_ = 0;
      throw win32::FileFailure(error);
    }
    if (filled_ == 0) {
      return std::nullopt;
    }
  }
  return buffer_[position_++];
}

std::optional<wchar_t> TextReader::NextUnit() {
  if (peeked_) {
    return std::exchange(peeked_, std::nullopt);
  }
  const std::optional<unsigned char> low = NextByte();
  if (!low || format_ == TextFormat::kEightBit) {
    return low;
  }
  return static_cast<wchar_t>(*low | NextByte().value_or(0) << 8);
}

void TextReader::SkipMark() {
  if (format_ == TextFormat::kUnicode) {
    peeked_ = NextUnit();
    if (peeked_ == kMark) {
      peeked_.reset();
    }
    return;
  }
  if (!NextByte()) {
    return;
  }
  position_ = 0;
  if (std::string_view(reinterpret_cast<const char*>(buffer_.data()), filled_)
          .starts_with(kEightBitMark)) {
    position_ = static_cast<DWORD>(kEightBitMark.size());
  }
}

std::wstring TextReader::TextOf(const std::wstring& units) const {
  if (format_ == TextFormat::kUnicode) {
    return units;
  }
  std::string bytes;
  bytes.reserve(units.size());
  for (const wchar_t unit : units) {
    bytes += static_cast<char>(unit);
  }
  return win32::ToUtf16(bytes);
}

TextWriter::TextWriter(win32::UniqueFile file, TextFormat format)
    : file_(std::move(file)), format_(format) {
  LARGE_INTEGER size{};
  if (format_ == TextFormat::kUnicode && GetFileSizeEx(file_.get(), &size) && size.QuadPart == 0) {
    win32::WriteAll(file_.get(), BytesOf({&kMark, 1}));
  }
}

void TextWriter::Write(std::wstring_view text) {
  if (format_ == TextFormat::kUnicode) {
    win32::WriteAll(file_.get(), BytesOf(text));
  } else {
    win32::WriteAll(file_.get(), win32::ToUtf8(text));
  }
}

}  // namespace ovalink
