#pragma once

#include <oleidl.h>

#include <functional>
#include <string>

#include "com_object.h"

namespace kitbay::web_browser {

/** The control's own drop target, which opens the first dropped file. */
class FileDrops final : public ComObject<IDropTarget> {
 public:
  explicit FileDrops(std::function<void(const std::wstring& path)> open) : open_(std::move(open)) {}

  STDMETHODIMP DragEnter(IDataObject* data, DWORD, POINTL, DWORD* effect) override;
  STDMETHODIMP DragOver(DWORD, POINTL, DWORD* effect) override;
  STDMETHODIMP DragLeave() override { return S_OK; }
  STDMETHODIMP Drop(IDataObject* data, DWORD, POINTL, DWORD* effect) override;

 private:
  std::function<void(const std::wstring&)> open_;
  bool has_files_ = false;
};

}  // namespace kitbay::web_browser
