#pragma once

#include <cstdint>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "fakes/user.h"
#include "platform/active_objects.h"
#include "platform/com_server.h"
#include "platform/services.h"

namespace kitbay::fakes {

/// The results of COM calls that the fakes raise.
inline constexpr std::int32_t kInvalidArgument = static_cast<std::int32_t>(0x80070057U);
inline constexpr std::int32_t kAccessDenied = static_cast<std::int32_t>(0x80070005U);
inline constexpr std::int32_t kDisconnected = static_cast<std::int32_t>(0x80010108U);

/// The class tables and the running-object table in memory. Every call is recorded in `calls`. As
/// on Windows, an elevated process does not find the user's classes, and elevated and standard
/// processes do not find each other's entries.
class FakeActiveObjects : public platform::ActiveObjects {
 public:
  FakeActiveObjects();
  ~FakeActiveObjects() override;

  std::optional<platform::ClassId> ClassIdFromProgId(const std::string& prog_id) override;
  std::optional<std::uint32_t> RegisterActiveObject(platform::ManagerService& object,
                                                    const platform::ClassId& class_id) override;
  std::int32_t RevokeActiveObject(std::uint32_t cookie) override;
  void DisconnectObject(platform::ManagerService& object) override;
  std::unique_ptr<platform::ManagerService> GetActive(const std::string& prog_id) override;

  /// The user's classes by ProgID: initially only `Kitbay.Manager`, from an earlier start.
  std::map<std::string, platform::ClassId> classes;

  /// The machine's classes; initially none.
  std::map<std::string, platform::ClassId> machine_classes;

  void SetUser(User user) { user_ = user; }

  /// Adds the program's own class, as its registration does.
  void AddOwnClass(platform::ClassesOf whose);

  /// Makes every registration fail.
  bool table_refuses = false;

  /// The manager that another instance has registered; null if there is none.
  platform::ManagerService* running_manager = nullptr;

  /// The user who runs that instance.
  User running_manager_user = User::kStandard;

  /// For example "ClassIdFromProgId Kitbay.Manager" or "RevokeActiveObject 7".
  std::vector<std::string> calls;

  /// How many entries of this instance are in the table.
  std::size_t entry_count() const { return entries_.size(); }

 private:
  class Client;
  struct Entry {
    platform::ClassId class_id;
    platform::ManagerService* object;
  };

  std::optional<platform::ClassId> Find(const std::string& prog_id) const;
  std::shared_ptr<platform::ManagerService*> LinkTo(platform::ManagerService& object);

  User user_ = User::kStandard;
  std::map<std::uint32_t, Entry> entries_;
  /// The clients' link to an object; emptied when the object is disconnected.
  std::map<platform::ManagerService*, std::shared_ptr<platform::ManagerService*>> links_;
  std::uint32_t next_cookie_ = 1;
};

}  // namespace kitbay::fakes
