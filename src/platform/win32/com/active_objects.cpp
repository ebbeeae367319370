#include <windows.h>

#include <ole2.h>
#include <oleauto.h>
#include <wrl/client.h>

#include <cstring>
#include <map>
#include <memory>
#include <utility>

#include "base/failure.h"
#include "platform/win32/com/automation.h"
#include "platform/win32/com/counted_object.h"
#include "platform/win32/com/service_objects.h"
#include "platform/win32/system/utf.h"
#include "platform/win32/win32_platform.h"

namespace kitbay::platform::win32 {
namespace {

using Microsoft::WRL::ComPtr;

static_assert(sizeof(ClassId) == sizeof(CLSID));

/// A manager in any process, called late-bound.
class RemoteManager : public ManagerService {
 public:
  explicit RemoteManager(ComPtr<IDispatch> object) : object_(std::move(object)) {}

  void BringToFront() override { CallMethod(*object_.Get(), "BringToFront"); }

 private:
  ComPtr<IDispatch> object_;
};

class RunningObjects : public ActiveObjects {
 public:
  ~RunningObjects() override {
    for (auto& [service, published] : published_) {
      Withdraw(published);
    }
  }

  std::optional<ClassId> ClassIdFromProgId(const std::string& prog_id) override {
    CLSID found;
    if (FAILED(CLSIDFromProgID(ToUtf16(prog_id).c_str(), &found))) {
      return std::nullopt;
    }
    ClassId class_id;
    std::memcpy(class_id.data(), &found, sizeof found);
    return class_id;
  }

  std::optional<std::uint32_t> RegisterActiveObject(ManagerService& object,
                                                    const ClassId& class_id) override {
    CLSID id;
    std::memcpy(&id, class_id.data(), sizeof id);
    DWORD cookie = 0;
    Published& published = Publish(object);
    const HRESULT result =
        ::RegisterActiveObject(published.object.Get(), id, ACTIVEOBJECT_WEAK, &cookie);
    if (FAILED(result)) {
      return std::nullopt;
    }
    // A weak entry ends when the last client releases its object; the lock keeps it for the next
    // client.
    if (!published.is_locked) {
      published.is_locked = SUCCEEDED(CoLockObjectExternal(published.object.Get(), TRUE, FALSE));
    }
    return cookie;
  }

  std::int32_t RevokeActiveObject(std::uint32_t cookie) override {
    return ::RevokeActiveObject(cookie, nullptr);
  }

  void DisconnectObject(ManagerService& object) override {
    const auto found = published_.find(&object);
    if (found == published_.end()) {
      return;
    }
    // CoDisconnectObject does not reach clients in this process, which hold the object itself.
    Withdraw(found->second);
    CoDisconnectObject(found->second.object.Get(), 0);
    published_.erase(found);
  }

  std::unique_ptr<ManagerService> GetActive(const std::string& prog_id) override {
    CLSID id;
    ComPtr<IUnknown> running;
    ComPtr<IDispatch> manager;
    if (FAILED(CLSIDFromProgID(ToUtf16(prog_id).c_str(), &id)) ||
        FAILED(GetActiveObject(id, nullptr, &running)) || !running ||
        FAILED(running.As(&manager))) {
      throw base::Failure(base::RuntimeError::kCannotCreateObject);
    }
    return std::make_unique<RemoteManager>(std::move(manager));
  }

 private:
  /// The one COM object that represents a service.
  struct Published {
    std::shared_ptr<ServiceLink<ManagerService>> link;
    ComPtr<::IManager> object;
    bool is_locked = false;
  };

  static void Withdraw(Published& published) {
    published.link->Cut();
    if (published.is_locked) {
      CoLockObjectExternal(published.object.Get(), FALSE, TRUE);
      published.is_locked = false;
    }
  }

  Published& Publish(ManagerService& service) {
    Published& published = published_[&service];
    if (!published.object) {
      published.link = std::make_shared<ServiceLink<ManagerService>>(service);
      published.object = Adopt(new ManagerObject(published.link));
    }
    return published;
  }

  std::map<ManagerService*, Published> published_;
};

}  // namespace

std::unique_ptr<ActiveObjects> MakeActiveObjects() { return std::make_unique<RunningObjects>(); }

}  // namespace kitbay::platform::win32
