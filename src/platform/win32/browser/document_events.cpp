#include "platform/win32/browser/document_events.h"

#include <olectl.h>

#include <mshtmdid.h>
#include <mshtml.h>

#include "base/failure.h"
#include "platform/win32/browser/automation_node.h"
#include "platform/win32/com/com_failure.h"
#include "platform/win32/com/counted_object.h"

namespace kitbay::platform::win32 {
namespace {

constexpr DISPID kOnClick = DISPID_HTMLDOCUMENTEVENTS_ONCLICK;
constexpr DISPID kOnKeyDown = DISPID_HTMLDOCUMENTEVENTS_ONKEYDOWN;
constexpr DISPID kOnResize = DISPID_EVMETH_ONRESIZE;
constexpr auto kOnDragStart = static_cast<DISPID>(DISPID_HTMLDOCUMENTEVENTS_ONDRAGSTART);

}  // namespace

class DocumentEventSinkPart : public EventPart<HTMLDocumentEvents> {
 public:
  explicit DocumentEventSinkPart(HtmlDocumentEvents* receiver) : receiver_(receiver) {}

  /// The document may hold this sink longer than the receiver lives.
  void Silence() { receiver_ = nullptr; }

  STDMETHODIMP Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result, EXCEPINFO*,
                      UINT*) override {
    if (receiver_ == nullptr) {
      return S_OK;
    }
    try {
      switch (event) {
        case kOnClick:
          receiver_->doc_onclick();
          return Answer(true, result);
        case kOnDragStart:
          return Answer(receiver_->doc_ondragstart(), result);
        case kOnKeyDown:
          return Answer(receiver_->doc_onkeydown(), result);
        default:
          return DISP_E_MEMBERNOTFOUND;
      }
    } catch (...) {
      return ReportCurrentException();
    }
  }

 private:
  /// False cancels what the page would do on the event.
  static HRESULT Answer(bool go_on, VARIANT* result) {
    if (result == nullptr) {
      return S_OK;
    }
    result->vt = VT_BOOL;
    result->boolVal = go_on ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
  }

  HtmlDocumentEvents* receiver_;
};

class WindowEventSinkPart : public EventPart<HTMLWindowEvents> {
 public:
  explicit WindowEventSinkPart(HtmlDocumentEvents* receiver) : receiver_(receiver) {}

  /// The window may hold this sink longer than the receiver lives.
  void Silence() { receiver_ = nullptr; }

  STDMETHODIMP Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS*, VARIANT*, EXCEPINFO*,
                      UINT*) override {
    if (receiver_ == nullptr || event != kOnResize) {
      return S_OK;
    }
    try {
      receiver_->window_onresize();
      return S_OK;
    } catch (...) {
      return ReportCurrentException();
    }
  }

 private:
  HtmlDocumentEvents* receiver_;
};

class WindowEventSink final : public ObjectOfParts<WindowEventSinkPart> {
 public:
  explicit WindowEventSink(HtmlDocumentEvents* receiver) : ObjectOfParts(receiver) {}
};

class DocumentEventSink final : public ObjectOfParts<DocumentEventSinkPart> {
 public:
  explicit DocumentEventSink(HtmlDocumentEvents* receiver) : ObjectOfParts(receiver) {}
};

DocumentEvents::DocumentEvents(IDispatch& document, HtmlDocumentEvents& events)
    : sink_(MakeComObject<DocumentEventSink>(&events)),
      window_sink_(MakeComObject<WindowEventSink>(&events)),
      connection_(document, __uuidof(HTMLDocumentEvents), *sink_.Get()) {
  try {
    window_connection_ = Connection(*RequireObject(document, "parentWindow").Get(),
                                    __uuidof(HTMLWindowEvents), *window_sink_.Get());
  } catch (const base::Failure&) {
    // A window that does not report its size: the lists keep the height at which they were filled.
  }
}

DocumentEvents::~DocumentEvents() {
  sink_->Silence();
  window_sink_->Silence();
}

}  // namespace kitbay::platform::win32
