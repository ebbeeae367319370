#include "fakes/fake_suite_objects.h"

#include <algorithm>
#include <utility>

namespace kitbay::fakes {

class FakeSuiteObjects::Object : public platform::TransportObject {
 public:
  Object(FakeSuiteObjects& suite, std::shared_ptr<Transport> transport)
      : suite_(suite), transport_(std::move(transport)) {}

  ~Object() override {
    transport_->receiver = nullptr;
    transport_->is_released = true;
  }

  void SetUp(platform::OvTransportEvents& receiver) override {
    suite_.calls.push_back("SetUp " + transport_->prog_id);
    if (transport_->set_up_failure) {
      throw *transport_->set_up_failure;
    }
    transport_->receiver = &receiver;
  }

  void Request(const std::string& document) override {
    suite_.calls.push_back("Request " + transport_->prog_id);
    if (const auto failure = std::exchange(transport_->request_failure, std::nullopt)) {
      throw *failure;
    }
    transport_->requests.push_back(document);
    if (transport_->while_asked) {
      transport_->while_asked();
    }
  }

  void LimitNext(std::uint64_t bytes) override {
    suite_.calls.push_back("LimitNext " + transport_->prog_id + " " + std::to_string(bytes));
  }

  void ShutDown() override {
    suite_.calls.push_back("ShutDown " + transport_->prog_id);
    if (suite_.on_shut_down) {
      suite_.on_shut_down();
    }
    transport_->receiver = nullptr;
  }

 private:
  FakeSuiteObjects& suite_;
  std::shared_ptr<Transport> transport_;
};

FakeSuiteObjects::FakeSuiteObjects(MakeFileSystemObject make_file_system_object)
    : make_file_system_object_(std::move(make_file_system_object)) {}

std::unique_ptr<platform::FileSystemObject> FakeSuiteObjects::CreateFileSystemObject(
    const std::string& prog_id) {
  CheckCreatable(prog_id);
  if (!make_file_system_object_) {
    throw base::Failure(base::RuntimeError::kCannotCreateObject);
  }
  return make_file_system_object_();
}

std::unique_ptr<platform::TransportObject> FakeSuiteObjects::CreateTransportObject(
    const std::string& prog_id) {
  CheckCreatable(prog_id);
  auto transport = std::make_shared<Transport>();
  transport->prog_id = prog_id;
  const auto failure = set_up_failures.find(prog_id);
  if (failure != set_up_failures.end()) {
    transport->set_up_failure = failure->second;
  }
  transports_.push_back(transport);
  return std::make_unique<Object>(*this, std::move(transport));
}

FakeSuiteObjects::Transport* FakeSuiteObjects::Find(const std::string& prog_id) {
  const auto found =
      std::find_if(transports_.rbegin(), transports_.rend(),
                   [&](const auto& transport) { return transport->prog_id == prog_id; });
  return found == transports_.rend() ? nullptr : found->get();
}

void FakeSuiteObjects::CheckCreatable(const std::string& prog_id) {
  calls.push_back("Create " + prog_id);
  if (missing.count(prog_id) != 0) {
    throw base::Failure(base::RuntimeError::kCannotCreateObject);
  }
}

}  // namespace kitbay::fakes
