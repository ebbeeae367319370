#pragma once

#include <windows.h>

#include <oleauto.h>
#include <wrl/client.h>

#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "platform/html_document.h"
#include "platform/win32/com/automation.h"

namespace kitbay::platform::win32 {

/// A node of the control's document, late bound.
class AutomationNode final : public HtmlNode {
 public:
  explicit AutomationNode(Microsoft::WRL::ComPtr<IDispatch> node) : node_(std::move(node)) {}

  std::string Id() const override;
  std::string TagName() const override;
  std::string Value() const override;
  bool Disabled() const override;
  void SetDisabled(bool disabled) override;
  std::string Src() const override;
  void SetSrc(const std::string& src) override;
  std::string InnerText() const override;
  void SetInnerText(const std::string& text) override;
  std::string InnerHtml() const override;
  void SetInnerHtml(const std::string& markup) override;
  std::string Style(const std::string& property) const override;
  void SetStyle(const std::string& property, const std::string& value) override;
  std::string Property(const std::string& name) const override;
  void SetProperty(const std::string& name, const std::string& value) override;
  int ScrollTop() const override;
  void SetScrollTop(int pixels) override;
  void Focus() override;
  void SetActive() override;
  void Click() override;
  int StylePixelHeight() const override;
  HtmlNodeRef ParentElement() const override;
  int ChildCount() const override;
  HtmlNodeRef Child(int index) const override;
  int ChildNodeCount() const override;
  HtmlNodeRef ChildNode(int index) const override;
  std::vector<HtmlNodeRef> Children() const override;
  std::vector<HtmlNodeRef> ElementsByTag(const std::string& tag) const override;
  void InsertAdjacentHtml(const std::string& where, const std::string& markup) override;
  void AppendChild(const HtmlNodeRef& child) override;
  void MergeAttributes(const HtmlNodeRef& source) override;
  void RemoveNode(bool deep) override;

 private:
  std::string Text(const char* member) const;
  void Put(const char* member, const Variant& value);

  /// The object behind a handle. Fails with 91 for an empty handle and for handles of other
  /// documents.
  static IDispatch* ObjectOf(const HtmlNodeRef& node);

  Microsoft::WRL::ComPtr<IDispatch> node_;
};

/// The node that a member returned; an empty handle if it returned nothing.
HtmlNodeRef ToNode(const Variant& value);

/// The object that `member` of `object` returns. Fails with 91 if it returns none.
Microsoft::WRL::ComPtr<IDispatch> RequireObject(IDispatch& object, const char* member);

/// The member at `index` of a list of nodes; an empty handle past its end.
HtmlNodeRef ItemOf(IDispatch& list, int index);

/// All members of a list of nodes, fetched in batches through its enumerator. Fails with 13 if it
/// has no enumerator.
std::vector<HtmlNodeRef> AllOf(IDispatch& list);

}  // namespace kitbay::platform::win32
