#pragma once

#include <memory>
#include <stdexcept>
#include <string>
#include <vector>

#include "platform/html_document.h"

namespace kitbay::view {

/// The calls of a `RecordingPage`, in order: "CreateElement <div>", "new: InsertAdjacentHtml
/// afterBegin <b>", "list: AppendChild new".
using PageCalls = std::vector<std::string>;

/// An element that only records what is put into it.
class RecordingElement : public platform::HtmlNode {
 public:
  RecordingElement(PageCalls& calls, std::string name) : calls_(calls), name_(std::move(name)) {}

  const std::string& name() const { return name_; }

  void SetInnerHtml(const std::string& markup) override { Note("SetInnerHtml " + markup); }
  void InsertAdjacentHtml(const std::string& where, const std::string& markup) override {
    Note("InsertAdjacentHtml " + where + " " + markup);
  }
  void AppendChild(const platform::HtmlNodeRef& child) override {
    Note("AppendChild " + dynamic_cast<const RecordingElement&>(*child).name());
  }

  void MergeAttributes(const platform::HtmlNodeRef& source) override {
    Note("MergeAttributes " + dynamic_cast<const RecordingElement&>(*source).name());
  }

  std::string Id() const override { Unasked(); }
  std::string TagName() const override { Unasked(); }
  std::string Value() const override { Unasked(); }
  bool Disabled() const override { Unasked(); }
  void SetDisabled(bool /*disabled*/) override { Unasked(); }
  std::string Src() const override { Unasked(); }
  void SetSrc(const std::string& /*src*/) override { Unasked(); }
  std::string InnerText() const override { Unasked(); }
  void SetInnerText(const std::string& /*text*/) override { Unasked(); }
  std::string InnerHtml() const override { Unasked(); }
  std::string Style(const std::string& /*property*/) const override { Unasked(); }
  void SetStyle(const std::string& /*property*/, const std::string& /*value*/) override {
    Unasked();
  }
  std::string Property(const std::string& /*name*/) const override { Unasked(); }
  void SetProperty(const std::string& name, const std::string& value) override {
    Note("SetProperty " + name + " " + value);
  }
  int ScrollTop() const override { Unasked(); }
  void SetScrollTop(int /*pixels*/) override { Unasked(); }
  void Focus() override { Unasked(); }
  void SetActive() override { Unasked(); }
  void Click() override { Unasked(); }
  int StylePixelHeight() const override { Unasked(); }
  platform::HtmlNodeRef ParentElement() const override { Unasked(); }
  int ChildCount() const override { Unasked(); }
  platform::HtmlNodeRef Child(int /*index*/) const override { Unasked(); }
  int ChildNodeCount() const override { Unasked(); }
  platform::HtmlNodeRef ChildNode(int /*index*/) const override { Unasked(); }
  std::vector<platform::HtmlNodeRef> Children() const override { Unasked(); }
  std::vector<platform::HtmlNodeRef> ElementsByTag(const std::string& /*tag*/) const override {
    Unasked();
  }
  void RemoveNode(bool /*deep*/) override { Unasked(); }

 private:
  void Note(const std::string& call) { calls_.push_back(name_ + ": " + call); }
  [[noreturn]] static void Unasked() { throw std::logic_error("not for building a row"); }

  PageCalls& calls_;
  std::string name_;
};

/// A page on which every element exists and that only records what is put into it, byte for byte.
class RecordingPage : public platform::HtmlDocument {
 public:
  platform::HtmlNodeRef AllItem(const std::string& id) const override {
    return std::make_shared<RecordingElement>(calls_, id);
  }
  platform::HtmlNodeRef CreateElement(const std::string& start_tag) override {
    calls_.push_back("CreateElement " + start_tag);
    return std::make_shared<RecordingElement>(calls_, "new");
  }
  std::unique_ptr<platform::HtmlNodeList> GetElementsByName(
      const std::string& /*name*/) const override {
    throw std::logic_error("not for building a row");
  }
  int DocumentMode() const override { throw std::logic_error("not for building a row"); }
  int BodyClientHeight() const override { throw std::logic_error("not for building a row"); }
  platform::HtmlNodeRef ActiveElement() const override { return nullptr; }
  platform::HtmlNodeRef EventSource() const override { return nullptr; }
  platform::KeyPress EventKey() const override { return {}; }

  const PageCalls& calls() const { return calls_; }

 private:
  mutable PageCalls calls_;
};

}  // namespace kitbay::view
