#pragma once

#include <windows.h>

#include <wincodec.h>
#include <wrl/client.h>

#include <string>

namespace kitbay::web_browser {

/** A bitmap handle that is deleted with its owner. */
class Bitmap {
 public:
  Bitmap() = default;
  explicit Bitmap(HBITMAP bitmap) : bitmap_(bitmap) {}
  Bitmap(Bitmap&& other) noexcept : bitmap_(other.bitmap_) { other.bitmap_ = nullptr; }
  Bitmap& operator=(Bitmap&& other) noexcept {
    std::swap(bitmap_, other.bitmap_);
    return *this;
  }
  ~Bitmap() {
    if (bitmap_) {
      DeleteObject(bitmap_);
    }
  }
  HBITMAP get() const { return bitmap_; }

 private:
  HBITMAP bitmap_ = nullptr;
};

/** The newest picture of the page. */
class Picture {
 public:
  /** Decodes a PNG in base64. Throws std::runtime_error if it is not one. */
  void Decode(const std::string& base64);
  /** Paints it into a rectangle of the same size; what it does not cover is white. */
  void Paint(HDC target, const RECT& place) const;

 private:
  Microsoft::WRL::ComPtr<IWICImagingFactory> factory_;
  Bitmap bitmap_;
  SIZE size_ = {};
};

}  // namespace kitbay::web_browser
