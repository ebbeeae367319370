#include <windows.h>

#include <memory>
#include <optional>
#include <string>

#include "contract/com/active_objects_contract.h"
#include "contract/com/com_server_contract.h"
#include "contract/com/instance_mark_contract.h"
#include "contract/com/suite_objects_contract.h"
#include "contract/com/win32/client_process.h"
#include "contract/com/win32/registered_program.h"
#include "contract/com/win32/registered_suite.h"
#include "contract/failure_number.h"
#include "platform/win32/com/instance_mark.h"
#include "platform/win32/win32_platform.h"

namespace kitbay::contract {
namespace {

class Win32ActiveObjectsWorld : public ActiveObjectsWorld {
 public:
  platform::ActiveObjects& objects() override { return *objects_; }
  std::int32_t ClientGets(const std::string& prog_id) override {
    return client_.AskForNumber("get " + prog_id);
  }
  void ClientLetsGo() override { client_.Ask("let go"); }
  std::int32_t ClientBringsToFront() override {
    const std::int32_t number = client_.AskForNumber("bring");
    // Wine's code for an object that has disconnected.
    return number == HRESULT_FROM_WIN32(RPC_S_UNKNOWN_IF) ? kDisconnected : number;
  }

 private:
  RegisteredProgram program_;
  std::unique_ptr<platform::ActiveObjects> objects_ = platform::win32::MakeActiveObjects();
  ClientProcess client_;
};

class Win32ComServerWorld : public ComServerWorld {
 public:
  platform::ComServer& server() override { return program_.server(); }
  std::int32_t ClientCreates(const std::string& prog_id) override {
    return client_.AskForNumber("create " + prog_id);
  }
  std::string ClientCalls(const std::string& member) override {
    return client_.Ask("call " + member);
  }
  void ClientLetsGo() override { client_.Ask("let go"); }

 private:
  RegisteredProgram program_;
  ClientProcess client_;
};

class Win32InstanceMarkWorld : public InstanceMarkWorld {
 public:
  platform::InstanceMark& mark() override { return mark_; }
  void StartOther() override { other_.emplace(name_).PreviousInstanceExists(); }
  void EndOther() override { other_.reset(); }

 private:
  std::wstring name_ = L"Local\\Kitbay.Tests " + std::to_wstring(GetCurrentProcessId());
  platform::win32::MutexMark mark_{name_};
  std::optional<platform::win32::MutexMark> other_;
};

/// The suite's objects in a folder, with nothing registered.
class SuiteBeside : public platform::SuiteObjects {
 public:
  std::unique_ptr<platform::FileSystemObject> CreateFileSystemObject(
      const std::string& prog_id) override {
    return objects_->CreateFileSystemObject(prog_id);
  }
  std::unique_ptr<platform::TransportObject> CreateTransportObject(
      const std::string& prog_id) override {
    return objects_->CreateTransportObject(prog_id);
  }

 private:
  UnregisteredSuite unregistered_;
  std::unique_ptr<platform::SuiteObjects> objects_ =
      platform::win32::MakeSuiteObjects(SuiteFolder());
};

std::unique_ptr<InstanceMarkWorld> MakeInstanceMarkWorld() {
  return std::make_unique<Win32InstanceMarkWorld>();
}

std::unique_ptr<ActiveObjectsWorld> MakeActiveObjectsWorld() {
  return std::make_unique<Win32ActiveObjectsWorld>();
}

std::unique_ptr<ComServerWorld> MakeComServerWorld() {
  return std::make_unique<Win32ComServerWorld>();
}

INSTANTIATE_TEST_SUITE_P(Win32, ActiveObjectsContract, testing::Values(&MakeActiveObjectsWorld));
INSTANTIATE_TEST_SUITE_P(Win32, ComServerContract, testing::Values(&MakeComServerWorld));
INSTANTIATE_TEST_SUITE_P(Win32, InstanceMarkContract, testing::Values(&MakeInstanceMarkWorld));
std::unique_ptr<platform::SuiteObjects> MakeRegisteredSuite() {
  return platform::win32::MakeSuiteObjects("C:\\nowhere");
}

std::unique_ptr<platform::SuiteObjects> MakeSuiteBeside() {
  return std::make_unique<SuiteBeside>();
}

INSTANTIATE_TEST_SUITE_P(Win32, SuiteObjectsContract, testing::Values(&MakeRegisteredSuite));
INSTANTIATE_TEST_SUITE_P(Win32Beside, SuiteObjectsContract, testing::Values(&MakeSuiteBeside));

TEST(Win32SuiteObjects, NeitherRegisteredNorBesideAreNotCreated) {
  const UnregisteredSuite unregistered;
  for (const char* prog_id : {"XMLRPCTRANSPORT.xTransport", "URLDownloadLib.URLDownload"}) {
    EXPECT_EQ(FailureNumber([&] { MakeRegisteredSuite()->CreateTransportObject(prog_id); }),
              kCannotCreateObject);
  }
}

}  // namespace
}  // namespace kitbay::contract
