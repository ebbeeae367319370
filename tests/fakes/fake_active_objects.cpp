#include "fakes/fake_active_objects.h"

#include <algorithm>
#include <utility>

#include "base/failure.h"

namespace kitbay::fakes {

/// What `GetActive` returns: it ends with its object's connection.
class FakeActiveObjects::Client : public platform::ManagerService {
 public:
  explicit Client(std::shared_ptr<platform::ManagerService*> link) : link_(std::move(link)) {}

  void BringToFront() override {
    if (*link_ == nullptr) {
      throw base::Failure(kDisconnected, "The object invoked has disconnected from its clients.");
    }
    (*link_)->BringToFront();
  }

 private:
  std::shared_ptr<platform::ManagerService*> link_;
};

namespace {

constexpr const char* kOwnProgId = "Kitbay.Manager";
constexpr platform::ClassId kOwnClass{1};

}  // namespace

FakeActiveObjects::FakeActiveObjects() : classes{{kOwnProgId, kOwnClass}} {}
FakeActiveObjects::~FakeActiveObjects() = default;

std::optional<platform::ClassId> FakeActiveObjects::ClassIdFromProgId(const std::string& prog_id) {
  calls.push_back("ClassIdFromProgId " + prog_id);
  return Find(prog_id);
}

std::optional<std::uint32_t> FakeActiveObjects::RegisterActiveObject(
    platform::ManagerService& object, const platform::ClassId& class_id) {
  calls.push_back("RegisterActiveObject");
  if (table_refuses) {
    return std::nullopt;
  }
  entries_[next_cookie_] = Entry{class_id, &object};
  LinkTo(object);
  return next_cookie_++;
}

std::int32_t FakeActiveObjects::RevokeActiveObject(std::uint32_t cookie) {
  calls.push_back("RevokeActiveObject " + std::to_string(cookie));
  return entries_.erase(cookie) == 0 ? kInvalidArgument : 0;
}

void FakeActiveObjects::DisconnectObject(platform::ManagerService& object) {
  calls.push_back("DisconnectObject");
  const auto link = links_.find(&object);
  if (link == links_.end()) {
    return;
  }
  *link->second = nullptr;
  links_.erase(link);
}

std::unique_ptr<platform::ManagerService> FakeActiveObjects::GetActive(const std::string& prog_id) {
  calls.push_back("GetActive " + prog_id);
  if (const auto known = Find(prog_id)) {
    if (running_manager != nullptr && running_manager_user == user_) {
      return std::make_unique<Client>(LinkTo(*running_manager));
    }
    const auto entry = std::find_if(entries_.begin(), entries_.end(), [&](const auto& candidate) {
      return candidate.second.class_id == *known;
    });
    if (entry != entries_.end()) {
      return std::make_unique<Client>(LinkTo(*entry->second.object));
    }
  }
  throw base::Failure(base::RuntimeError::kCannotCreateObject);
}

void FakeActiveObjects::AddOwnClass(platform::ClassesOf whose) {
  (whose == platform::ClassesOf::kMachine ? machine_classes : classes)[kOwnProgId] = kOwnClass;
}

std::optional<platform::ClassId> FakeActiveObjects::Find(const std::string& prog_id) const {
  if (user_ == User::kStandard && classes.contains(prog_id)) {
    return classes.at(prog_id);
  }
  if (machine_classes.contains(prog_id)) {
    return machine_classes.at(prog_id);
  }
  return std::nullopt;
}

std::shared_ptr<platform::ManagerService*> FakeActiveObjects::LinkTo(
    platform::ManagerService& object) {
  auto& link = links_[&object];
  if (!link) {
    link = std::make_shared<platform::ManagerService*>(&object);
  }
  return link;
}

}  // namespace kitbay::fakes
