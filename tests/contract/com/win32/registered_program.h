#pragma once

#include "kitbay.h"
#include "platform/win32/com/class_registration.h"
#include "platform/win32/win32_platform.h"

namespace kitbay::contract {

/// Registers the program's classes for this executable as long as it lives.
class RegisteredProgram {
 public:
  RegisteredProgram() { server_->KeepRegistrationCurrent(platform::ClassesOf::kUser); }
  ~RegisteredProgram() {
    platform::win32::Unregister({.kind = platform::win32::ServerRegistration::Kind::kLocalServer,
                                 .classes = {{__uuidof(::Manager), L"Kitbay.Manager"},
                                             {__uuidof(::Registry), L"Kitbay.Registry"}}});
  }
  RegisteredProgram(const RegisteredProgram&) = delete;
  RegisteredProgram& operator=(const RegisteredProgram&) = delete;

  platform::ComServer& server() { return *server_; }

 private:
  std::unique_ptr<platform::ComServer> server_ = platform::win32::MakeComServer();
};

}  // namespace kitbay::contract
