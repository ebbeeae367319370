#pragma once

#include <memory>
#include <optional>

#include "com_object.h"
#include "connection_point.h"

namespace kitbay::web_browser {

class DomSession;

/** An object of a page: which document of the browser, and which object in that document. */
struct DomReference {
  int generation = 0;
  int handle = 0;
  auto operator<=>(const DomReference&) const = default;
};

/** The handles of a document itself and of its window. */
inline constexpr int kDocumentHandle = 1;
inline constexpr int kWindowHandle = 2;

/** A late-bound object of a page. Documents and their windows are also sources of events. */
class DomObject final : public ComObject<IDispatch, IConnectionPointContainer> {
 public:
  DomObject(std::shared_ptr<DomSession> session, DomReference reference);

  const DomReference& reference() const { return reference_; }

  /**
   * Calls the sinks of a document or window; `event` is the event object. Returns whether one of
   * them cancels the event.
   */
  bool Fire(DISPID id, IDispatch* event);
  /** Whether a sink takes the event object as an argument. */
  bool WantsEventObject() const { return events_ && events_->with_object.HasSinks(); }

  STDMETHODIMP QueryInterface(REFIID id, void** result) override;
  STDMETHODIMP GetTypeInfoCount(UINT* count) override;
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT count, LCID, DISPID* ids) override;
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD flags, DISPPARAMS* parameters, VARIANT* result,
                      EXCEPINFO* exception, UINT*) override;
  STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints**) override { return E_NOTIMPL; }
  STDMETHODIMP FindConnectionPoint(REFIID id, IConnectionPoint** point) override;

 private:
  ~DomObject() override;

  struct Events {
    Events(IConnectionPointContainer* owner, REFIID plain_id, REFIID with_object_id);
    IID plain_id;
    IID with_object_id;
    ConnectionPoint plain;
    ConnectionPoint with_object;
  };

  std::shared_ptr<DomSession> session_;
  DomReference reference_;
  std::optional<Events> events_;
};

}  // namespace kitbay::web_browser
