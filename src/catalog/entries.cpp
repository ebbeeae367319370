#include "catalog/entries.h"

#include <utility>

namespace kitbay::catalog {
namespace {

constexpr std::string_view kAnyDepth = "//";

}  // namespace

Entries::Entries(const pugi::xml_document& document, std::string_view path, LeavesOut leaves_out)
    : leaves_out_(std::move(leaves_out)) {
  const std::size_t cut = path.find(kAnyDepth);
  lists_ = document.select_nodes(std::string(path.substr(0, cut)).c_str());
  lists_.sort();
  name_ = path.substr(cut + kAnyDepth.size());
}

Entries::Iterator::Iterator(const Entries& entries, const pugi::xpath_node* list)
    : entries_(&entries), list_(list) {
  if (list_ != entries_->lists_.end()) {
    top_ = list_->node();
    node_ = top_;
    ++*this;
  }
}

Entries::Iterator& Entries::Iterator::operator++() {
  do {
    node_ = NextBelow(top_, node_);
    while (!node_ && ++list_ != entries_->lists_.end()) {
      top_ = list_->node();
      node_ = top_.first_child();
    }
  } while (node_ && !entries_->Holds(node_));
  return *this;
}

bool Entries::Holds(const pugi::xml_node& node) const {
  return node.name() == name_ && !(leaves_out_ && leaves_out_(node));
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
