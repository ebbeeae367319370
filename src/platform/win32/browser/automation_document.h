#pragma once

#include <windows.h>

#include <oleauto.h>
#include <wrl/client.h>

#include <memory>
#include <string>
#include <utility>

#include "platform/html_document.h"

namespace kitbay::platform::win32 {

/// The control's document, late bound.
class AutomationDocument final : public HtmlDocument {
 public:
  explicit AutomationDocument(Microsoft::WRL::ComPtr<IDispatch> document)
      : document_(std::move(document)) {}

  HtmlNodeRef AllItem(const std::string& id) const override;
  std::unique_ptr<HtmlNodeList> GetElementsByName(const std::string& name) const override;
  HtmlNodeRef CreateElement(const std::string& start_tag) override;
  int DocumentMode() const override;
  int BodyClientHeight() const override;
  HtmlNodeRef ActiveElement() const override;
  HtmlNodeRef EventSource() const override;
  KeyPress EventKey() const override;

 private:
  /// The event being handled; null if there is none.
  Microsoft::WRL::ComPtr<IDispatch> Event() const;

  Microsoft::WRL::ComPtr<IDispatch> document_;
};

}  // namespace kitbay::platform::win32
