#pragma once

#include <cstddef>
#include <pugixml.hpp>
#include <string>
#include <utility>

namespace kitbay::catalog {

/// A parsed XML file: a tree over the file's own bytes, which it keeps.
class XmlDocument : public pugi::xml_document {
 public:
  /// Parses `bytes`, replacing the document's previous contents, with the parser's `options`.
  pugi::xml_parse_result ParseInPlace(std::string bytes, unsigned options) {
    reset();
    bytes_ = std::move(bytes);
    // Without the terminating zero, the parser would drop the last character.
    return load_buffer_inplace(bytes_.data(), bytes_.size() + 1, options);
  }

  /// How many bytes the file had.
  std::size_t byte_count() const { return bytes_.size(); }

 private:
  std::string bytes_;
};

}  // namespace kitbay::catalog
