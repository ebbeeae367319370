#pragma once

#include <windows.h>

#include <ole2.h>
#include <unknwn.h>
#include <wrl/client.h>

#include <atomic>
#include <type_traits>
#include <utility>

namespace kitbay::platform::win32 {

/// The reference count of a COM object, which is created with one reference and destroyed with its
/// last.
template <typename... Interfaces>
class CountedObject : public Interfaces... {
 public:
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }

  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) {
      delete this;
    }
    return left;
  }

  CountedObject(const CountedObject&) = delete;
  CountedObject& operator=(const CountedObject&) = delete;

 protected:
  /// Every base is constructed from the same `state`.
  template <typename... State>
  explicit CountedObject(const State&... state) : Interfaces(state...)... {}
  virtual ~CountedObject() = default;

 private:
  std::atomic<ULONG> references_{1};
};

/// Takes over the one reference that `object` was created with. `ComPtr::Attach` cannot do it: the
/// cross toolchain's version adds a reference of its own.
template <typename Object>
Microsoft::WRL::ComPtr<Object> Adopt(Object* object) {
  Microsoft::WRL::ComPtr<Object> owner;
  *owner.GetAddressOf() = object;
  return owner;
}

/// Whether an object with `Interface` supports `id`: the interface itself and those that it
/// extends.
template <class Interface>
bool AnswersFor(REFIID id) {
  return id == __uuidof(Interface) ||
         (std::is_base_of_v<IDispatch, Interface> && id == __uuidof(IDispatch)) ||
         (std::is_base_of_v<IOleWindow, Interface> && id == __uuidof(IOleWindow));
}

/// A COM object composed of parts, created with one reference. Each part implements the methods of
/// one interface, which it names as `Interface`, and leaves those of IUnknown to this class. Every
/// part is constructed from the same state.
template <class FirstPart, class... Parts>
class ObjectOfParts : public CountedObject<FirstPart, Parts...> {
 public:
  STDMETHODIMP QueryInterface(REFIID id, void** object) override {
    if (object == nullptr) {
      return E_POINTER;
    }
    *object = nullptr;
    if (id == __uuidof(IUnknown)) {
      *object = static_cast<typename FirstPart::Interface*>(this);
    } else {
      (void)(Offer<FirstPart>(id, object) || ... || Offer<Parts>(id, object));
    }
    if (*object == nullptr) {
      return E_NOINTERFACE;
    }
    this->AddRef();
    return S_OK;
  }

 protected:
  using CountedObject<FirstPart, Parts...>::CountedObject;

 private:
  template <class Part>
  bool Offer(REFIID id, void** object) {
    if (!AnswersFor<typename Part::Interface>(id)) {
      return false;
    }
    *object = static_cast<typename Part::Interface*>(this);
    return true;
  }
};

/// A part for an event interface: supports only late-bound calls, without type information.
template <class EventInterface>
class EventPart : public EventInterface {
 public:
  using Interface = EventInterface;
  STDMETHODIMP GetTypeInfoCount(UINT* count) override {
    if (count == nullptr) {
      return E_POINTER;
    }
    *count = 0;
    return S_OK;
  }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return DISP_E_UNKNOWNNAME;
  }
};

/// A new COM object with one reference.
template <class Object, class... Arguments>
Microsoft::WRL::ComPtr<Object> MakeComObject(Arguments&&... arguments) {
  return Adopt(new Object(std::forward<Arguments>(arguments)...));
}

/// Whether two references are to one object: they return the same IUnknown. Null is no object.
inline bool IsSameObject(IUnknown* first, IUnknown* second) {
  if (first == nullptr || second == nullptr) {
    return false;
  }
  Microsoft::WRL::ComPtr<IUnknown> identity;
  Microsoft::WRL::ComPtr<IUnknown> other_identity;
  if (FAILED(first->QueryInterface(IID_PPV_ARGS(&identity)))) {
    return false;
  }
  if (FAILED(second->QueryInterface(IID_PPV_ARGS(&other_identity)))) {
    return false;
  }
  // Compares the pointers themselves: this toolchain's ComPtr only compares whether both are null.
  return identity.Get() == other_identity.Get();
}

}  // namespace kitbay::platform::win32
