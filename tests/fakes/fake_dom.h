#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

namespace kitbay::fakes {

enum class NodeKind { kDocument, kElement, kText, kComment };

struct Attribute {
  std::string name;
  std::string value;
};

/// A node of a `DomTree`. Tag and attribute names are as the parser returns them: lower case for
/// HTML.
class DomNode {
 public:
  NodeKind kind = NodeKind::kElement;
  std::string tag;
  std::string text;  ///< Of a text or a comment.
  std::vector<Attribute> attributes;

  DomNode* parent() const { return parent_; }
  const std::vector<DomNode*>& all_children() const { return children_; }

  /// The children that are elements.
  const std::vector<DomNode*>& child_elements() const;

  /// The children except texts of only white space.
  const std::vector<DomNode*>& child_nodes() const;

  std::optional<std::string> GetAttribute(std::string_view name) const;
  void SetAttribute(std::string_view name, std::string_view value);
  void RemoveAttribute(std::string_view name);

  /// Whether this node is `other` or an ancestor of it.
  bool Contains(const DomNode& other) const;

  /// The node's position among all children of its parent, which it must have.
  std::size_t Place() const;

 private:
  friend class DomTree;
  void FillListsOfChildren() const;

  DomNode* parent_ = nullptr;
  std::vector<DomNode*> children_;
  mutable bool lists_filled_ = false;
  mutable std::vector<DomNode*> child_elements_;
  mutable std::vector<DomNode*> child_nodes_;
};

/// A page's nodes, including those removed from it; they live as long as the tree. Keeps an index,
/// so that finding an element does not slow down as the page grows.
class DomTree {
 public:
  DomTree();

  DomNode& document() const { return *document_; }
  DomNode* Body() const;

  DomNode& NewElement(std::string_view tag);
  DomNode& NewText(std::string_view text);
  DomNode& NewComment(std::string_view text);

  /// Inserts `node`, which must have no parent, into `parent` at `place` among all its children.
  void Insert(DomNode& parent, std::size_t place, DomNode& node);
  void Append(DomNode& parent, DomNode& node) { Insert(parent, parent.children_.size(), node); }
  void Detach(DomNode& node);
  void DetachChildren(DomNode& node);

  bool OnPage(const DomNode& node) const { return document_->Contains(node); }

  /// The elements on the page with that id or name attribute, in document order.
  std::vector<DomNode*> WithIdOrName(const std::string& name) const;

 private:
  DomNode& NewNode(NodeKind kind);
  void AddToIndex(DomNode& node);
  void TakeFromIndex(DomNode& node);

  std::vector<std::unique_ptr<DomNode>> nodes_;
  DomNode* document_;
  std::unordered_map<std::string, std::unordered_set<DomNode*>> index_;
};

bool IsWhiteSpace(std::string_view text);

}  // namespace kitbay::fakes
