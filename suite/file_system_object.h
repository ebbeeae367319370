#pragma once

#include "module.h"
#include "platform/win32/com/dispatch_object.h"
#include "suite.h"

namespace ovalink {

/// FileSystemLib.FileSystemObject.
class FileSystemObject : public kitbay::platform::win32::DispatchObject<::IFileSystemObject> {
 public:
  STDMETHODIMP FileExists(BSTR path, VARIANT_BOOL* exists) override;
  STDMETHODIMP FolderExists(BSTR path, VARIANT_BOOL* exists) override;
  STDMETHODIMP CreateFolder(BSTR path) override;
  STDMETHODIMP DeleteFolder(BSTR path, VARIANT_BOOL force) override;
  STDMETHODIMP CreateTextFile(BSTR path, VARIANT_BOOL overwrite, VARIANT_BOOL unicode,
                              ::ITextStream** stream) override;
  STDMETHODIMP OpenTextFile(BSTR path, IOMode mode, VARIANT_BOOL create, Tristate format,
                            ::ITextStream** stream) override;

 private:
  ModuleLock lock_;
};

}  // namespace ovalink
