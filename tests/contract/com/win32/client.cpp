#include "contract/com/win32/client.h"

#include <windows.h>

#include <objbase.h>
#include <wrl/client.h>

#include <iostream>
#include <memory>
#include <string>

#include "contract/failure_number.h"
#include "kitbay.h"
#include "platform/win32/com/automation.h"
#include "platform/win32/com/bstr.h"
#include "platform/win32/com/com_failure.h"
#include "platform/win32/com/instance_mark.h"
#include "platform/win32/system/utf.h"
#include "platform/win32/win32_platform.h"

namespace kitbay::contract {
namespace {

namespace win32 = platform::win32;
using Microsoft::WRL::ComPtr;

/// What a pointer refers to; 91 if it is empty.
template <typename Pointer>
auto& Demand(const Pointer& object) {
  if (!object) {
    throw base::Failure(base::RuntimeError::kObjectVariableNotSet);
  }
  return *object.operator->();
}

class Client {
 public:
  std::string Answer(const std::string& command, const std::string& argument) {
    if (command == "get") {
      return Number([&] { manager_ = objects_->GetActive(argument); });
    }
    if (command == "bring") {
      return Number([&] { Demand(manager_).BringToFront(); });
    }
    if (command == "create") {
      return Create(argument);
    }
    if (command == "hold") {
      return Hold(argument);
    }
    if (command == "call") {
      return Call(argument);
    }
    if (command == "early") {
      return CallEarly();
    }
    if (command == "let") {
      manager_.reset();
      created_.Reset();
      return "0";
    }
    if (command == "mark") {
      return win32::MutexMark(win32::ToUtf16(argument)).PreviousInstanceExists() ? "1" : "0";
    }
    return "unknown command";
  }

 private:
  template <typename Step>
  static std::string Number(Step step) {
    return std::to_string(FailureNumber(step));
  }

  std::string Create(const std::string& prog_id) {
    return Number([&] {
      CLSID id;
      if (FAILED(CLSIDFromProgID(win32::ToUtf16(prog_id).c_str(), &id)) ||
          FAILED(CoCreateInstance(id, nullptr, CLSCTX_LOCAL_SERVER, IID_PPV_ARGS(&created_)))) {
        throw base::Failure(base::RuntimeError::kCannotCreateObject);
      }
    });
  }

  std::string Hold(const std::string& prog_id) {
    return Number([&] {
      CLSID id;
      ComPtr<IUnknown> running;
      win32::Check(CLSIDFromProgID(win32::ToUtf16(prog_id).c_str(), &id));
      win32::Check(GetActiveObject(id, nullptr, &running));
      win32::Check(running.As(&created_));
    });
  }

  std::string Call(const std::string& member) {
    std::string result;
    const int number = FailureNumber([&] {
      const DISPID id = win32::FindMember(Demand(created_), member);
      result = win32::Invoke(Demand(created_), id, DISPATCH_METHOD | DISPATCH_PROPERTYGET).ToText();
    });
    return number == 0 ? result : "failure " + std::to_string(number);
  }

  std::string CallEarly() {
    std::string result;
    const int number = FailureNumber([&] {
      ComPtr<::IRegistry> registry;
      win32::Check(Demand(created_).QueryInterface(IID_PPV_ARGS(&registry)));
      win32::Bstr path;
      win32::Check(registry->GetAppDataPath(path.receive()));
      result = path.ToText();
    });
    return number == 0 ? result : "failure " + std::to_string(number);
  }

  std::unique_ptr<platform::ActiveObjects> objects_ = win32::MakeActiveObjects();
  std::unique_ptr<platform::ManagerService> manager_;
  ComPtr<IDispatch> created_;
};

}  // namespace

int RunClient() {
  const win32::ComApartment apartment;
  Client client;
  std::string line;
  while (std::getline(std::cin, line)) {
    if (line.ends_with('\r')) {
      line.pop_back();
    }
    const auto blank = line.find(' ');
    std::cout << client.Answer(line.substr(0, blank),
                               blank == std::string::npos ? "" : line.substr(blank + 1))
              << std::endl;
  }
  return 0;
}

}  // namespace kitbay::contract
