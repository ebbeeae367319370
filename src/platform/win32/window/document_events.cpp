#include "platform/win32/window/document_events.h"

#include <olectl.h>
//
#include <mshtmdid.h>
#include <mshtml.h>

#include "platform/win32/com/com_failure.h"
#include "platform/win32/window/com_parts.h"

namespace kitbay::platform::win32 {
namespace {

constexpr DISPID kOnClick = DISPID_HTMLDOCUMENTEVENTS_ONCLICK;
constexpr auto kOnDragStart = static_cast<DISPID>(DISPID_HTMLDOCUMENTEVENTS_ONDRAGSTART);

}  // namespace

class DocumentEventSinkPart : public EventPart<HTMLDocumentEvents> {
 public:
  explicit DocumentEventSinkPart(HtmlDocumentEvents* receiver) : receiver_(receiver) {}

  /// The document may hold this sink longer than the receiver lives.
  void Silence() { receiver_ = nullptr; }

  HRESULT STDMETHODCALLTYPE Invoke(DISPID event, REFIID, LCID, WORD, DISPPARAMS*, VARIANT* result,
                                   EXCEPINFO*, UINT*) override {
    if (receiver_ == nullptr) return S_OK;
    try {
      switch (event) {
        case kOnClick:
          receiver_->doc_onclick();
          return Answer(true, result);
        case kOnDragStart:
          return Answer(receiver_->doc_ondragstart(), result);
        default:
          return DISP_E_MEMBERNOTFOUND;
      }
    } catch (...) {
      return ReportCurrentException();
    }
  }

 private:
  /// False takes back what the page would do on the event.
  static HRESULT Answer(bool go_on, VARIANT* result) {
    if (result == nullptr) return S_OK;
    result->vt = VT_BOOL;
    result->boolVal = go_on ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
  }

  HtmlDocumentEvents* receiver_;
};

class DocumentEventSink final : public ObjectOfParts<DocumentEventSinkPart> {
 public:
  explicit DocumentEventSink(HtmlDocumentEvents* receiver) : ObjectOfParts(receiver) {}
};

DocumentEvents::DocumentEvents(IDispatch& document, HtmlDocumentEvents& events)
    : sink_(MakeComObject<DocumentEventSink>(&events)),
      connection_(document, __uuidof(HTMLDocumentEvents), *sink_.Get()) {}

DocumentEvents::~DocumentEvents() { sink_->Silence(); }

}  // namespace kitbay::platform::win32
