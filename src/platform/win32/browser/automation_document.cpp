#include "platform/win32/browser/automation_document.h"

#include <utility>

#include "base/failure.h"
#include "platform/win32/browser/automation_node.h"
#include "platform/win32/com/automation.h"

namespace kitbay::platform::win32 {
namespace {

using Microsoft::WRL::ComPtr;

class AutomationNodeList final : public HtmlNodeList {
 public:
  explicit AutomationNodeList(ComPtr<IDispatch> list) : list_(std::move(list)) {}

  int Length() const override { return GetProperty(*list_.Get(), "length").ToInteger(); }
  HtmlNodeRef Item(int index) const override { return ItemOf(*list_.Get(), index); }

 private:
  ComPtr<IDispatch> list_;
};

}  // namespace

HtmlNodeRef AutomationDocument::AllItem(const std::string& id) const {
  // An empty text names nothing; it does not name the elements without an id.
  if (id.empty()) {
    return nullptr;
  }
  // The index requests the first of several; without it they would come as a list.
  return ToNode(CallMethod(*RequireObject(*document_.Get(), "all").Get(), "item", {id, 0}));
}

std::unique_ptr<HtmlNodeList> AutomationDocument::GetElementsByName(const std::string& name) const {
  ComPtr<IDispatch> list = CallMethod(*document_.Get(), "getElementsByName", {name}).ToObject();
  if (list == nullptr) {
    throw base::Failure(base::RuntimeError::kObjectVariableNotSet);
  }
  return std::make_unique<AutomationNodeList>(std::move(list));
}

HtmlNodeRef AutomationDocument::CreateElement(const std::string& start_tag) {
  return ToNode(CallMethod(*document_.Get(), "createElement", {start_tag}));
}

int AutomationDocument::DocumentMode() const {
  return GetProperty(*document_.Get(), "documentMode").ToInteger();
}

int AutomationDocument::BodyClientHeight() const {
  return GetProperty(*RequireObject(*document_.Get(), "body").Get(), "clientHeight").ToInteger();
}

HtmlNodeRef AutomationDocument::ActiveElement() const {
  return ToNode(GetProperty(*document_.Get(), "activeElement"));
}

ComPtr<IDispatch> AutomationDocument::Event() const {
  const ComPtr<IDispatch> window = RequireObject(*document_.Get(), "parentWindow");
  return GetProperty(*window.Get(), "event").ToObject();
}

KeyPress AutomationDocument::EventKey() const {
  const ComPtr<IDispatch> event = Event();
  if (event == nullptr) {
    return {};
  }
  const auto is_held = [&](const char* key) { return GetProperty(*event.Get(), key).ToBoolean(); };
  return {.code = GetProperty(*event.Get(), "keyCode").ToInteger(),
          .shift = is_held("shiftKey"),
          .control = is_held("ctrlKey"),
          .alt = is_held("altKey")};
}

HtmlNodeRef AutomationDocument::EventSource() const {
  const ComPtr<IDispatch> event = Event();
  return event == nullptr ? nullptr : ToNode(GetProperty(*event.Get(), "srcElement"));
}

}  // namespace kitbay::platform::win32
