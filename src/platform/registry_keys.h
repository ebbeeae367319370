#pragma once

#include <cstdint>
#include <string>
#include <string_view>

namespace kitbay::platform {

/// A key handle as the system returns it; 0 is none. The three hives are handles that always exist.
struct RegistryKey {
  std::uintptr_t handle = 0;
  friend bool operator==(const RegistryKey&, const RegistryKey&) = default;
};

inline constexpr RegistryKey kClassesRoot{0x80000000U};
inline constexpr RegistryKey kCurrentUser{0x80000001U};
inline constexpr RegistryKey kLocalMachine{0x80000002U};

/// Access masks for the keys that Kitbay opens.
inline constexpr std::uint32_t kKeyQueryValue = 0x0001;
inline constexpr std::uint32_t kKeyReadWrite = 0x003F;

/// Added to a mask, these open the key in the view of 64-bit or of 32-bit programs, if the system
/// has two. Without them it is the program's own view.
inline constexpr std::uint32_t kView64 = 0x0100;
inline constexpr std::uint32_t kView32 = 0x0200;

/// The result codes of registry calls that Kitbay distinguishes.
inline constexpr std::int32_t kRegistrySuccess = 0;
inline constexpr std::int32_t kRegistryFileNotFound = 2;
inline constexpr std::int32_t kRegistryAccessDenied = 5;
inline constexpr std::int32_t kRegistryMoreData = 234;

/// The system's registry, call by call. Nothing throws: every call returns its result code, 0 for
/// success. Names and texts are UTF-8; byte counts are those of the 8-bit text.
class RegistryKeys {
 public:
  struct KeyResult {
    std::int32_t code = 0;
    RegistryKey key;
  };
  struct ValueResult {
    std::int32_t code = 0;
    std::string bytes;             ///< the data read, terminator included; empty unless code is 0
    std::uint32_t byte_count = 0;  ///< the data's full size in bytes, even if it did not fit
  };

  virtual ~RegistryKeys() = default;

  virtual KeyResult Open(RegistryKey parent, const std::string& name, std::uint32_t access) = 0;

  /// Opens the key, creating it (non-volatile) if it is missing.
  virtual KeyResult Create(RegistryKey parent, const std::string& name, std::uint32_t access) = 0;

  /// Reads a text value ("" is the key's default value) into `capacity` bytes; a capacity of 0 only
  /// asks for the size (code 0). A value that is not text is reported as `kRegistryFileNotFound`.
  virtual ValueResult Query(RegistryKey key, const std::string& name, std::uint32_t capacity) = 0;

  /// Writes a REG_SZ value of exactly the bytes of `data`, without an additional terminator.
  virtual std::int32_t SetText(RegistryKey key, const std::string& name, std::string_view data) = 0;

  virtual std::int32_t Close(RegistryKey key) = 0;
};

}  // namespace kitbay::platform
