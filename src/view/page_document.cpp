#include "view/page_document.h"

#include "base/failure.h"

namespace kitbay::view {

using base::Failure;
using base::RuntimeError;

const platform::HtmlNodeRef& Needed(const platform::HtmlNodeRef& node) {
  if (!node) {
    throw Failure(RuntimeError::kObjectVariableNotSet);
  }
  return node;
}

platform::HtmlDocument& PageDocument::document() const {
  if (!document_) {
    throw Failure(RuntimeError::kObjectVariableNotSet);
  }
  return *document_;
}

platform::HtmlNodeRef PageDocument::Element(const std::string& id) const {
  return Needed(document().AllItem(id));
}

}  // namespace kitbay::view
