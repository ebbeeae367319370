#pragma once

#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "fakes/user.h"
#include "platform/registry_keys.h"

namespace kitbay::fakes {

/// Types of values: two that are text and two that are not.
inline constexpr std::uint32_t kTextType = 1;
inline constexpr std::uint32_t kExpandableTextType = 2;
inline constexpr std::uint32_t kBinaryType = 3;
inline constexpr std::uint32_t kNumberType = 4;

/// A result code that Kitbay does not distinguish.
inline constexpr std::int32_t kRegistryInvalidHandle = 6;

/// A registry in memory. Keys and value names keep their case but are compared without it. A key's
/// name is its full path from the hive on: "HKEY_CURRENT_USER\Software\Ovalink". It is what a
/// 64-bit program sees: the machine's keys for 32-bit programs are below "SOFTWARE\Wow6432Node".
///
/// A standard user can read the machine's keys but not write them. HKEY_CLASSES_ROOT behaves as on
/// Windows: it shows the user's key if there is one, otherwise the machine's, and new keys become
/// the machine's.
class MemoryRegistry : public platform::RegistryKeys {
 public:
  MemoryRegistry();

  KeyResult Open(platform::RegistryKey parent, const std::string& name,
                 std::uint32_t access) override;
  KeyResult Create(platform::RegistryKey parent, const std::string& name,
                   std::uint32_t access) override;
  ValueResult Query(platform::RegistryKey key, const std::string& name,
                    std::uint32_t capacity) override;
  std::int32_t SetText(platform::RegistryKey key, const std::string& name,
                       std::string_view data) override;
  std::int32_t Close(platform::RegistryKey key) override;

  // For tests to arrange. None of it is recorded.

  void AddKey(const std::string& path);

  /// Adds the key and a text value with its terminator, as other programs write it.
  void AddText(const std::string& path, const std::string& name, const std::string& text);

  /// Adds the key and a value of exactly these bytes.
  void AddValue(const std::string& path, const std::string& name, const std::string& bytes,
                std::uint32_t type);

  void SetUser(User user) { user_ = user; }

  /// From now on, opening or creating the key returns "access denied", whoever the user is.
  void DenyAccess(const std::string& path);

  // For tests to inspect.

  bool HasKey(const std::string& path) const;

  /// The bytes of a value; empty if there is no such value.
  std::optional<std::string> Bytes(const std::string& path, const std::string& name) const;

  /// Every call in order, by the key's path and not by its handle:
  ///   "Open HKEY_CURRENT_USER\software\Ovalink 0x3f"  "Create HKEY_CLASSES_ROOT\ovl 0x3f"
  ///   "Query <key> [Name] 100"  "SetText <key> [] 7 Ovalink"  "Close <key>"
  /// A handle that is not open stands as "(invalid)".
  const std::vector<std::string>& calls() const { return calls_; }

  /// The paths of the keys that are open now, in the order of opening; hives are not included.
  std::vector<std::string> OpenKeys() const;

 private:
  struct Value {
    std::uint32_t type = kTextType;
    std::string bytes;
  };
  struct Key {
    std::string path;
    std::map<std::string, Value> values;  ///< by folded name
  };
  struct Handle {
    std::string path;
    std::string place;  ///< the folded path of the key that `path` led to
    std::uint32_t access = 0;
  };

  std::string PathOf(platform::RegistryKey key) const;

  /// The path of the key that `path` leads to: below HKEY_CLASSES_ROOT, the user's or the
  /// machine's.
  std::string PlaceOf(const std::string& path) const;
  bool MayOpen(const std::string& place, std::uint32_t access) const;
  KeyResult OpenPath(const std::string& path, std::uint32_t access);

  std::map<std::string, Key> keys_;  ///< by folded path
  std::set<std::string> denied_;     ///< folded paths
  User user_ = User::kStandard;
  std::map<std::uintptr_t, Handle> handles_;
  std::uintptr_t next_handle_ = 0x100;
  std::vector<std::string> calls_;
};

}  // namespace kitbay::fakes
