#pragma once

#include <windows.h>

#include <oleauto.h>
#include <wrl/client.h>

#include "platform/html_document.h"
#include "platform/win32/browser/connection.h"

namespace kitbay::platform::win32 {

class DocumentEventSink;
class WindowEventSink;

/// Passes on the events of a document and its window for as long as it lives.
class DocumentEvents {
 public:
  /// Throws `base::Failure` with the HRESULT if it cannot connect to the events.
  DocumentEvents(IDispatch& document, HtmlDocumentEvents& events);
  ~DocumentEvents();
  DocumentEvents(const DocumentEvents&) = delete;
  DocumentEvents& operator=(const DocumentEvents&) = delete;

 private:
  Microsoft::WRL::ComPtr<DocumentEventSink> sink_;
  Microsoft::WRL::ComPtr<WindowEventSink> window_sink_;
  Connection connection_;
  Connection window_connection_;
};

}  // namespace kitbay::platform::win32
