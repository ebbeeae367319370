#include "fakes/fake_dom.h"

#include <algorithm>
#include <cstddef>
#include <map>
#include <unordered_map>

namespace kitbay::fakes {
namespace {

/// The positions of nodes among their siblings. The children of a parent are counted once, since
/// a page may have thousands of them.
class Places {
 public:
  /// The positions from the top of the tree down to `node`.
  std::vector<std::size_t> PathOf(const DomNode& node) {
    std::vector<std::size_t> path;
    for (const DomNode* at = &node; at->parent() != nullptr; at = at->parent()) {
      path.push_back(PlaceOf(*at));
    }
    std::reverse(path.begin(), path.end());
    return path;
  }

 private:
  std::size_t PlaceOf(const DomNode& node) {
    const auto known = places_.find(&node);
    if (known != places_.end()) {
      return known->second;
    }
    std::size_t place = 0;
    for (const DomNode* sibling : node.parent()->all_children()) {
      places_[sibling] = place++;
    }
    return places_[&node];
  }

  std::unordered_map<const DomNode*, std::size_t> places_;
};

std::vector<std::string> IndexKeys(const DomNode& node) {
  std::vector<std::string> keys;
  for (const char* name : {"id", "name"}) {
    const auto value = node.GetAttribute(name);
    if (value && !value->empty() && (keys.empty() || keys.front() != *value)) {
      keys.push_back(*value);
    }
  }
  return keys;
}

bool IsWhiteSpaceText(const DomNode& node) {
  return node.kind == NodeKind::kText && IsWhiteSpace(node.text);
}

}  // namespace

bool IsWhiteSpace(std::string_view text) {
  return text.find_first_not_of(" \t\r\n\f") == std::string_view::npos;
}

const std::vector<DomNode*>& DomNode::child_elements() const {
  FillListsOfChildren();
  return child_elements_;
}

const std::vector<DomNode*>& DomNode::child_nodes() const {
  FillListsOfChildren();
  return child_nodes_;
}

void DomNode::FillListsOfChildren() const {
  if (lists_filled_) {
    return;
  }
  child_elements_.clear();
  child_nodes_.clear();
  for (DomNode* child : children_) {
    if (child->kind == NodeKind::kElement) {
      child_elements_.push_back(child);
    }
    if (!IsWhiteSpaceText(*child)) {
      child_nodes_.push_back(child);
    }
  }
  lists_filled_ = true;
}

std::optional<std::string> DomNode::GetAttribute(std::string_view name) const {
  for (const Attribute& attribute : attributes) {
    if (attribute.name == name) {
      return attribute.value;
    }
  }
  return std::nullopt;
}

void DomNode::SetAttribute(std::string_view name, std::string_view value) {
  for (Attribute& attribute : attributes) {
    if (attribute.name == name) {
      attribute.value = value;
      return;
    }
  }
  attributes.push_back({std::string(name), std::string(value)});
}

void DomNode::RemoveAttribute(std::string_view name) {
  std::erase_if(attributes, [&](const Attribute& attribute) { return attribute.name == name; });
}

bool DomNode::Contains(const DomNode& other) const {
  for (const DomNode* at = &other; at != nullptr; at = at->parent_) {
    if (at == this) {
      return true;
    }
  }
  return false;
}

std::size_t DomNode::Place() const {
  const auto& siblings = parent_->children_;
  return static_cast<std::size_t>(std::find(siblings.begin(), siblings.end(), this) -
                                  siblings.begin());
}

DomTree::DomTree() : document_(&NewNode(NodeKind::kDocument)) {}

DomNode* DomTree::Body() const {
  for (const DomNode* root : document_->child_elements()) {
    for (DomNode* child : root->child_elements()) {
      if (child->tag == "body") {
        return child;
      }
    }
  }
  return nullptr;
}

DomNode& DomTree::NewNode(NodeKind kind) {
  nodes_.push_back(std::make_unique<DomNode>());
  nodes_.back()->kind = kind;
  return *nodes_.back();
}

DomNode& DomTree::NewElement(std::string_view tag) {
  DomNode& node = NewNode(NodeKind::kElement);
  node.tag = tag;
  return node;
}

DomNode& DomTree::NewText(std::string_view text) {
  DomNode& node = NewNode(NodeKind::kText);
  node.text = text;
  return node;
}

DomNode& DomTree::NewComment(std::string_view text) {
  DomNode& node = NewNode(NodeKind::kComment);
  node.text = text;
  return node;
}

void DomTree::Insert(DomNode& parent, std::size_t place, DomNode& node) {
  const bool at_end = place == parent.children_.size();
  parent.children_.insert(parent.children_.begin() + static_cast<std::ptrdiff_t>(place), &node);
  node.parent_ = &parent;
  if (!at_end) {
    parent.lists_filled_ = false;
  } else if (parent.lists_filled_) {
    if (node.kind == NodeKind::kElement) {
      parent.child_elements_.push_back(&node);
    }
    if (!IsWhiteSpaceText(node)) {
      parent.child_nodes_.push_back(&node);
    }
  }
  if (OnPage(parent)) {
    AddToIndex(node);
  }
}

void DomTree::Detach(DomNode& node) {
  if (node.parent_ == nullptr) {
    return;
  }
  if (OnPage(node)) {
    TakeFromIndex(node);
  }
  DomNode& parent = *node.parent_;
  parent.children_.erase(parent.children_.begin() + static_cast<std::ptrdiff_t>(node.Place()));
  parent.lists_filled_ = false;
  node.parent_ = nullptr;
}

void DomTree::DetachChildren(DomNode& node) {
  for (DomNode* child : node.children_) {
    if (OnPage(node)) {
      TakeFromIndex(*child);
    }
    child->parent_ = nullptr;
  }
  node.children_.clear();
  node.lists_filled_ = false;
}

std::vector<DomNode*> DomTree::WithIdOrName(const std::string& name) const {
  const auto found = index_.find(name);
  if (found == index_.end()) {
    return {};
  }
  if (found->second.size() == 1) {
    return {*found->second.begin()};
  }
  Places places;
  std::map<std::vector<std::size_t>, DomNode*> by_path;
  for (DomNode* node : found->second) {
    by_path[places.PathOf(*node)] = node;
  }
  std::vector<DomNode*> nodes;
  nodes.reserve(by_path.size());
  for (const auto& [path, node] : by_path) {
    nodes.push_back(node);
  }
  return nodes;
}

void DomTree::AddToIndex(DomNode& node) {
  for (const std::string& key : IndexKeys(node)) {
    index_[key].insert(&node);
  }
  for (DomNode* child : node.children_) {
    AddToIndex(*child);
  }
}

void DomTree::TakeFromIndex(DomNode& node) {
  for (const std::string& key : IndexKeys(node)) {
    index_[key].erase(&node);
  }
  for (DomNode* child : node.children_) {
    TakeFromIndex(*child);
  }
}

}  // namespace kitbay::fakes
