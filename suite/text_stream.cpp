#include "text_stream.h"

#include <string>
#include <string_view>

#include "base/failure.h"
#include "platform/win32/com/com_failure.h"

namespace ovalink {

using kitbay::platform::win32::ReportCurrentException;

namespace {

kitbay::base::Failure BadFileMode() { return {54, "Bad file mode"}; }

BSTR ToBstr(std::wstring_view text) {
  const BSTR value = SysAllocStringLen(text.data(), static_cast<UINT>(text.size()));
  if (value == nullptr) {
    throw std::bad_alloc();
  }
  return value;
}

std::wstring_view ViewOf(BSTR text) {
  return text == nullptr ? std::wstring_view() : std::wstring_view(text, SysStringLen(text));
}

}  // namespace

STDMETHODIMP TextStream::get_AtEndOfStream(VARIANT_BOOL* at_end) {
  if (at_end == nullptr) {
    return E_POINTER;
  }
  try {
    *at_end = Reader().AtEnd() ? VARIANT_TRUE : VARIANT_FALSE;
    return S_OK;
  } catch (...) {
    return ReportCurrentException();
  }
}

STDMETHODIMP TextStream::ReadLine(BSTR* text) {
  if (text == nullptr) {
    return E_POINTER;
  }
  *text = nullptr;
  try {
    *text = ToBstr(Reader().ReadLine());
    return S_OK;
  } catch (...) {
    return ReportCurrentException();
  }
}

STDMETHODIMP TextStream::ReadAll(BSTR* text) {
  if (text == nullptr) {
    return E_POINTER;
  }
  *text = nullptr;
  try {
    *text = ToBstr(Reader().ReadAll());
    return S_OK;
  } catch (...) {
    return ReportCurrentException();
  }
}

STDMETHODIMP TextStream::Write(BSTR text) {
  try {
    Writer().Write(ViewOf(text));
    return S_OK;
  } catch (...) {
    return ReportCurrentException();
  }
}

STDMETHODIMP TextStream::WriteLine(BSTR text) {
  try {
    // Written in one piece, so that a reader never sees a line without its end.
    Writer().Write(std::wstring(ViewOf(text)) + L"\r\n");
    return S_OK;
  } catch (...) {
    return ReportCurrentException();
  }
}

STDMETHODIMP TextStream::Close() {
  reader_.reset();
  writer_.reset();
  return S_OK;
}

TextReader& TextStream::Reader() const {
  if (!reader_) {
    throw BadFileMode();
  }
  return *reader_;
}

TextWriter& TextStream::Writer() const {
  if (!writer_) {
    throw BadFileMode();
  }
  return *writer_;
}

}  // namespace ovalink
