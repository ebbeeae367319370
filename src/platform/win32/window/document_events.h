#pragma once

#include <windows.h>

#include <oleauto.h>
#include <wrl/client.h>

#include "platform/html_document.h"
#include "platform/win32/window/connection.h"

namespace kitbay::platform::win32 {

class DocumentEventSink;

/// Passes a document's events on for as long as it lives.
class DocumentEvents {
 public:
  /// Throws `base::Failure` with the HRESULT when the document's events cannot be had.
  DocumentEvents(IDispatch& document, HtmlDocumentEvents& events);
  ~DocumentEvents();
  DocumentEvents(const DocumentEvents&) = delete;
  DocumentEvents& operator=(const DocumentEvents&) = delete;

 private:
  Microsoft::WRL::ComPtr<DocumentEventSink> sink_;
  Connection connection_;
};

}  // namespace kitbay::platform::win32
