#include "contract/com/win32/client_process.h"

#include <windows.h>

#include <future>
#include <stdexcept>

#include "contract/windows/patience.h"
#include "platform/win32/com/own_type_library.h"
#include "platform/win32/system/overwriting.h"

namespace kitbay::contract {
namespace {

using platform::win32::UniqueKernelObject;

/// Handles messages, by which COM calls arrive, until `event` is set.
void ServeUntil(HANDLE event) {
  for (;;) {
    const DWORD woken = MsgWaitForMultipleObjects(1, &event, FALSE, kPatienceMs, QS_ALLINPUT);
    if (woken == WAIT_OBJECT_0) {
      return;
    }
    if (woken == WAIT_TIMEOUT) {
      throw std::runtime_error("the client does not answer");
    }
    MSG message;
    while (PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
      DispatchMessageW(&message);
    }
  }
}

}  // namespace

ClientProcess::ClientProcess() {
  SECURITY_ATTRIBUTES inherited{sizeof inherited, nullptr, TRUE};
  UniqueKernelObject input;
  UniqueKernelObject output;
  if (!CreatePipe(input.put(), commands_.put(), &inherited, 0) ||
      !CreatePipe(answers_.put(), output.put(), &inherited, 0)) {
    throw std::runtime_error("no pipes for the client");
  }
  SetHandleInformation(commands_.get(), HANDLE_FLAG_INHERIT, 0);
  SetHandleInformation(answers_.get(), HANDLE_FLAG_INHERIT, 0);

  STARTUPINFOW startup{};
  startup.cb = sizeof startup;
  startup.dwFlags = STARTF_USESTDHANDLES;
  startup.hStdInput = input.get();
  startup.hStdOutput = output.get();
  startup.hStdError = GetStdHandle(STD_ERROR_HANDLE);
  std::wstring command = L"\"" + platform::win32::OwnModulePath() + L"\" --client";
  PROCESS_INFORMATION started{};
  if (!CreateProcessW(nullptr, command.data(), nullptr, nullptr, TRUE, 0, nullptr, nullptr,
                      &startup, &started)) {
    throw std::runtime_error("the client does not start");
  }
  CloseHandle(started.hThread);
  process_.reset(started.hProcess);
}

ClientProcess::~ClientProcess() {
  // The end of its input ends the client, which first releases its objects.
  commands_.reset();
  ServeUntil(process_.get());
}

std::string ClientProcess::Ask(const std::string& command) {
  platform::win32::WriteAll(commands_.get(), command + "\n");
  const UniqueKernelObject answered(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  auto answer = std::async(std::launch::async, [&] {
    const std::string line = ReadLine();
    SetEvent(answered.get());
    return line;
  });
  ServeUntil(answered.get());
  return answer.get();
}

std::string ClientProcess::ReadLine() {
  std::string line;
  char letter = '\0';
  DWORD read = 0;
  while (ReadFile(answers_.get(), &letter, 1, &read, nullptr) && read == 1 && letter != '\n') {
    if (letter != '\r') {
      line += letter;
    }
  }
  return line;
}

}  // namespace kitbay::contract
