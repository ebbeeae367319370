#include "platform/win32/browser/automation_node.h"

#include "base/failure.h"

namespace kitbay::platform::win32 {

using Microsoft::WRL::ComPtr;

HtmlNodeRef ToNode(const Variant& value) {
  if (value.IsNothing()) {
    return nullptr;
  }
  return std::make_shared<AutomationNode>(value.ToObject());
}

ComPtr<IDispatch> RequireObject(IDispatch& object, const char* member) {
  ComPtr<IDispatch> result = GetProperty(object, member).ToObject();
  if (result == nullptr) {
    throw base::Failure(base::RuntimeError::kObjectVariableNotSet);
  }
  return result;
}

HtmlNodeRef ItemOf(IDispatch& list, int index) {
  try {
    return ToNode(CallMethod(list, "item", {index}));
  } catch (const base::Failure& failure) {
    // Lists of elements return nothing past their end; lists of nodes refuse the index.
    if (failure.number() == E_INVALIDARG) {
      return nullptr;
    }
    throw;
  }
}

std::vector<HtmlNodeRef> AllOf(IDispatch& list) {
  std::vector<HtmlNodeRef> nodes;
  for (const Variant& member : MembersOf(list)) {
    nodes.push_back(ToNode(member));
  }
  return nodes;
}

std::string AutomationNode::Text(const char* member) const {
  return GetProperty(*node_.Get(), member).ToText();
}

IDispatch* AutomationNode::ObjectOf(const HtmlNodeRef& node) {
  const auto* automation = dynamic_cast<const AutomationNode*>(node.get());
  if (automation == nullptr) {
    throw base::Failure(base::RuntimeError::kObjectVariableNotSet);
  }
  return automation->node_.Get();
}

void AutomationNode::Put(const char* member, const Variant& value) {
  PutProperty(*node_.Get(), member, value);
}

std::string AutomationNode::Id() const { return Text("id"); }
std::string AutomationNode::TagName() const { return Text("tagName"); }
std::string AutomationNode::Value() const { return Text("value"); }
bool AutomationNode::Disabled() const { return GetProperty(*node_.Get(), "disabled").ToBoolean(); }
void AutomationNode::SetDisabled(bool disabled) { Put("disabled", disabled); }
std::string AutomationNode::Src() const { return Text("src"); }
void AutomationNode::SetSrc(const std::string& src) { Put("src", src); }
std::string AutomationNode::InnerText() const { return Text("innerText"); }
void AutomationNode::SetInnerText(const std::string& text) { Put("innerText", text); }
std::string AutomationNode::InnerHtml() const { return Text("innerHTML"); }
void AutomationNode::SetInnerHtml(const std::string& markup) { Put("innerHTML", markup); }

std::string AutomationNode::Style(const std::string& property) const {
  return GetProperty(*RequireObject(*node_.Get(), "style").Get(), property).ToText();
}

void AutomationNode::SetStyle(const std::string& property, const std::string& value) {
  PutProperty(*RequireObject(*node_.Get(), "style").Get(), property, value);
}

std::string AutomationNode::Property(const std::string& name) const {
  return GetProperty(*node_.Get(), name).ToText();
}

void AutomationNode::SetProperty(const std::string& name, const std::string& value) {
  PutProperty(*node_.Get(), name, value);
}

int AutomationNode::ScrollTop() const { return GetProperty(*node_.Get(), "scrollTop").ToInteger(); }
void AutomationNode::SetScrollTop(int pixels) { Put("scrollTop", pixels); }
void AutomationNode::Focus() { CallMethod(*node_.Get(), "focus"); }
void AutomationNode::SetActive() { CallMethod(*node_.Get(), "setActive"); }
void AutomationNode::Click() { CallMethod(*node_.Get(), "click"); }

int AutomationNode::StylePixelHeight() const {
  return GetProperty(*RequireObject(*node_.Get(), "style").Get(), "pixelHeight").ToInteger();
}

HtmlNodeRef AutomationNode::ParentElement() const {
  return ToNode(GetProperty(*node_.Get(), "parentElement"));
}

int AutomationNode::ChildCount() const {
  return GetProperty(*RequireObject(*node_.Get(), "children").Get(), "length").ToInteger();
}

HtmlNodeRef AutomationNode::Child(int index) const {
  return ItemOf(*RequireObject(*node_.Get(), "children").Get(), index);
}

int AutomationNode::ChildNodeCount() const {
  return GetProperty(*RequireObject(*node_.Get(), "childNodes").Get(), "length").ToInteger();
}

HtmlNodeRef AutomationNode::ChildNode(int index) const {
  return ItemOf(*RequireObject(*node_.Get(), "childNodes").Get(), index);
}

std::vector<HtmlNodeRef> AutomationNode::Children() const {
  return AllOf(*RequireObject(*node_.Get(), "children").Get());
}

std::vector<HtmlNodeRef> AutomationNode::ElementsByTag(const std::string& tag) const {
  const ComPtr<IDispatch> list = CallMethod(*node_.Get(), "getElementsByTagName", {tag}).ToObject();
  if (list == nullptr) {
    throw base::Failure(base::RuntimeError::kObjectVariableNotSet);
  }
  return AllOf(*list.Get());
}

void AutomationNode::InsertAdjacentHtml(const std::string& where, const std::string& markup) {
  CallMethod(*node_.Get(), "insertAdjacentHTML", {where, markup});
}

void AutomationNode::AppendChild(const HtmlNodeRef& child) {
  CallMethod(*node_.Get(), "appendChild", {ObjectOf(child)});
}

void AutomationNode::MergeAttributes(const HtmlNodeRef& source) {
  CallMethod(*node_.Get(), "mergeAttributes", {ObjectOf(source)});
}

void AutomationNode::RemoveNode(bool deep) { CallMethod(*node_.Get(), "removeNode", {deep}); }

}  // namespace kitbay::platform::win32
