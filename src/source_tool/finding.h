#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace kitbay::source_tool {

/// The rules of `check`, with the numbers that their findings show.
enum class Rule {
  kIdNotFirst = 1,
  kNameIsNotId = 2,
  kVersion = 3,
  kVersionInName = 4,
  kOneLibrary = 5,
  kCategory = 6,
  kEmptyFile = 7,
  kName = 8,
  kBitness = 9,
  kTooLarge = 10,
  kSameFileName = 11,
  kMissing = 12,
  kDigest = 13,
  kSignature = 14,
  kSameId = 15,
  kNoManifest = 16,
  kNoPackage = 17,
};

/// A place in a text. Line and column count from 1, the column in characters.
struct TextPlace {
  std::size_t line = 1;
  std::size_t column = 1;
};

/// Where the byte at `offset` of a UTF-8 text is; the end of the text for an offset beyond it.
TextPlace PlaceOf(std::string_view text, std::size_t offset);

/// Something that fails silently on the user's machine.
struct Finding {
  Rule rule;
  std::string file;
  TextPlace place;
  std::string what;   ///< what is wrong there
  std::string shows;  ///< what the user would see
  std::string todo;   ///< what to do
};

/// Writes findings for people, or as one JSON object for programs.
void WriteFindings(std::ostream& out, const std::vector<Finding>& findings);
void WriteFindingsAsJson(std::ostream& out, const std::vector<Finding>& findings);

/// `text` as a JSON string, with its quotation marks.
std::string JsonText(const std::string& text);

}  // namespace kitbay::source_tool
