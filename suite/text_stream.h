#pragma once

#include <memory>
#include <optional>
#include <utility>

#include "module.h"
#include "platform/win32/com/dispatch_object.h"
#include "suite.h"
#include "text_file.h"

namespace ovalink {

/// An open text file for clients, with either a reader or a writer.
class TextStream : public kitbay::platform::win32::DispatchObject<::ITextStream> {
 public:
  explicit TextStream(std::unique_ptr<TextReader> reader) : reader_(std::move(reader)) {}
  explicit TextStream(std::unique_ptr<TextWriter> writer) : writer_(std::move(writer)) {}

  STDMETHODIMP get_AtEndOfStream(VARIANT_BOOL* at_end) override;
  STDMETHODIMP ReadLine(BSTR* text) override;
  STDMETHODIMP ReadAll(BSTR* text) override;
  STDMETHODIMP Write(BSTR text) override;
  STDMETHODIMP WriteLine(BSTR text) override;
  STDMETHODIMP Close() override;

 private:
  TextReader& Reader() const;
  TextWriter& Writer() const;

  ModuleLock lock_;
  std::unique_ptr<TextReader> reader_;
  std::unique_ptr<TextWriter> writer_;
};

}  // namespace ovalink
