#include "picture.h"

#include <wincrypt.h>

#include <stdexcept>
#include <vector>

namespace kitbay::web_browser {

using Microsoft::WRL::ComPtr;

namespace {

void Check(HRESULT result) {
  if (FAILED(result)) {
    throw std::runtime_error("The picture cannot be decoded");
  }
}

std::vector<BYTE> DecodeBase64(const std::string& text) {
  const auto length = static_cast<DWORD>(text.size());
  DWORD size = 0;
  CryptStringToBinaryA(text.data(), length, CRYPT_STRING_BASE64, nullptr, &size, nullptr, nullptr);
  std::vector<BYTE> bytes(size);
  if (!CryptStringToBinaryA(text.data(), length, CRYPT_STRING_BASE64, bytes.data(), &size, nullptr,
                            nullptr)) {
    throw std::runtime_error("The picture is no base64");
  }
  return bytes;
}

/** A screen-compatible memory device context. */
class MemoryContext {
 public:
  MemoryContext(HDC target, HBITMAP bitmap)
      : context_(CreateCompatibleDC(target)), previous_(SelectObject(context_, bitmap)) {}
  ~MemoryContext() {
    SelectObject(context_, previous_);
    DeleteDC(context_);
  }
  MemoryContext(const MemoryContext&) = delete;
  MemoryContext& operator=(const MemoryContext&) = delete;
  HDC get() const { return context_; }

 private:
  HDC context_;
  HGDIOBJ previous_;
};

}  // namespace

void Picture::Decode(const std::string& base64) {
  if (!factory_) {
    Check(CoCreateInstance(CLSID_WICImagingFactory, nullptr, CLSCTX_INPROC_SERVER,
                           IID_PPV_ARGS(factory_.GetAddressOf())));
  }
  std::vector<BYTE> bytes = DecodeBase64(base64);
  ComPtr<IWICStream> stream;
  Check(factory_->CreateStream(stream.GetAddressOf()));
  Check(stream->InitializeFromMemory(bytes.data(), static_cast<DWORD>(bytes.size())));
  ComPtr<IWICBitmapDecoder> decoder;
  Check(factory_->CreateDecoderFromStream(stream.Get(), nullptr, WICDecodeMetadataCacheOnDemand,
                                          decoder.GetAddressOf()));
  ComPtr<IWICBitmapFrameDecode> frame;
  Check(decoder->GetFrame(0, frame.GetAddressOf()));
  ComPtr<IWICFormatConverter> pixels;
  Check(factory_->CreateFormatConverter(pixels.GetAddressOf()));
  Check(pixels->Initialize(frame.Get(), GUID_WICPixelFormat32bppBGR, WICBitmapDitherTypeNone,
                           nullptr, 0, WICBitmapPaletteTypeCustom));
  UINT width = 0;
  UINT height = 0;
  Check(pixels->GetSize(&width, &height));

  BITMAPINFO info = {};
  info.bmiHeader.biSize = sizeof info.bmiHeader;
  info.bmiHeader.biWidth = static_cast<LONG>(width);
  info.bmiHeader.biHeight = -static_cast<LONG>(height);  // Top row first.
  info.bmiHeader.biPlanes = 1;
  info.bmiHeader.biBitCount = 32;
  info.bmiHeader.biCompression = BI_RGB;
  void* bits = nullptr;
  Bitmap bitmap(CreateDIBSection(nullptr, &info, DIB_RGB_COLORS, &bits, nullptr, 0));
  if (!bitmap.get()) {
    throw std::runtime_error("No memory for the picture");
  }
  Check(pixels->CopyPixels(nullptr, width * 4, width * 4 * height, static_cast<BYTE*>(bits)));
  bitmap_ = std::move(bitmap);
  size_ = {static_cast<LONG>(width), static_cast<LONG>(height)};
}

void Picture::Paint(HDC target, const RECT& place) const {
  if (!bitmap_.get()) {
    FillRect(target, &place, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    return;
  }
  const MemoryContext source(target, bitmap_.get());
  BitBlt(target, place.left, place.top, size_.cx, size_.cy, source.get(), 0, 0, SRCCOPY);
  const RECT right = {place.left + size_.cx, place.top, place.right, place.bottom};
  const RECT below = {place.left, place.top + size_.cy, place.right, place.bottom};
  for (const RECT& rest : {right, below}) {
    if (rest.left < rest.right && rest.top < rest.bottom) {
      FillRect(target, &rest, static_cast<HBRUSH>(GetStockObject(WHITE_BRUSH)));
    }
  }
}

}  // namespace kitbay::web_browser
