#pragma once

#include <functional>
#include <pugixml.hpp>
#include <string_view>
#include <vector>

namespace kitbay::catalog {

/// The elements that a path "list//name" selects from a document, in document order: those with
/// that name at any depth below the elements of the list's path. Found in one walk, which takes a
/// fraction of the time of evaluating the path; the document must outlive them.
class Entries {
 public:
  using LeavesOut = std::function<bool(const pugi::xml_node&)>;

  /// Entries for which `leaves_out` is true are skipped.
  Entries(const pugi::xml_document& document, std::string_view path,
          const LeavesOut& leaves_out = nullptr);

  std::vector<pugi::xml_node>::const_iterator begin() const { return nodes_.begin(); }
  std::vector<pugi::xml_node>::const_iterator end() const { return nodes_.end(); }
  bool empty() const { return nodes_.empty(); }

 private:
  std::vector<pugi::xml_node> nodes_;
};

/// The node after `node` in document order below `top`; none after the last. Not recursive, because
/// a file may nest as deep as it is long.
pugi::xml_node NextBelow(const pugi::xml_node& top, pugi::xml_node node);

}  // namespace kitbay::catalog
