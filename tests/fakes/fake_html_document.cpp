#include "fakes/fake_html_document.h"

#include <algorithm>
#include <iterator>
#include <stdexcept>
#include <utility>
#include <vector>

#include "fakes/fake_html_parser.h"
#include "fakes/fake_html_text.h"
#include "fakes/fake_page.h"
#include "fakes/fake_style.h"

namespace kitbay::fakes {
namespace {

using base::Failure;
using platform::HtmlNodeRef;

class FakeHtmlNodeList : public platform::HtmlNodeList {
 public:
  FakeHtmlNodeList(std::shared_ptr<FakePage> page, std::vector<DomNode*> nodes)
      : page_(std::move(page)), nodes_(std::move(nodes)) {}

  int Length() const override {
    page_->Enter("Length");
    return static_cast<int>(nodes_.size());
  }

  HtmlNodeRef Item(int index) const override {
    page_->Enter("Item");
    const auto place = static_cast<std::size_t>(index);
    return MakeHandle(page_, index >= 0 && place < nodes_.size() ? nodes_[place] : nullptr);
  }

 private:
  std::shared_ptr<FakePage> page_;
  std::vector<DomNode*> nodes_;
};

/// Sets the element and the key of the current event, and restores the previous ones.
class EventAt {
 public:
  EventAt(FakePage& page, DomNode* source, const platform::KeyPress& key = {})
      : page_(page),
        before_(std::exchange(page.event_source, source)),
        key_before_(std::exchange(page.event_key, key)) {}
  ~EventAt() {
    page_.event_source = before_;
    page_.event_key = key_before_;
  }
  EventAt(const EventAt&) = delete;
  EventAt& operator=(const EventAt&) = delete;

 private:
  FakePage& page_;
  DomNode* before_;
  platform::KeyPress key_before_;
};

DomNode* FirstWithIdOrName(const FakePage& page, const std::string& id) {
  const std::vector<DomNode*> found = page.tree.WithIdOrName(id);
  return found.empty() ? nullptr : found.front();
}

bool IsHidden(const DomNode& node) {
  return FakeStyle(node.GetAttribute("style").value_or("")).Get("display") == "none";
}

bool IsTabStop(const DomNode& node) {
  const std::string index =
      node.GetAttribute("tabindex").value_or(node.tag == "input" ? "0" : "-1");
  return index != "-1" && !node.GetAttribute("disabled");
}

/// The elements at and below `node` that Tab reaches, in Tab order.
std::vector<DomNode*> TabStops(DomNode& node) {
  if (IsHidden(node)) {
    return {};
  }
  std::vector<DomNode*> stops;
  if (IsTabStop(node)) {
    stops.push_back(&node);
  }
  for (DomNode* child : node.child_elements()) {
    const std::vector<DomNode*> below = TabStops(*child);
    stops.insert(stops.end(), below.begin(), below.end());
  }
  return stops;
}

/// The element that raises an event on `node`.
DomNode& EventElement(const FakePage& page, const HtmlNodeRef& node) {
  DomNode* at = NodeOf(node.get());
  if (at == nullptr || !page.tree.OnPage(*at)) {
    throw std::invalid_argument("the event's node is not on the page");
  }
  return at->kind == NodeKind::kElement ? *at : *at->parent();
}

}  // namespace

void FakePage::Enter(const char* member, int cost) {
  calls += cost;
  if (stale) {
    throw Failure(static_cast<std::int32_t>(0x80010108),
                  "The object invoked has disconnected from its clients.");
  }
  for (OrderedFailure& ordered : failures) {
    if (!ordered.member.empty() && ordered.member != member) {
      continue;
    }
    if (ordered.calls_left == 0) {
      throw Failure(ordered.failure);
    }
    if (--ordered.calls_left > 0) {
      continue;
    }
    const Failure failure = ordered.failure;
    failures.erase(failures.begin() + (&ordered - failures.data()));
    throw Failure(failure);
  }
}

DomNode* FakePage::Active() const {
  const bool is_there = focused != nullptr && tree.OnPage(*focused);
  return is_there && !focused->GetAttribute("disabled") ? focused : nullptr;
}

bool FakePage::RaiseClick(DomNode& source) {
  if (events == nullptr || source.GetAttribute("disabled")) {
    return false;
  }
  const EventAt event(*this, &source);
  events->doc_onclick();
  return true;
}

FakeHtmlDocument::FakeHtmlDocument(const std::string& page_markup, std::string base_url)
    : page_(std::make_shared<FakePage>()) {
  page_->base_url = std::move(base_url);
  ParsePage(page_->tree, page_markup);
}

HtmlNodeRef FakeHtmlDocument::AllItem(const std::string& id) const {
  page_->Enter("AllItem", 2);
  return ById(id);
}

std::unique_ptr<platform::HtmlNodeList> FakeHtmlDocument::GetElementsByName(
    const std::string& name) const {
  page_->Enter("GetElementsByName");
  return std::make_unique<FakeHtmlNodeList>(page_, page_->tree.WithIdOrName(name));
}

HtmlNodeRef FakeHtmlDocument::CreateElement(const std::string& start_tag) {
  page_->Enter("CreateElement");
  const std::string markup = start_tag.starts_with('<') ? start_tag : "<" + start_tag + ">";
  const std::vector<DomNode*> nodes = ParseFragment(page_->tree, "div", markup);
  if (nodes.empty() || nodes.front()->kind != NodeKind::kElement) {
    throw Failure(static_cast<std::int32_t>(0x80070057), "Invalid argument.");
  }
  return MakeHandle(page_, nodes.front());
}

int FakeHtmlDocument::DocumentMode() const {
  page_->Enter("DocumentMode");
  return page_->document_mode;
}

int FakeHtmlDocument::BodyClientHeight() const {
  page_->Enter("BodyClientHeight", 2);
  return page_->body_client_height;
}

HtmlNodeRef FakeHtmlDocument::EventSource() const {
  page_->Enter("EventSource", 3);
  return MakeHandle(page_, page_->event_source);
}

HtmlNodeRef FakeHtmlDocument::ActiveElement() const {
  page_->Enter("ActiveElement");
  DomNode* active = page_->Active();
  return MakeHandle(page_, active != nullptr ? active : page_->tree.Body());
}

platform::KeyPress FakeHtmlDocument::EventKey() const {
  page_->Enter("EventKey", 6);
  return page_->event_key;
}

void FakeHtmlDocument::set_document_mode(int mode) { page_->document_mode = mode; }

void FakeHtmlDocument::set_body_client_height(int pixels) { page_->body_client_height = pixels; }

void FakeHtmlDocument::set_event_source(const HtmlNodeRef& source) {
  page_->event_source = NodeOf(source.get());
}

void FakeHtmlDocument::SetEvents(platform::HtmlDocumentEvents* events) { page_->events = events; }

bool FakeHtmlDocument::Click(const HtmlNodeRef& node) {
  return page_->RaiseClick(EventElement(*page_, node));
}

bool FakeHtmlDocument::Press(const platform::KeyPress& key) {
  constexpr int kEnter = 13;
  constexpr int kSpace = 32;
  DomNode* active = page_->Active();
  DomNode& source = active != nullptr ? *active : *page_->tree.Body();
  bool go_on = true;
  if (page_->events != nullptr) {
    const EventAt event(*page_, &source, key);
    go_on = page_->events->doc_onkeydown();
  }
  if (go_on && source.tag == "input" && (key.code == kEnter || key.code == kSpace)) {
    page_->RaiseClick(source);
  }
  return go_on;
}

HtmlNodeRef FakeHtmlDocument::PressTab(bool backwards) {
  std::vector<DomNode*> stops = TabStops(*page_->tree.Body());
  if (backwards) {
    std::reverse(stops.begin(), stops.end());
  }
  const auto at = std::find(stops.begin(), stops.end(), page_->Active());
  const auto next = at == stops.end() ? stops.begin() : std::next(at);
  page_->focused = next == stops.end() ? nullptr : *next;
  return MakeHandle(page_, page_->focused);
}

void FakeHtmlDocument::Resize(int height) {
  page_->body_client_height = height;
  if (page_->events != nullptr) {
    page_->events->window_onresize();
  }
}

bool FakeHtmlDocument::StartDrag(const HtmlNodeRef& node) {
  DomNode& source = EventElement(*page_, node);
  if (page_->events == nullptr) {
    return true;
  }
  const EventAt event(*page_, &source);
  return page_->events->doc_ondragstart();
}

void FakeHtmlDocument::MakeStale() {
  page_->stale = true;
  page_->events = nullptr;
}

int FakeHtmlDocument::calls() const { return page_->calls; }

void FakeHtmlDocument::FailCall(int n, const Failure& failure) { FailMember("", failure, n); }

void FakeHtmlDocument::FailMember(const std::string& member, const Failure& failure, int n) {
  page_->failures.push_back({member, n, failure});
}

void FakeHtmlDocument::FailNothing() { page_->failures.clear(); }

HtmlNodeRef FakeHtmlDocument::ById(const std::string& id) const {
  return MakeHandle(page_, FirstWithIdOrName(*page_, id));
}

HtmlNodeRef FakeHtmlDocument::Body() const { return MakeHandle(page_, page_->tree.Body()); }

std::string FakeHtmlDocument::Outer(const HtmlNodeRef& node) {
  return OuterMarkup(*NodeOf(node.get()));
}

std::string FakeHtmlDocument::TreeText(const HtmlNodeRef& node) {
  return fakes::TreeText(*NodeOf(node.get()));
}

std::string FakeHtmlDocument::TreeText() const { return TreeText(Body()); }

}  // namespace kitbay::fakes
