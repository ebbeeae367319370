#pragma once

#include <wrl/client.h>

#include <map>
#include <memory>
#include <unordered_map>
#include <vector>

#include "dom_object.h"
#include "helper_link.h"
#include "member_names.h"

namespace kitbay::web_browser {

/** All objects of one browser that a host holds, and the calls on them. */
class DomSession : public std::enable_shared_from_this<DomSession> {
 public:
  /** The link exists until Detach. */
  explicit DomSession(HelperLink& link) : link_(&link) {}

  /** From now on, every call returns RPC_E_DISCONNECTED. */
  void Detach() { link_ = nullptr; }

  MemberNames& names() { return names_; }

  /**
   * The current document; a new object for each document that is loaded. Empty before the first.
   */
  Microsoft::WRL::ComPtr<IDispatch> Document();

  /** A call on an object, as IDispatch::Invoke. */
  HRESULT Invoke(DomReference object, DISPID id, WORD flags, const DISPPARAMS& parameters,
                 VARIANT* result, EXCEPINFO* exception);

  /**
   * Some members of a collection, starting at `position`; `got` is their number, at most `count`.
   */
  HRESULT Members(DomReference collection, ULONG position, ULONG count, VARIANT* members,
                  ULONG& got);

  /**
   * Reports a numbered event of a document or its window to the host. While the host handles it,
   * the number names the event of the page's window. Returns whether the host cancels it.
   */
  bool FireEvent(int generation, int number, const std::wstring& type);

  /** Called for an object that the host has released for good. */
  void Forget(const DomObject& object);

 private:
  Json Call(DomReference object, const std::wstring& name, int flags, Json arguments);
  Microsoft::WRL::ComPtr<DomObject> ObjectFor(DomReference reference);
  HRESULT Enumerate(DomReference collection, VARIANT* result);
  DomObject* FindLive(DomReference reference) const;
  Json ToJson(const VARIANT& value, int generation) const;
  HRESULT FromJson(const Json& value, int generation, VARIANT* result);
  Microsoft::WRL::ComPtr<IDispatch> PresentEvent(int generation);

  HelperLink* link_;
  MemberNames names_;
  std::map<DomReference, DomObject*> live_;
  std::unordered_map<const IUnknown*, DomReference> references_;  // Of the live objects.
  std::vector<DomReference> released_;
  int event_ = 0;
};

}  // namespace kitbay::web_browser
