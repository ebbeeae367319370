#include <algorithm>
#include <array>
#include <stdexcept>
#include <string_view>
#include <utility>

#include "base/text.h"
#include "fakes/fake_html_parser.h"
#include "fakes/fake_html_text.h"
#include "fakes/fake_page.h"
#include "fakes/fake_style.h"
#include "fakes/is_one_of.h"

namespace kitbay::fakes {
namespace {

using base::Failure;
using base::RuntimeError;
using platform::HtmlNode;
using platform::HtmlNodeRef;

constexpr std::array<std::string_view, 6> kControls = {"input",    "button", "select",
                                                       "textarea", "option", "fieldset"};
constexpr std::array<std::string_view, 6> kWithValue = {"input",    "button", "select",
                                                        "textarea", "option", "li"};
constexpr std::array<std::string_view, 6> kWithSource = {"img",    "input", "iframe",
                                                         "script", "embed", "frame"};

Failure InvalidArgument() {
  return Failure(static_cast<std::int32_t>(0x80070057), "Invalid argument.");
}

DomNode* AtOrNull(const std::vector<DomNode*>& nodes, int index) {
  const auto place = static_cast<std::size_t>(index);
  return index >= 0 && place < nodes.size() ? nodes[place] : nullptr;
}

/// The attribute of a property: "tabindex" for "tabIndex", "aria-expanded" for "ariaExpanded".
std::string AttributeOf(const std::string& property) {
  constexpr std::array<std::string_view, 5> kPlain = {"tabIndex", "alt", "title", "role", "href"};
  constexpr std::string_view kAria = "aria";
  if (property == "className") {
    return "class";
  }
  if (IsOneOf(kPlain, property)) {
    return base::ToLower(property);
  }
  if (!property.starts_with(kAria)) {
    throw Failure(RuntimeError::kMemberNotFound);
  }
  return "aria-" + base::ToLower(property.substr(kAria.size()));
}

class FakeHtmlNode : public HtmlNode {
 public:
  FakeHtmlNode(std::shared_ptr<FakePage> page, DomNode& node)
      : page_(std::move(page)), node_(node) {}

  DomNode& node() const { return node_; }

  std::string Id() const override { return Element("Id").GetAttribute("id").value_or(""); }

  std::string TagName() const override {
    std::string name = Element("TagName").tag;
    for (char& c : name) {
      if (c >= 'a' && c <= 'z') {
        c = static_cast<char>(c - 'a' + 'A');
      }
    }
    return name;
  }

  std::string Value() const override {
    return Element("Value", kWithValue).GetAttribute("value").value_or("");
  }

  bool Disabled() const override {
    return Element("Disabled", kControls).GetAttribute("disabled").has_value();
  }

  void SetDisabled(bool disabled) override {
    DomNode& element = Element("SetDisabled", kControls);
    if (disabled) {
      element.SetAttribute("disabled", "");
    } else {
      element.RemoveAttribute("disabled");
    }
  }

  std::string Src() const override {
    const std::string src = Element("Src", kWithSource).GetAttribute("src").value_or("");
    const bool absolute = src.find(':') != std::string::npos;
    return src.empty() || absolute ? src : BaseUrl() + src;
  }

  void SetSrc(const std::string& src) override {
    Element("SetSrc", kWithSource).SetAttribute("src", src);
  }

  std::string InnerText() const override { return VisibleText(page_->tree, Element("InnerText")); }

  void SetInnerText(const std::string& text) override {
    DomNode& element = Element("SetInnerText");
    page_->tree.DetachChildren(element);
    for (std::size_t at = 0; at <= text.size();) {
      const std::size_t end = std::min(text.find('\n', at), text.size());
      if (at > 0) {
        page_->tree.Append(element, page_->tree.NewElement("br"));
      }
      if (end > at) {
        page_->tree.Append(element, page_->tree.NewText(text.substr(at, end - at)));
      }
      at = end + 1;
    }
  }

  std::string InnerHtml() const override { return InnerMarkup(Element("InnerHtml")); }

  void SetInnerHtml(const std::string& markup) override {
    DomNode& element = Element("SetInnerHtml");
    page_->scrolled.erase(&node_);
    page_->tree.DetachChildren(element);
    InsertAll(element, 0, ParseFragment(page_->tree, element.tag, markup));
  }

  std::string Style(const std::string& property) const override {
    const DomNode& element = Element("Style", 2);
    if (base::ToLower(property) == "pixelheight") {
      return std::to_string(StyleOf(element).Pixels("height"));
    }
    return StyleOf(element).Get(StyleName(property));
  }

  void SetStyle(const std::string& property, const std::string& value) override {
    DomNode& element = Element("SetStyle", 2);
    FakeStyle style = StyleOf(element);
    const std::string name =
        base::ToLower(property) == "pixelheight" ? "height" : StyleName(property);
    if (!style.Set(name, value)) {
      throw InvalidArgument();
    }
    element.SetAttribute("style", style.Text());
  }

  std::string Property(const std::string& name) const override {
    return Element("Property").GetAttribute(AttributeOf(name)).value_or("");
  }

  void SetProperty(const std::string& name, const std::string& value) override {
    Element("SetProperty").SetAttribute(AttributeOf(name), value);
  }

  int ScrollTop() const override {
    Element("ScrollTop");
    const auto scrolled = page_->scrolled.find(&node_);
    return scrolled == page_->scrolled.end() ? 0 : scrolled->second;
  }

  void SetScrollTop(int pixels) override {
    Element("SetScrollTop");
    page_->scrolled[&node_] = pixels;
  }

  void Focus() override { TakeFocus(Element("Focus")); }
  void SetActive() override { TakeFocus(Element("SetActive")); }
  void Click() override { page_->RaiseClick(Element("Click")); }

  int StylePixelHeight() const override {
    return StyleOf(Element("StylePixelHeight", 2)).Pixels("height");
  }

  HtmlNodeRef ParentElement() const override {
    DomNode* parent = Element("ParentElement").parent();
    const bool element = parent != nullptr && parent->kind == NodeKind::kElement;
    return MakeHandle(page_, element ? parent : nullptr);
  }

  int ChildCount() const override {
    return static_cast<int>(Element("ChildCount", 2).child_elements().size());
  }

  HtmlNodeRef Child(int index) const override {
    return MakeHandle(page_, AtOrNull(Element("Child", 2).child_elements(), index));
  }

  int ChildNodeCount() const override {
    page_->Enter("ChildNodeCount", 2);
    return static_cast<int>(node_.child_nodes().size());
  }

  HtmlNodeRef ChildNode(int index) const override {
    page_->Enter("ChildNode", 2);
    return MakeHandle(page_, AtOrNull(node_.child_nodes(), index));
  }

  std::vector<HtmlNodeRef> Children() const override {
    return Handles("Children", Element("Children", 2).child_elements());
  }

  std::vector<HtmlNodeRef> ElementsByTag(const std::string& tag) const override {
    std::vector<DomNode*> found;
    CollectByTag(Element("ElementsByTag", 2), base::ToLower(tag), found);
    return Handles("ElementsByTag", found);
  }

  void InsertAdjacentHtml(const std::string& where, const std::string& markup) override {
    DomNode& element = Element("InsertAdjacentHtml");
    const std::string place = base::ToLower(where);
    const bool inside = place == "afterbegin" || place == "beforeend";
    if (!inside && place != "beforebegin" && place != "afterend") {
      throw InvalidArgument();
    }
    DomNode* into = inside ? &element : element.parent();
    if (into == nullptr || into->kind != NodeKind::kElement) {
      throw InvalidArgument();
    }
    std::size_t at = 0;
    if (place == "beforeend") {
      at = element.all_children().size();
    }
    if (place == "beforebegin") {
      at = element.Place();
    }
    if (place == "afterend") {
      at = element.Place() + 1;
    }
    InsertAll(*into, at, ParseFragment(page_->tree, into->tag, markup));
  }

  void AppendChild(const HtmlNodeRef& child) override {
    DomNode& element = Element("AppendChild");
    DomNode* moved = NodeOf(child.get());
    if (moved == nullptr) {
      throw Failure(RuntimeError::kObjectVariableNotSet);
    }
    if (moved->Contains(element)) {
      throw InvalidArgument();
    }
    page_->tree.Detach(*moved);
    page_->tree.Append(element, *moved);
  }

  void MergeAttributes(const HtmlNodeRef& source) override {
    DomNode& element = Element("MergeAttributes");
    const DomNode* from = NodeOf(source.get());
    if (from == nullptr) {
      throw Failure(RuntimeError::kObjectVariableNotSet);
    }
    for (const Attribute& attribute : from->attributes) {
      if (attribute.name == "id" || attribute.name == "name") {
        continue;
      }
      element.SetAttribute(attribute.name, attribute.value);
    }
  }

  void RemoveNode(bool deep) override {
    page_->Enter("RemoveNode");
    DomNode* parent = node_.parent();
    if (parent == nullptr) {
      return;
    }
    const std::size_t place = node_.Place();
    page_->tree.Detach(node_);
    if (deep) {
      return;
    }
    const std::vector<DomNode*> children = node_.all_children();
    page_->tree.DetachChildren(node_);
    InsertAll(*parent, place, children);
  }

 private:
  /// The URL against which relative sources are resolved.
  std::string BaseUrl() const {
    for (const DomNode* html : page_->tree.document().child_elements()) {
      for (const DomNode* head : html->child_elements()) {
        for (const DomNode* element : head->child_elements()) {
          if (element->tag == "base") {
            return element->GetAttribute("href").value_or(page_->base_url);
          }
        }
      }
    }
    return page_->base_url;
  }

  /// Enters `member`, which only elements have.
  DomNode& Element(const char* member, int cost = 1) const {
    page_->Enter(member, cost);
    if (node_.kind != NodeKind::kElement) {
      throw Failure(RuntimeError::kMemberNotFound);
    }
    return node_;
  }

  /// Enters `member`, which only elements with those tags have.
  template <typename Range>
  DomNode& Element(const char* member, const Range& tags) const {
    DomNode& element = Element(member);
    if (!IsOneOf(tags, element.tag)) {
      throw Failure(RuntimeError::kMemberNotFound);
    }
    return element;
  }

  void TakeFocus(DomNode& element) {
    if (element.GetAttribute("disabled") ||
        (element.tag != "input" && !element.GetAttribute("tabindex"))) {
      throw Failure(static_cast<std::int32_t>(0x800A083E),
                    "Can't move focus to the control because it is invisible, not enabled, or of a "
                    "type that does not accept the focus.");
    }
    page_->focused = &element;
  }

  /// Handles to a list's members, which the real document delivers in batches of some dozens.
  std::vector<HtmlNodeRef> Handles(const char* member, const std::vector<DomNode*>& nodes) const {
    constexpr std::size_t kBatch = 64;
    page_->Enter(member, static_cast<int>(nodes.size() / kBatch) + 1);
    std::vector<HtmlNodeRef> handles;
    for (DomNode* node : nodes) {
      handles.push_back(MakeHandle(page_, node));
    }
    return handles;
  }

  static void CollectByTag(const DomNode& below, const std::string& tag,
                           std::vector<DomNode*>& found) {
    for (DomNode* child : below.child_elements()) {
      if (child->tag == tag) {
        found.push_back(child);
      }
      CollectByTag(*child, tag, found);
    }
  }

  static FakeStyle StyleOf(const DomNode& element) {
    return FakeStyle(element.GetAttribute("style").value_or(""));
  }

  static std::string StyleName(const std::string& property) {
    const auto name = FakeStyle::PropertyName(property);
    if (!name) {
      throw Failure(RuntimeError::kMemberNotFound);
    }
    return *name;
  }

  void InsertAll(DomNode& parent, std::size_t place, const std::vector<DomNode*>& nodes) {
    for (DomNode* node : nodes) {
      page_->tree.Insert(parent, place++, *node);
    }
  }

  std::shared_ptr<FakePage> page_;
  DomNode& node_;
};

}  // namespace

HtmlNodeRef MakeHandle(const std::shared_ptr<FakePage>& page, DomNode* node) {
  return node == nullptr ? nullptr : std::make_shared<FakeHtmlNode>(page, *node);
}

DomNode* NodeOf(const HtmlNode* handle) {
  if (handle == nullptr) {
    return nullptr;
  }
  const auto* fake = dynamic_cast<const FakeHtmlNode*>(handle);
  if (fake == nullptr) {
    throw std::invalid_argument("the node is of another kind of document");
  }
  return &fake->node();
}

}  // namespace kitbay::fakes
