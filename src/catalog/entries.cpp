#include "catalog/entries.h"

#include <cstring>
#include <string>

namespace kitbay::catalog {
namespace {

constexpr std::string_view kAnyDepth = "//";

}  // namespace

Entries::Entries(const pugi::xml_document& document, std::string_view path,
                 const LeavesOut& leaves_out) {
  const std::size_t cut = path.find(kAnyDepth);
  const std::string name(path.substr(cut + kAnyDepth.size()));
  pugi::xpath_node_set lists = document.select_nodes(std::string(path.substr(0, cut)).c_str());
  lists.sort();
  for (const pugi::xpath_node& selected : lists) {
    const pugi::xml_node list = selected.node();
    for (pugi::xml_node node = NextBelow(list, list); node; node = NextBelow(list, node)) {
      if (std::strcmp(node.name(), name.c_str()) == 0 && !(leaves_out && leaves_out(node))) {
        nodes_.push_back(node);
      }
    }
  }
}

pugi::xml_node NextBelow(const pugi::xml_node& top, pugi::xml_node node) {
  if (const pugi::xml_node child = node.first_child()) {
    return child;
  }
  while (node != top) {
    if (const pugi::xml_node next = node.next_sibling()) {
      return next;
    }
    node = node.parent();
  }
  return {};
}

}  // namespace kitbay::catalog
