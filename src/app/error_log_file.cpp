#include "app/error_log_file.h"

#include <utility>

namespace kitbay::app {
namespace {

constexpr const char* kSeparator =
    "=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=";
constexpr const char* kSourceStart = "                         [Source:-  ";
constexpr const char* kDescriptionStart = "                         [Description:-  ";

// An entry has four lines, whatever the failure's text contains.
std::string OnOneLine(std::string text) {
  for (char& letter : text) {
    if (static_cast<unsigned char>(letter) < 0x20) {
      letter = ' ';
    }
  }
  return text;
}

}  // namespace

void ErrorLogFile::Open(platform::FileSystemObject& file_system, const std::string& path) {
  auto stream = file_system.CreateTextFile(path, true);
  stream->WriteLine("Log Date :" + TimeText());
  stream_ = std::move(stream);
}

void ErrorLogFile::Close() {
  if (stream_) {
    const auto stream = std::move(stream_);
    stream->Close();
  }
}

std::string ErrorLogFile::TimeText() const { return clock_.GeneralDate(clock_.Now()); }

void ErrorLogFile::LogError(const std::string& time_text, const std::string& procedure,
                            std::int32_t number, const std::string& description) {
  if (!stream_) {
    return;
  }
  stream_->WriteLine(kSeparator);
  stream_->WriteLine("[" + time_text + "]   [" + std::to_string(number) + "]");
  stream_->WriteLine(kSourceStart + procedure + "]");
  stream_->WriteLine(kDescriptionStart + OnOneLine(description) + "]");
}

}  // namespace kitbay::app
