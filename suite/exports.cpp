#include <windows.h>

#include <objbase.h>
#include <array>

#include <string>

#include "class_object.h"
#include "file_system_object.h"
#include "module.h"
#include "platform/win32/com/class_registration.h"
#include "platform/win32/com/com_failure.h"
#include "platform/win32/com/counted_object.h"
#include "suite.h"
#include "transport.h"
#include "url_download.h"

namespace ovalink {
namespace {

namespace win32 = kitbay::platform::win32;

struct SuiteClass {
  GUID id;
  const wchar_t* prog_id;
  CreateObject create;
};

template <typename Object>
IDispatch* Create() {
  return static_cast<IDispatch*>(new Object);
}

const std::array<SuiteClass, 3>& SuiteClasses() {
  static const std::array<SuiteClass, 3> classes = {
      SuiteClass{__uuidof(::FileSystemObject), L"FileSystemLib.FileSystemObject",
                 &Create<FileSystemObject>},
      SuiteClass{__uuidof(::xTransport), L"XMLRPCTRANSPORT.xTransport", &Create<Transport>},
      SuiteClass{__uuidof(::URLDownload), L"URLDownloadLib.URLDownload", &Create<UrlDownload>},
  };
  return classes;
}

win32::ServerRegistration Registration() {
  win32::ServerRegistration server;
  for (const SuiteClass& entry : SuiteClasses()) {
    server.classes.push_back({entry.id, entry.prog_id});
  }
  return server;
}

}  // namespace
}  // namespace ovalink

STDAPI DllGetClassObject(REFCLSID class_id, REFIID iid, void** object) {
  if (object == nullptr) {
    return E_POINTER;
  }
  *object = nullptr;
  for (const ovalink::SuiteClass& entry : ovalink::SuiteClasses()) {
    if (entry.id != class_id) {
      continue;
    }
    try {
      return kitbay::platform::win32::Adopt(new ovalink::ClassObject(entry.create))
          ->QueryInterface(iid, object);
    } catch (...) {
      return kitbay::platform::win32::ReportCurrentException();
    }
  }
  return CLASS_E_CLASSNOTAVAILABLE;
}

STDAPI DllCanUnloadNow() { return ovalink::ModuleLock::CanUnload() ? S_OK : S_FALSE; }

STDAPI DllRegisterServer() {
  try {
    kitbay::platform::win32::KeepRegistered(ovalink::Registration());
    return S_OK;
  } catch (...) {
    return kitbay::platform::win32::ReportCurrentException();
  }
}

STDAPI DllUnregisterServer() {
  try {
    kitbay::platform::win32::Unregister(ovalink::Registration());
    return S_OK;
  } catch (...) {
    return kitbay::platform::win32::ReportCurrentException();
  }
}
