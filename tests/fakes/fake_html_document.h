#pragma once

#include <memory>
#include <string>

#include "base/failure.h"
#include "platform/html_document.h"

namespace kitbay::fakes {

struct FakePage;

/// A page in memory with a real tree, parsed as a browser parses it in quirks mode. Handles to its
/// nodes stay valid for as long as somebody holds them. Members are named in failures as they are
/// in the interfaces: "AllItem", "SetStyle".
class FakeHtmlDocument : public platform::HtmlDocument {
 public:
  /// `base_url` ends in "/"; relative image sources are read against it.
  explicit FakeHtmlDocument(const std::string& page_markup,
                            std::string base_url = "file:///C:/Program Files/Kitbay/");

  platform::HtmlNodeRef AllItem(const std::string& id) const override;
  std::unique_ptr<platform::HtmlNodeList> GetElementsByName(const std::string& name) const override;
  platform::HtmlNodeRef CreateElement(const std::string& start_tag) override;
  int DocumentMode() const override;
  int BodyClientHeight() const override;
  platform::HtmlNodeRef ActiveElement() const override;
  platform::HtmlNodeRef EventSource() const override;
  platform::KeyPress EventKey() const override;

  void set_document_mode(int mode);
  void set_body_client_height(int pixels);

  /// Sets the element at which the event being handled arose; empty for none.
  void set_event_source(const platform::HtmlNodeRef& source);

  /// Where events go; null for nowhere.
  void SetEvents(platform::HtmlDocumentEvents* events);

  /// Clicks on a node of the page, as a user does: a disabled control and a document without
  /// receiver raise nothing. Returns whether the event was raised. Throws `std::invalid_argument`
  /// for a node that is not on the page.
  bool Click(const platform::HtmlNodeRef& node);

  /// Begins to drag a node of the page; returns whether the drag may go on.
  bool StartDrag(const platform::HtmlNodeRef& node);

  /// Presses a key on the element that has the focus, as a user does. Where the page may, Enter and
  /// Space press a button; returns whether it might do what the key does there.
  bool Press(const platform::KeyPress& key);

  /// Moves the focus to the next element on the way of Tab, or to the one before; past the last it
  /// leaves the page. Returns the element; empty when there is none.
  platform::HtmlNodeRef PressTab(bool backwards = false);

  /// Shows the page in another height, in pixels.
  void Resize(int height);

  /// From now on every call fails as for a page that the browser has left.
  void MakeStale();

  /// How many late-bound calls the document and its nodes would have received, were they real ones.
  int calls() const;

  /// The n-th call from now on fails, counted from 1 over all members.
  void FailCall(int n, const base::Failure& failure);

  /// Each further call of `member` fails, or only the n-th of them when `n` is not 0.
  void FailMember(const std::string& member, const base::Failure& failure, int n = 0);

  /// Takes back all failures that were ordered.
  void FailNothing();

  // For looking at the page in tests: these neither count nor fail as calls do.

  /// The first element of the page with that id or name; empty when there is none.
  platform::HtmlNodeRef ById(const std::string& id) const;
  platform::HtmlNodeRef Body() const;

  /// The node's markup.
  static std::string Outer(const platform::HtmlNodeRef& node);

  /// The node's normalized tree, as `fakes::TreeText` writes it; without a node, the body's.
  static std::string TreeText(const platform::HtmlNodeRef& node);
  std::string TreeText() const;

 private:
  std::shared_ptr<FakePage> page_;
};

}  // namespace kitbay::fakes
