#pragma once

#include <windows.h>

#include <objbase.h>

#include "module.h"
#include "platform/win32/com/class_factory.h"
#include "platform/win32/com/counted_object.h"

namespace ovalink {

/// Creates an object with one reference. May throw.
using CreateObject = IDispatch* (*)();

/// The class object of one of the library's classes, created with one reference.
class ClassObject : public kitbay::platform::win32::ClassFactory {
 public:
  explicit ClassObject(CreateObject create)
      : ClassFactory([create](REFIID iid, void** object) {
          return kitbay::platform::win32::Adopt(create())->QueryInterface(iid, object);
        }) {}

  STDMETHODIMP LockServer(BOOL lock) override {
    ModuleLock::Hold(lock != FALSE);
    return S_OK;
  }

 private:
  ModuleLock lock_;
};

}  // namespace ovalink
