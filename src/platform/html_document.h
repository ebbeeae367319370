#pragma once

#include <memory>
#include <string>
#include <vector>

namespace kitbay::platform {

class HtmlNode;

/// A handle to a node of the page; empty if the page has no such node.
using HtmlNodeRef = std::shared_ptr<HtmlNode>;

/// A node of the page's document: an element, or a piece of text between elements. Child nodes
/// leave out text that is only white space. Texts are UTF-8.
///
/// Members that the node does not have (an element's members on a text) fail with 438. A handle to
/// a node of an earlier page, like any failed call, fails with its HRESULT.
class HtmlNode {
 public:
  virtual ~HtmlNode() = default;

  virtual std::string Id() const = 0;
  virtual std::string TagName() const = 0;

  /// The value of an input element.
  virtual std::string Value() const = 0;
  virtual bool Disabled() const = 0;
  virtual void SetDisabled(bool disabled) = 0;

  /// An image's source as an absolute URL; it is set as written.
  virtual std::string Src() const = 0;
  virtual void SetSrc(const std::string& src) = 0;

  virtual std::string InnerText() const = 0;
  virtual void SetInnerText(const std::string& text) = 0;
  virtual std::string InnerHtml() const = 0;
  virtual void SetInnerHtml(const std::string& markup) = 0;

  /// A style property by its script name ("display", "fontWeight"); unset is empty.
  virtual std::string Style(const std::string& property) const = 0;
  virtual void SetStyle(const std::string& property, const std::string& value) = 0;

  /// Another property by its script name, as text: "className", "tabIndex", "alt", "role",
  /// "ariaExpanded" and the like. Unset is empty.
  virtual std::string Property(const std::string& name) const = 0;
  virtual void SetProperty(const std::string& name, const std::string& value) = 0;

  /// How many pixels of the element's content are scrolled out of view at its top.
  virtual int ScrollTop() const = 0;
  virtual void SetScrollTop(int pixels) = 0;

  /// Gives the focus to the element and scrolls to it. An element that is hidden, disabled or
  /// without a "tabIndex" may not take it.
  virtual void Focus() = 0;

  /// Makes the element the one that has the focus whenever the page has it; does not scroll.
  virtual void SetActive() = 0;

  /// Raises the event of a click on the element, as the mouse does.
  virtual void Click() = 0;

  /// The height in pixels that the element's own style sets; 0 if it sets none.
  virtual int StylePixelHeight() const = 0;

  /// The parent; empty at the top of the tree.
  virtual HtmlNodeRef ParentElement() const = 0;

  /// Child elements, then all child nodes. An index past the end returns an empty handle.
  virtual int ChildCount() const = 0;
  virtual HtmlNodeRef Child(int index) const = 0;
  virtual int ChildNodeCount() const = 0;
  virtual HtmlNodeRef ChildNode(int index) const = 0;

  /// All child elements, and all elements of that tag below this one, in document order. For long
  /// lists, which would otherwise need a call per index.
  virtual std::vector<HtmlNodeRef> Children() const = 0;
  virtual std::vector<HtmlNodeRef> ElementsByTag(const std::string& tag) const = 0;

  /// `where` is "beforeBegin", "afterBegin", "beforeEnd" or "afterEnd".
  virtual void InsertAdjacentHtml(const std::string& where, const std::string& markup) = 0;
  virtual void AppendChild(const HtmlNodeRef& child) = 0;

  /// Copies the attributes of `source` to this element, except id and name. They replace attributes
  /// of the same name.
  virtual void MergeAttributes(const HtmlNodeRef& source) = 0;

  /// Removes the node from the page: with its subtree if `deep`, otherwise its children take its
  /// place.
  virtual void RemoveNode(bool deep) = 0;
};

/// A list of nodes, as it was when the document returned it.
class HtmlNodeList {
 public:
  virtual ~HtmlNodeList() = default;
  virtual int Length() const = 0;
  virtual HtmlNodeRef Item(int index) const = 0;
};

/// A key pressed on the page: its virtual key code, and the modifier keys held down with it.
struct KeyPress {
  int code = 0;
  bool shift = false;
  bool control = false;
  bool alt = false;
};

/// The document of the page in the browser control. Fails as `HtmlNode` does.
class HtmlDocument {
 public:
  virtual ~HtmlDocument() = default;

  /// The element with that id or name among all the page's elements; the first if there are
  /// several, an empty handle if there is none.
  virtual HtmlNodeRef AllItem(const std::string& id) const = 0;

  /// The elements with the name or id `name`, in document order.
  virtual std::unique_ptr<HtmlNodeList> GetElementsByName(const std::string& name) const = 0;

  /// A new element, not yet in the page, created from its start tag.
  virtual HtmlNodeRef CreateElement(const std::string& start_tag) = 0;

  /// The number of the document mode in which the control shows the page.
  virtual int DocumentMode() const = 0;

  /// The height in pixels of the visible part of the page.
  virtual int BodyClientHeight() const = 0;

  /// The element that has the focus whenever the page has it; the body or an empty handle if no
  /// element has.
  virtual HtmlNodeRef ActiveElement() const = 0;

  /// The element that raised the event being handled; empty if no event is being handled.
  virtual HtmlNodeRef EventSource() const = 0;

  /// The key of the event being handled; key 0 if no event is being handled.
  virtual KeyPress EventKey() const = 0;
};

/// Receives the events of the page's document and window, on the user-interface thread.
class HtmlDocumentEvents {
 public:
  virtual ~HtmlDocumentEvents() = default;
  virtual void doc_onclick() = 0;

  /// Whether the drag may go on.
  virtual bool doc_ondragstart() = 0;

  /// A key was pressed on the page. Returns whether the page may act on it.
  virtual bool doc_onkeydown() { return true; }

  /// The size or the zoom of the page has changed.
  virtual void window_onresize() {}
};

}  // namespace kitbay::platform
