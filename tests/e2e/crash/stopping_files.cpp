#include "stopping_files.h"

#include <chrono>
#include <cstdio>
#include <thread>
#include <type_traits>

namespace kitbay::crash {

void StoppingFiles::Pass() const {
  if (++points_ == stop_) {
    std::puts("stopped");
    std::fflush(stdout);
    for (;;) {
      std::this_thread::sleep_for(std::chrono::hours(1));
    }
  }
}

template <typename Operation>
auto StoppingFiles::Between(Operation operation) const {
  Pass();
  if constexpr (std::is_void_v<decltype(operation())>) {
    operation();
    Pass();
  } else {
    auto result = operation();
    Pass();
    return result;
  }
}

bool StoppingFiles::Exists(const std::string& path) const {
  return Between([&] { return files_.Exists(path); });
}

std::string StoppingFiles::Read(const std::string& path) const {
  return Between([&] { return files_.Read(path); });
}

std::unique_ptr<platform::FileReader> StoppingFiles::Open(const std::string& path) const {
  return Between([&] { return files_.Open(path); });
}

void StoppingFiles::Create(const std::string& path, std::string_view bytes) {
  Between([&] { files_.Create(path, bytes); });
}

void StoppingFiles::Replace(const std::string& path, std::string_view bytes) {
  Between([&] { files_.Replace(path, bytes); });
}

bool StoppingFiles::ReplaceUnchanged(const std::string& path, std::string_view before,
                                     std::string_view bytes) {
  return Between([&] { return files_.ReplaceUnchanged(path, before, bytes); });
}

void StoppingFiles::ReplaceInUse(const std::string& path, std::string_view bytes) {
  Between([&] { files_.ReplaceInUse(path, bytes); });
}

void StoppingFiles::Delete(const std::string& path) {
  Between([&] { files_.Delete(path); });
}

void StoppingFiles::WaitForOthers(unsigned milliseconds) const {
  files_.WaitForOthers(milliseconds);
}

void StoppingFiles::SweepReplacements(const std::string& folder) {
  Between([&] { files_.SweepReplacements(folder); });
}

void StoppingFiles::CreateFolder(const std::string& path) {
  Between([&] { files_.CreateFolder(path); });
}

bool StoppingFiles::RefusesFiles(const std::string& folder) {
  return Between([&] { return files_.RefusesFiles(folder); });
}

bool StoppingFiles::IsLink(const std::string& path) const {
  return Between([&] { return files_.IsLink(path); });
}

platform::LocalTime StoppingFiles::LastModified(const std::string& path) const {
  return Between([&] { return files_.LastModified(path); });
}

void StoppingFiles::Redate(const std::string& path, const platform::LocalTime& time) {
  Between([&] { files_.Redate(path, time); });
}

}  // namespace kitbay::crash
