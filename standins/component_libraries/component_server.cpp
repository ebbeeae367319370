// The in-process server in every component library: one class, registered below HKEY_CLASSES_ROOT,
// whose objects do nothing.

#include <windows.h>

#include <objbase.h>

#include <atomic>
#include <memory>
#include <new>
#include <string>

#include "component_identity.h"

namespace {

std::atomic<long> g_objects_and_locks{0};  // DllCanUnloadNow has no object to ask

class CountedInModule {
 public:
  CountedInModule() { ++g_objects_and_locks; }
  ~CountedInModule() { --g_objects_and_locks; }
  CountedInModule(const CountedInModule&) = delete;
  CountedInModule& operator=(const CountedInModule&) = delete;
};

/// Reference counting and QueryInterface for an object with one interface besides IUnknown.
template <class Interface>
class Object : public Interface {
 public:
  virtual ~Object() = default;

  STDMETHODIMP QueryInterface(REFIID iid, void** result) override {
    if (!result) {
      return E_POINTER;
    }
    *result = nullptr;
    if (iid != __uuidof(IUnknown) && iid != __uuidof(Interface)) {
      return E_NOINTERFACE;
    }
    *result = static_cast<Interface*>(this);
    this->AddRef();
    return S_OK;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return ++references_; }
  STDMETHODIMP_(ULONG) Release() override {
    const ULONG left = --references_;
    if (left == 0) {
      delete this;
    }
    return left;
  }

 private:
  CountedInModule counted_;
  std::atomic<ULONG> references_{1};
};

class Component final : public Object<IUnknown> {};

class ComponentFactory final : public Object<IClassFactory> {
 public:
  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** result) override {
    if (!result) {
      return E_POINTER;
    }
    *result = nullptr;
    if (outer) {
      return CLASS_E_NOAGGREGATION;
    }
    auto* component = new (std::nothrow) Component;
    if (!component) {
      return E_OUTOFMEMORY;
    }
    const HRESULT asked = component->QueryInterface(iid, result);
    component->Release();
    return asked;
  }
  STDMETHODIMP LockServer(BOOL lock) override {
    g_objects_and_locks += lock ? 1 : -1;
    return S_OK;
  }
};

struct CloseKey {
  using pointer = HKEY;
  void operator()(HKEY key) const { RegCloseKey(key); }
};
using UniqueKey = std::unique_ptr<HKEY, CloseKey>;

std::wstring ClassKey() { return std::wstring(L"CLSID\\") + kIdentity.clsid; }
std::wstring ProgIdKey() { return kIdentity.progid; }

/// Writes a text value of a key below HKEY_CLASSES_ROOT, creating the key if necessary. Returns the
/// registry's result code.
LSTATUS WriteText(const std::wstring& key, const wchar_t* value, const std::wstring& text) {
  HKEY opened = nullptr;
  const LSTATUS created = RegCreateKeyExW(HKEY_CLASSES_ROOT, key.c_str(), 0, nullptr, 0,
                                          KEY_SET_VALUE, nullptr, &opened, nullptr);
  if (created != ERROR_SUCCESS) {
    return created;
  }
  const UniqueKey owned(opened);
  return RegSetValueExW(opened, value, 0, REG_SZ, reinterpret_cast<const BYTE*>(text.c_str()),
                        static_cast<DWORD>((text.size() + 1) * sizeof(wchar_t)));
}

/// The path of this library; empty on failure.
std::wstring OwnPath() {
  HMODULE module = nullptr;
  if (!GetModuleHandleExW(
          GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
          reinterpret_cast<LPCWSTR>(&OwnPath), &module)) {
    return {};
  }
  std::wstring path(32768, L'\0');
  path.resize(GetModuleFileNameW(module, path.data(), static_cast<DWORD>(path.size())));
  return path;
}

}  // namespace

extern "C" {

HRESULT WINAPI DllGetClassObject(REFCLSID clsid, REFIID iid, void** result) {
  if (!result) {
    return E_POINTER;
  }
  *result = nullptr;
  CLSID own{};
  if (FAILED(CLSIDFromString(kIdentity.clsid, &own)) || clsid != own) {
    return CLASS_E_CLASSNOTAVAILABLE;
  }
  auto* factory = new (std::nothrow) ComponentFactory;
  if (!factory) {
    return E_OUTOFMEMORY;
  }
  const HRESULT asked = factory->QueryInterface(iid, result);
  factory->Release();
  return asked;
}

HRESULT WINAPI DllCanUnloadNow() { return g_objects_and_locks == 0 ? S_OK : S_FALSE; }

HRESULT WINAPI DllRegisterServer() {
  const std::wstring path = OwnPath();
  if (path.empty()) {
    return E_UNEXPECTED;
  }
  const std::wstring server = ClassKey() + L"\\InprocServer32";
  LSTATUS done = WriteText(ClassKey(), nullptr, kIdentity.name);
  if (done == ERROR_SUCCESS) {
    done = WriteText(server, nullptr, path);
  }
  if (done == ERROR_SUCCESS) {
    done = WriteText(server, L"ThreadingModel", L"Apartment");
  }
  if (done == ERROR_SUCCESS) {
    done = WriteText(ClassKey() + L"\\ProgID", nullptr, kIdentity.progid);
  }
  if (done == ERROR_SUCCESS) {
    done = WriteText(ProgIdKey(), nullptr, kIdentity.name);
  }
  if (done == ERROR_SUCCESS) {
    done = WriteText(ProgIdKey() + L"\\CLSID", nullptr, kIdentity.clsid);
  }
  return HRESULT_FROM_WIN32(done);
}

HRESULT WINAPI DllUnregisterServer() {
  HRESULT result = S_OK;
  for (const std::wstring& key : {ClassKey(), ProgIdKey()}) {
    const LSTATUS deleted = RegDeleteTreeW(HKEY_CLASSES_ROOT, key.c_str());
    if (deleted != ERROR_SUCCESS && deleted != ERROR_FILE_NOT_FOUND) {
      result = HRESULT_FROM_WIN32(deleted);
    }
  }
  return result;
}

}  // extern "C"
