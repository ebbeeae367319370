// download_client [--shut-down | --let-go | --again | --held COUNT] (SERVER PATH DESTINATION)...
// Hands requests to the suite's download object and prints what it is told, each event as a line of
// JSON, until every request has ended. With --shut-down or --let-go it gives up at the first event:
// it shuts down the object, or releases it, and prints how many threads there were before the
// request, during the transfer and afterwards. With --again it then repeats the last request. With
// --held it holds the first destination, which must exist, until COUNT attempts to replace it have
// failed, and prints the total number of attempts.
#include <windows.h>

#include <tlhelp32.h>
#include <winternl.h>

#include <cstdio>
#include <memory>
#include <nlohmann/json.hpp>
#include <optional>
#include <string>
#include <vector>

#include "base/failure.h"
#include "held_file.h"
#include "platform/win32/system/console.h"
#include "platform/win32/system/handles.h"
#include "platform/win32/system/utf.h"
#include "platform/win32/win32_platform.h"

namespace {

namespace platform = kitbay::platform;
namespace win32 = kitbay::platform::win32;

using Json = nlohmann::ordered_json;

void Print(const Json& event) {
  std::printf("%s\n", event.dump().c_str());
  std::fflush(stdout);
}

/// Whether a thread of this process was started by code other than the system's thread pool, which
/// keeps its threads for a while.
bool IsStartedByCode(DWORD id) {
  constexpr auto kStartAddress = static_cast<THREADINFOCLASS>(9);
  const win32::UniqueKernelObject thread(OpenThread(THREAD_QUERY_INFORMATION, FALSE, id));
  void* address = nullptr;
  HMODULE module = nullptr;
  if (!thread || NtQueryInformationThread(thread.get(), kStartAddress, &address, sizeof address,
                                          nullptr) != 0) {
    return false;
  }
  GetModuleHandleExW(
      GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
      static_cast<wchar_t*>(address), &module);
  return module != GetModuleHandleW(L"ntdll.dll");
}

int ThreadCount() {
  const win32::UniqueFile snapshot(CreateToolhelp32Snapshot(TH32CS_SNAPTHREAD, 0));
  THREADENTRY32 entry{};
  entry.dwSize = sizeof entry;
  int count = 0;
  for (BOOL more = Thread32First(snapshot.get(), &entry); more;
       more = Thread32Next(snapshot.get(), &entry)) {
    if (entry.th32OwnerProcessID == GetCurrentProcessId() && IsStartedByCode(entry.th32ThreadID)) {
      ++count;
    }
  }
  return count;
}

bool SuiteCanUnload() {
  const FARPROC address = GetProcAddress(GetModuleHandleW(L"OvalinkSuite.dll"), "DllCanUnloadNow");
  return address != nullptr &&
         reinterpret_cast<HRESULT(WINAPI*)()>(reinterpret_cast<void*>(address))() == S_OK;
}

enum class Ending { kNone, kShutDown, kLetGo, kAgain };

class Client : public platform::OvTransportEvents {
 public:
  Client(Ending ending, int held, std::vector<std::string> words)
      : ending_(ending),
        words_(std::move(words)),
        objects_(win32::MakeSuiteObjects(win32::FindProgramPlace().folder)) {
    object_ = objects_->CreateTransportObject("URLDownloadLib.URLDownload");
    object_->SetUp(*this);
    threads_before_ = ThreadCount();
    if (held > 0) {
      held_.emplace(words_.at(2), held);
    }
  }

  void Run() {
    for (std::size_t at = 0; at + 3 <= words_.size(); at += 3) {
      Request(at);
    }
    MSG message;
    while (open_ > 0 && GetMessageW(&message, nullptr, 0, 0) > 0) {
      DispatchMessageW(&message);
      // The object lives at least as long as the event in which it is released.
      if (was_told_ && ending_ == Ending::kLetGo) {
        End();
      }
    }
    if (held_) {
      Print({{"event", "Attempts"}, {"count", held_->attempts()}});
    }
  }

  void Message(const std::string& path, const std::string& field,
               const std::string& value) override {
    Tell({{"event", "Message"}, {"path", path}, {"field", field}, {"value", value}});
    if (value == "true") {
      --open_;
    }
    was_told_ = true;
    if (ending_ == Ending::kShutDown || ending_ == Ending::kAgain) {
      End();
    }
  }

  void Exception(const std::string& path, const std::string& message) override {
    Tell({{"event", "Exception"}, {"path", path}, {"message", message}});
    --open_;
  }

 private:
  void Request(std::size_t at) {
    ++open_;
    in_request_ = true;
    object_->Request("<server>" + words_[at] + "</server><filetodownload>" + words_[at + 1] +
                     "</filetodownload><destpath>" + words_[at + 2] +
                     "</destpath><progressevents>true</progressevents>");
    in_request_ = false;
  }

  void Tell(Json event) const {
    if (in_request_ || GetCurrentThreadId() != thread_) {
      event["misplaced"] = true;
    }
    Print(event);
  }

  void End() {
    const Ending ending = std::exchange(ending_, Ending::kNone);
    open_ = 0;
    const int during = ThreadCount();
    if (ending == Ending::kLetGo) {
      object_.reset();
    } else {
      object_->ShutDown();
    }
    Print({{"event", "Ended"},
           {"before", threads_before_},
           {"during", during},
           {"after", ThreadCount()}});
    if (ending == Ending::kAgain) {
      object_->SetUp(*this);
      Request(words_.size() - 3);
    }
  }

  Ending ending_;
  std::vector<std::string> words_;
  const DWORD thread_ = GetCurrentThreadId();
  std::unique_ptr<platform::SuiteObjects> objects_;
  std::unique_ptr<platform::TransportObject> object_;
  std::optional<HeldFile> held_;
  int threads_before_ = 0;
  int open_ = 0;
  bool in_request_ = false;
  bool was_told_ = false;
};

Ending TakeEnding(std::vector<std::string>& words) {
  Ending ending = Ending::kNone;
  if (words.empty()) {
    return ending;
  }
  if (words.front() == "--shut-down") {
    ending = Ending::kShutDown;
  }
  if (words.front() == "--let-go") {
    ending = Ending::kLetGo;
  }
  if (words.front() == "--again") {
    ending = Ending::kAgain;
  }
  if (ending != Ending::kNone) {
    words.erase(words.begin());
  }
  return ending;
}

/// How many attempts on a held file must fail; 0 if none is held.
int TakeHeld(std::vector<std::string>& words) {
  if (words.size() < 2 || words.front() != "--held") {
    return 0;
  }
  const int held = std::stoi(words[1]);
  words.erase(words.begin(), words.begin() + 2);
  return held;
}

}  // namespace

int main() {
  try {
    std::vector<std::string> words = win32::StartWords();
    const Ending ending = TakeEnding(words);
    const int held = TakeHeld(words);
    const win32::ComApartment apartment;
    Client(ending, held, std::move(words)).Run();
    // What the system still holds of a cancelled transfer ends by itself.
    const ULONGLONG limit = GetTickCount64() + 240'000;
    while (!SuiteCanUnload() && GetTickCount64() < limit) {
      Sleep(10);
    }
    Print({{"event", "Gone"}, {"library", SuiteCanUnload() ? "free" : "held"}});
    return 0;
  } catch (const kitbay::base::Failure& failure) {
    Print({{"event", "Failure"},
           {"number", failure.number()},
           {"description", failure.description()}});
    return 1;
  }
}
