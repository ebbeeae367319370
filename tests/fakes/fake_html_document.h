#pragma once

#include <memory>
#include <string>

#include "base/failure.h"
#include "platform/html_document.h"

namespace kitbay::fakes {

struct FakePage;

/// A page in memory with a real tree, parsed as a browser parses it in quirks mode. Handles to its
/// nodes stay valid for as long as somebody holds them. Failures name members as in the interfaces:
/// "AllItem", "SetStyle".
class FakeHtmlDocument : public platform::HtmlDocument {
 public:
  /// `base_url` ends in "/"; relative image sources are resolved against it.
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

  /// Sets the element that raised the event being handled; empty for none.
  void set_event_source(const platform::HtmlNodeRef& source);

  /// Where events go; null for nowhere.
  void SetEvents(platform::HtmlDocumentEvents* events);

  /// Clicks a node of the page, as a user does: a disabled control, or a document without receiver,
  /// raises nothing. Returns whether the event was raised. Throws `std::invalid_argument` for a
  /// node that is not on the page.
  bool Click(const platform::HtmlNodeRef& node);

  /// Starts to drag a node of the page; returns whether the drag may go on.
  bool StartDrag(const platform::HtmlNodeRef& node);

  /// Presses a key on the focused element, as a user does. If the page may act on the key, Enter
  /// and Space press a button. Returns whether the page may act on it.
  bool Press(const platform::KeyPress& key);

  /// Moves the focus to the next element in Tab order, or to the previous one; after the last one
  /// it leaves the page. Returns the element; empty if there is none.
  platform::HtmlNodeRef PressTab(bool backwards = false);

  /// Changes the height of the page's view, in pixels.
  void Resize(int height);

  /// From now on every call fails as for a page that the browser has left.
  void MakeStale();

  /// How many late-bound calls a real document and its nodes would have received.
  int calls() const;

  /// Makes the n-th call from now on fail, counted from 1 over all members.
  void FailCall(int n, const base::Failure& failure);

  /// Makes each further call of `member` fail, or only the n-th of them if `n` is not 0.
  void FailMember(const std::string& member, const base::Failure& failure, int n = 0);

  /// Cancels all arranged failures.
  void FailNothing();

  // For tests to inspect the page: these neither count nor fail as calls do.

  /// The first element of the page with that id or name; empty if there is none.
  platform::HtmlNodeRef ById(const std::string& id) const;
  platform::HtmlNodeRef Body() const;

  /// The node's markup.
  static std::string Outer(const platform::HtmlNodeRef& node);

  /// The node's normalised tree, as `fakes::TreeText` writes it; without a node, the body's.
  static std::string TreeText(const platform::HtmlNodeRef& node);
  std::string TreeText() const;

 private:
  std::shared_ptr<FakePage> page_;
};

}  // namespace kitbay::fakes
