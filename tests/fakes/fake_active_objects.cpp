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

FakeActiveObjects::FakeActiveObjects() : classes{{"Kitbay.Manager", platform::ClassId{1}}} {}
FakeActiveObjects::~FakeActiveObjects() = default;

std::optional<platform::ClassId> FakeActiveObjects::ClassIdFromProgId(const std::string& prog_id) {
  calls.push_back("ClassIdFromProgId " + prog_id);
  const auto found = classes.find(prog_id);
  if (found == classes.end()) return std::nullopt;
  return found->second;
}

std::optional<std::uint32_t> FakeActiveObjects::RegisterActiveObject(
    platform::ManagerService& object, const platform::ClassId& class_id) {
  calls.push_back("RegisterActiveObject");
  if (table_refuses) return std::nullopt;
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
  if (link == links_.end()) return;
  *link->second = nullptr;
  links_.erase(link);
}

std::unique_ptr<platform::ManagerService> FakeActiveObjects::GetActive(const std::string& prog_id) {
  calls.push_back("GetActive " + prog_id);
  const auto known = classes.find(prog_id);
  if (known != classes.end()) {
    if (running_manager != nullptr) return std::make_unique<Client>(LinkTo(*running_manager));
    const auto entry = std::find_if(entries_.begin(), entries_.end(), [&](const auto& candidate) {
      return candidate.second.class_id == known->second;
    });
    if (entry != entries_.end()) return std::make_unique<Client>(LinkTo(*entry->second.object));
  }
  throw base::Failure(base::RuntimeError::kCannotCreateObject);
}

std::shared_ptr<platform::ManagerService*> FakeActiveObjects::LinkTo(
    platform::ManagerService& object) {
  auto& link = links_[&object];
  if (!link) link = std::make_shared<platform::ManagerService*>(&object);
  return link;
}

}  // namespace kitbay::fakes
