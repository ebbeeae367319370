#pragma once

#include <cstddef>
#include <functional>
#include <iterator>
#include <pugixml.hpp>
#include <string>
#include <string_view>

namespace kitbay::catalog {

/// The elements that a path "list//name" selects from a document, in document order: those of that
/// name at any depth below the elements of the list's path.
///
/// The walk finds them one by one, so each is read while it is in the cache; collecting them first
/// would take a second pass. The document must outlive the walk.
class Entries {
 public:
  class Iterator {
   public:
    using iterator_category = std::input_iterator_tag;
    using value_type = pugi::xml_node;
    using difference_type = std::ptrdiff_t;
    using pointer = const pugi::xml_node*;
    using reference = const pugi::xml_node&;

    Iterator() = default;
    Iterator(const Entries& entries, const pugi::xpath_node* list);

    const pugi::xml_node& operator*() const { return node_; }
    Iterator& operator++();
    bool operator==(const Iterator& other) const { return node_ == other.node_; }

   private:
    const Entries* entries_ = nullptr;
    const pugi::xpath_node* list_ = nullptr;
    pugi::xml_node top_;  // the list's element
    pugi::xml_node node_;
  };

  using LeavesOut = std::function<bool(const pugi::xml_node&)>;

  /// Entries that `leaves_out` is true of are passed over.
  Entries(const pugi::xml_document& document, std::string_view path,
          LeavesOut leaves_out = nullptr);

  Iterator begin() const { return {*this, lists_.begin()}; }
  Iterator end() const { return {}; }
  bool empty() const { return begin() == end(); }

 private:
  bool Holds(const pugi::xml_node& node) const;

  pugi::xpath_node_set lists_;
  std::string name_;
  LeavesOut leaves_out_;
};

/// The node after `node` in document order below `top`; none after the last. Not recursive: a file
/// may nest as deep as it is long.
pugi::xml_node NextBelow(const pugi::xml_node& top, pugi::xml_node node);

}  // namespace kitbay::catalog
