#pragma once

#include <windows.h>

#include <objbase.h>
#include <unknwn.h>

#include <atomic>
#include <optional>
#include <vector>

#include "module.h"

namespace ovalink {

/// Creates an object with one reference. May throw.
using CreateObject = IDispatch* (*)();

/// The class object of one of the library's classes, created with one reference.
class ClassObject : public IClassFactory {
 public:
  explicit ClassObject(CreateObject create) : create_(create) {}

  STDMETHODIMP QueryInterface(REFIID iid, void** object) override;
  STDMETHODIMP_(ULONG) AddRef() override;
  STDMETHODIMP_(ULONG) Release() override;
  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID iid, void** object) override;
  STDMETHODIMP LockServer(BOOL lock) override;

 private:
  virtual ~ClassObject() = default;

  ModuleLock lock_;
  std::atomic<ULONG> references_{1};
  CreateObject create_;
};

}  // namespace ovalink
