#include <memory>
#include <string>
#include <utility>
#include <vector>

#include "contract/com/active_objects_contract.h"
#include "contract/com/com_server_contract.h"
#include "contract/com/instance_mark_contract.h"
#include "contract/com/suite_objects_contract.h"
#include "contract/failure_number.h"
#include "fakes/fake_active_objects.h"
#include "fakes/fake_com_server.h"
#include "fakes/fake_suite_objects.h"
#include "fakes/memory_files.h"

namespace kitbay::contract {
namespace {

class FakeActiveObjectsWorld : public ActiveObjectsWorld {
 public:
  platform::ActiveObjects& objects() override { return objects_; }
  std::int32_t ClientGets(const std::string& prog_id) override {
    return FailureNumber([&] { client_ = objects_.GetActive(prog_id); });
  }
  void ClientLetsGo() override { client_.reset(); }
  std::int32_t ClientBringsToFront() override {
    return FailureNumber([&] { client_->BringToFront(); });
  }

 private:
  fakes::FakeActiveObjects objects_;
  std::unique_ptr<platform::ManagerService> client_;
};

class FakeComServerWorld : public ComServerWorld {
 public:
  platform::ComServer& server() override { return server_; }
  std::int32_t ClientCreates(const std::string& prog_id) override {
    return FailureNumber([&] {
      if (prog_id == "Kitbay.Manager") {
        manager_ = server_.CreateManager();
      }
      if (prog_id == "Kitbay.Registry") {
        registry_ = server_.CreateRegistry();
      }
    });
  }
  std::string ClientCalls(const std::string& member) override {
    std::string result;
    const std::int32_t number = FailureNumber([&] {
      if (member == "BringToFront") {
        manager_->BringToFront();
      }
      if (member == "RegisterUrlHandler") {
        registry_->RegisterUrlHandler();
      }
      if (member == "GetAppDataPath") {
        result = registry_->GetAppDataPath();
      }
      if (member == "ROOT_REGISTRY_KEY") {
        result = std::to_string(registry_->ROOT_REGISTRY_KEY());
      }
    });
    return number == 0 ? result : "failure " + std::to_string(number);
  }
  void ClientLetsGo() override {
    manager_.reset();
    registry_.reset();
  }

 private:
  fakes::FakeComServer server_;
  std::unique_ptr<platform::ManagerService> manager_;
  std::unique_ptr<platform::RegistryService> registry_;
};

class FakeInstanceMarkWorld : public InstanceMarkWorld {
 public:
  platform::InstanceMark& mark() override { return mark_; }
  void StartOther() override { mark_.previous_instance = true; }
  void EndOther() override { mark_.previous_instance = false; }

 private:
  fakes::FakeInstanceMark mark_;
};

std::unique_ptr<InstanceMarkWorld> MakeInstanceMarkWorld() {
  return std::make_unique<FakeInstanceMarkWorld>();
}

std::unique_ptr<ActiveObjectsWorld> MakeActiveObjectsWorld() {
  return std::make_unique<FakeActiveObjectsWorld>();
}

std::unique_ptr<ComServerWorld> MakeComServerWorld() {
  return std::make_unique<FakeComServerWorld>();
}

/// The suite's objects with the tree on which the file-system object works.
class FakeSuite : public fakes::FakeSuiteObjects {
 public:
  FakeSuite()
      : fakes::FakeSuiteObjects(
            [this] { return std::make_unique<fakes::MemoryFileSystemObject>(files_); }) {
    missing = {"Missing.Transport", "Missing.FileSystem"};
  }

 private:
  fakes::MemoryFiles files_;
};

std::unique_ptr<platform::SuiteObjects> MakeSuite() { return std::make_unique<FakeSuite>(); }

INSTANTIATE_TEST_SUITE_P(Fake, ActiveObjectsContract, testing::Values(&MakeActiveObjectsWorld));
INSTANTIATE_TEST_SUITE_P(Fake, ComServerContract, testing::Values(&MakeComServerWorld));
INSTANTIATE_TEST_SUITE_P(Fake, InstanceMarkContract, testing::Values(&MakeInstanceMarkWorld));
INSTANTIATE_TEST_SUITE_P(Fake, SuiteObjectsContract, testing::Values(&MakeSuite));

// What tests can arrange on the fakes.

TEST(FakeActiveObjects, CanBeToldToRefuse) {
  fakes::FakeActiveObjects objects;
  CountingManager manager;
  objects.table_refuses = true;
  objects.classes.clear();
  EXPECT_EQ(objects.ClassIdFromProgId("Kitbay.Manager"), std::nullopt);
  EXPECT_EQ(objects.RegisterActiveObject(manager, {}), std::nullopt);
  EXPECT_EQ(objects.calls,
            (std::vector<std::string>{"ClassIdFromProgId Kitbay.Manager", "RegisterActiveObject"}));
}

TEST(FakeActiveObjects, ShowsTheManagerOfAnotherInstance) {
  fakes::FakeActiveObjects objects;
  CountingManager other;
  objects.running_manager = &other;
  objects.GetActive("Kitbay.Manager")->BringToFront();
  EXPECT_EQ(other.calls, 1);
}

TEST(FakeSuiteObjects, SendsEventsBetweenSetUpAndShutDown) {
  fakes::FakeSuiteObjects suite;
  RecordingReceiver receiver;
  const auto object = suite.CreateTransportObject("URLDownloadLib.URLDownload");
  auto* const transport = suite.Find("URLDownloadLib.URLDownload");
  ASSERT_NE(transport, nullptr);
  EXPECT_EQ(transport->receiver, nullptr);
  object->SetUp(receiver);
  ASSERT_EQ(transport->receiver, &receiver);
  transport->receiver->Message("/a.xml", "Total-Length", "12");
  object->ShutDown();
  EXPECT_EQ(transport->receiver, nullptr);
  EXPECT_EQ(receiver.events, "Message(/a.xml,Total-Length,12)");
}

TEST(FakeSuiteObjects, KeepsRequestsAndCanRefuseTheNext) {
  fakes::FakeSuiteObjects suite;
  const auto object = suite.CreateTransportObject("URLDownloadLib.URLDownload");
  auto* const transport = suite.Find("URLDownloadLib.URLDownload");
  ASSERT_NE(transport, nullptr);
  object->Request("first");
  transport->request_failure = base::Failure(base::RuntimeError::kInvalidProcedureCall);
  EXPECT_EQ(FailureNumber([&] { object->Request("refused"); }), 5);
  object->Request("second");
  EXPECT_EQ(transport->requests, (std::vector<std::string>{"first", "second"}));
  EXPECT_EQ(suite.calls.back(), "Request URLDownloadLib.URLDownload");
}

}  // namespace
}  // namespace kitbay::contract
