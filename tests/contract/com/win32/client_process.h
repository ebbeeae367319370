#pragma once

#include <string>

#include "platform/win32/system/handles.h"

namespace kitbay::contract {

/// A second process of this executable: a client of the program that the test plays.
class ClientProcess {
 public:
  ClientProcess();
  ~ClientProcess();
  ClientProcess(const ClientProcess&) = delete;
  ClientProcess& operator=(const ClientProcess&) = delete;

  /// The client's answer to one command. Meanwhile the COM calls that it makes are served.
  std::string Ask(const std::string& command);
  int AskForNumber(const std::string& command) { return std::stoi(Ask(command)); }

 private:
  std::string ReadLine();

  platform::win32::UniqueKernelObject process_;
  platform::win32::UniqueKernelObject commands_;
  platform::win32::UniqueKernelObject answers_;
};

}  // namespace kitbay::contract
