#include "contract/windows/replaced_import.h"

#include <windows.h>

#include <stdexcept>
#include <string>
#include <string_view>

namespace kitbay::contract {
namespace {

/// A program or library in memory.
class Image {
 public:
  explicit Image(const wchar_t* name)
      : start_(reinterpret_cast<std::uintptr_t>(GetModuleHandleW(name))) {}

  template <typename Type>
  Type* At(std::uintptr_t offset) const {
    return reinterpret_cast<Type*>(start_ + offset);
  }

 private:
  std::uintptr_t start_;
};

/// The place where the image stores the function's address; null if it has none.
std::uintptr_t* PlaceOfImport(const Image& image, std::string_view name) {
  const auto* headers = image.At<IMAGE_NT_HEADERS>(
      static_cast<std::uintptr_t>(image.At<IMAGE_DOS_HEADER>(0)->e_lfanew));
  const IMAGE_DATA_DIRECTORY& directory =
      headers->OptionalHeader.DataDirectory[IMAGE_DIRECTORY_ENTRY_IMPORT];
  for (auto* library = image.At<IMAGE_IMPORT_DESCRIPTOR>(directory.VirtualAddress);
       library->Name != 0; ++library) {
    const auto* names = image.At<IMAGE_THUNK_DATA>(library->OriginalFirstThunk);
    auto* places = image.At<std::uintptr_t>(library->FirstThunk);
    for (; names->u1.AddressOfData != 0; ++names, ++places) {
      if (!IMAGE_SNAP_BY_ORDINAL(names->u1.Ordinal) &&
          name == image.At<IMAGE_IMPORT_BY_NAME>(names->u1.AddressOfData)->Name) {
        return places;
      }
    }
  }
  return nullptr;
}

}  // namespace

ReplacedImport::ReplacedImport(const char* name, void* replacement, const wchar_t* library)
    : place_(PlaceOfImport(Image(library), name)) {
  if (place_ == nullptr) {
    throw std::runtime_error(std::string("no import of ") + name);
  }
  original_ = *place_;
  Set(reinterpret_cast<std::uintptr_t>(replacement));
}

ReplacedImport::~ReplacedImport() { Set(original_); }

void ReplacedImport::Set(std::uintptr_t address) {
  DWORD before = 0;
  VirtualProtect(place_, sizeof *place_, PAGE_READWRITE, &before);
  *place_ = address;
  VirtualProtect(place_, sizeof *place_, before, &before);
}

}  // namespace kitbay::contract
