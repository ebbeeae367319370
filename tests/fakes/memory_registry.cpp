#include "fakes/memory_registry.h"

#include <sstream>

#include "fakes/windows_path.h"

namespace kitbay::fakes {

using platform::kRegistryAccessDenied;
using platform::kRegistryFileNotFound;
using platform::kRegistryMoreData;
using platform::kRegistrySuccess;
using platform::RegistryKey;

namespace {

constexpr std::uint32_t kAllRights = 0xFFFFFFFF;
constexpr std::uint32_t kSetValueRight = 0x0002;
constexpr std::uint32_t kWritingRights = 0x0026;  // values, keys below, links
constexpr const char* kAllClasses = "HKEY_CLASSES_ROOT";
constexpr const char* kUserClasses = "HKEY_CURRENT_USER\\Software\\Classes";
constexpr const char* kMachineClasses = "HKEY_LOCAL_MACHINE\\Software\\Classes";
constexpr const char* kInvalid = "(invalid)";

std::string Hex(std::uint32_t value) {
  std::ostringstream text;
  text << "0x" << std::hex << value;
  return text.str();
}

/// Where a 64-bit program finds a key that it opens in the 32-bit view.
std::string InView(const std::string& path, std::uint32_t access) {
  const std::string hive = "HKEY_LOCAL_MACHINE\\SOFTWARE";
  const bool is_other =
      (access & platform::kView32) != 0 && FoldCase(path.substr(0, hive.size())) == FoldCase(hive);
  return is_other ? hive + "\\Wow6432Node" + path.substr(hive.size()) : path;
}

std::string Join(const std::string& parent, const std::string& name) {
  return name.empty() ? parent : parent + "\\" + name;
}

}  // namespace

MemoryRegistry::MemoryRegistry() {
  const auto add_hive = [this](RegistryKey hive, const char* name) {
    AddKey(name);
    handles_[hive.handle] = {name, FoldCase(PlaceOf(name)), kAllRights};
  };
  add_hive(platform::kCurrentUser, "HKEY_CURRENT_USER");
  add_hive(platform::kLocalMachine, "HKEY_LOCAL_MACHINE");
  add_hive(platform::kClassesRoot, kAllClasses);
}

MemoryRegistry::KeyResult MemoryRegistry::Open(RegistryKey parent, const std::string& name,
                                               std::uint32_t access) {
  const std::string path = Join(PathOf(parent), name);
  calls_.push_back("Open " + path + " " + Hex(access));
  if (!handles_.contains(parent.handle)) {
    return {kRegistryInvalidHandle, {}};
  }
  return OpenPath(InView(path, access), access);
}

MemoryRegistry::KeyResult MemoryRegistry::Create(RegistryKey parent, const std::string& name,
                                                 std::uint32_t access) {
  const std::string path = Join(PathOf(parent), name);
  calls_.push_back("Create " + path + " " + Hex(access));
  if (!handles_.contains(parent.handle)) {
    return {kRegistryInvalidHandle, {}};
  }
  if (!MayOpen(PlaceOf(path), access)) {
    return {kRegistryAccessDenied, {}};
  }
  AddKey(path);
  return OpenPath(path, access);
}

MemoryRegistry::ValueResult MemoryRegistry::Query(RegistryKey key, const std::string& name,
                                                  std::uint32_t capacity) {
  calls_.push_back("Query " + PathOf(key) + " [" + name + "] " + std::to_string(capacity));
  const auto handle = handles_.find(key.handle);
  if (handle == handles_.end()) {
    return {kRegistryInvalidHandle, "", 0};
  }
  const auto& values = keys_.at(handle->second.place).values;
  const auto value = values.find(FoldCase(name));
  if (value == values.end() ||
      (value->second.type != kTextType && value->second.type != kExpandableTextType)) {
    return {kRegistryFileNotFound, "", 0};
  }
  const std::string& bytes = value->second.bytes;
  const auto size = static_cast<std::uint32_t>(bytes.size());
  if (capacity == 0) {
    return {kRegistrySuccess, "", size};
  }
  if (size > capacity) {
    return {kRegistryMoreData, "", size};
  }
  return {kRegistrySuccess, bytes, size};
}

std::int32_t MemoryRegistry::SetText(RegistryKey key, const std::string& name,
                                     std::string_view data) {
  calls_.push_back("SetText " + PathOf(key) + " [" + name + "] " + std::to_string(data.size()) +
                   " " + std::string(data));
  const auto handle = handles_.find(key.handle);
  if (handle == handles_.end()) {
    return kRegistryInvalidHandle;
  }
  if ((handle->second.access & kSetValueRight) == 0) {
    return kRegistryAccessDenied;
  }
  keys_.at(handle->second.place).values[FoldCase(name)] = {kTextType, std::string(data)};
  return kRegistrySuccess;
}

std::int32_t MemoryRegistry::Close(RegistryKey key) {
  const std::string path = PathOf(key);
  calls_.push_back("Close " + path);
  if (path == kInvalid) {
    return kRegistryInvalidHandle;
  }
  // Closing a hive succeeds and does nothing.
  if (path.find('\\') != std::string::npos) {
    handles_.erase(key.handle);
  }
  return kRegistrySuccess;
}

void MemoryRegistry::AddKey(const std::string& path) {
  const std::string place = PlaceOf(path);
  for (auto end = place.find('\\');; end = place.find('\\', end + 1)) {
    const std::string ancestor = place.substr(0, end);
    keys_.try_emplace(FoldCase(ancestor), Key{ancestor, {}});
    if (end == std::string::npos) {
      return;
    }
  }
}

void MemoryRegistry::AddText(const std::string& path, const std::string& name,
                             const std::string& text) {
  AddValue(path, name, text + std::string(1, '\0'), kTextType);
}

void MemoryRegistry::AddValue(const std::string& path, const std::string& name,
                              const std::string& bytes, std::uint32_t type) {
  AddKey(path);
  keys_.at(FoldCase(PlaceOf(path))).values[FoldCase(name)] = {type, bytes};
}

void MemoryRegistry::DenyAccess(const std::string& path) {
  denied_.insert(FoldCase(PlaceOf(path)));
}

bool MemoryRegistry::HasKey(const std::string& path) const {
  return keys_.contains(FoldCase(PlaceOf(path)));
}

std::optional<std::string> MemoryRegistry::Bytes(const std::string& path,
                                                 const std::string& name) const {
  const auto key = keys_.find(FoldCase(PlaceOf(path)));
  if (key == keys_.end() || !key->second.values.contains(FoldCase(name))) {
    return std::nullopt;
  }
  return key->second.values.at(FoldCase(name)).bytes;
}

std::vector<std::string> MemoryRegistry::OpenKeys() const {
  std::vector<std::string> paths;
  for (const auto& [value, handle] : handles_) {
    if (handle.path.find('\\') != std::string::npos) {
      paths.push_back(handle.path);
    }
  }
  return paths;
}

std::string MemoryRegistry::PathOf(RegistryKey key) const {
  const auto handle = handles_.find(key.handle);
  return handle == handles_.end() ? kInvalid : handle->second.path;
}

std::string MemoryRegistry::PlaceOf(const std::string& path) const {
  if (path != kAllClasses && !path.starts_with(std::string(kAllClasses) + "\\")) {
    return path;
  }
  const std::string below = path.substr(std::string(kAllClasses).size());
  return keys_.contains(FoldCase(kUserClasses + below)) ? kUserClasses + below
                                                        : kMachineClasses + below;
}

bool MemoryRegistry::MayOpen(const std::string& place, std::uint32_t access) const {
  const bool is_machines = FoldCase(place).starts_with(FoldCase("HKEY_LOCAL_MACHINE"));
  return !denied_.contains(FoldCase(place)) &&
         (user_ == User::kAdministrator || !is_machines || (access & kWritingRights) == 0);
}

MemoryRegistry::KeyResult MemoryRegistry::OpenPath(const std::string& path, std::uint32_t access) {
  const std::string place = PlaceOf(path);
  if (!HasKey(path) && !denied_.contains(FoldCase(place))) {
    return {kRegistryFileNotFound, {}};
  }
  if (!MayOpen(place, access)) {
    return {kRegistryAccessDenied, {}};
  }
  const RegistryKey key{next_handle_};
  next_handle_ += 4;
  handles_[key.handle] = {path, FoldCase(place), access};
  return {kRegistrySuccess, key};
}

}  // namespace kitbay::fakes
