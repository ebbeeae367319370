#include "source_tool/finding.h"

#include <algorithm>

namespace kitbay::source_tool {
namespace {

std::string NumberOf(const Finding& finding) {
  const std::string number = std::to_string(static_cast<int>(finding.rule));
  return "K" + std::string(2 - std::min<std::size_t>(2, number.size()), '0') + number;
}

}  // namespace

void WriteFindings(std::ostream& out, const std::vector<Finding>& findings) {
  for (const Finding& finding : findings) {
    out << finding.file << ":" << finding.place.line << ":" << finding.place.column << ": "
        << NumberOf(finding) << " " << finding.what << "\n    The user: " << finding.shows
        << "\n    To do: " << finding.todo << "\n";
  }
  out << findings.size() << (findings.size() == 1 ? " finding\n" : " findings\n");
}

void WriteFindingsAsJson(std::ostream& out, const std::vector<Finding>& findings) {
  out << "{\"findings\":[";
  const char* separator = "";
  for (const Finding& finding : findings) {
    out << separator << R"({"number":")" << NumberOf(finding) << R"(","file":)"
        << JsonText(finding.file) << ",\"line\":" << finding.place.line
        << ",\"column\":" << finding.place.column << ",\"what\":" << JsonText(finding.what)
        << ",\"shows\":" << JsonText(finding.shows) << ",\"todo\":" << JsonText(finding.todo)
        << "}";
    separator = ",";
  }
  out << "]}\n";
}

std::string JsonText(const std::string& text) {
  constexpr const char* kDigits = "0123456789abcdef";
  std::string json = "\"";
  for (const char letter : text) {
    const auto byte = static_cast<unsigned char>(letter);
    if (letter == '"' || letter == '\\') {
      json += '\\';
      json += letter;
    } else if (byte < 0x20) {
      json += std::string("\\u00") + kDigits[byte >> 4U] + kDigits[byte & 15U];
    } else {
      json += letter;
    }
  }
  return json + "\"";
}

TextPlace PlaceOf(std::string_view text, std::size_t offset) {
  TextPlace place;
  for (const char byte : text.substr(0, std::min(offset, text.size()))) {
    if (byte == '\n') {
      ++place.line;
      place.column = 1;
    } else if ((static_cast<unsigned char>(byte) & 0xC0U) != 0x80U) {
      ++place.column;
    }
  }
  return place;
}

}  // namespace kitbay::source_tool
