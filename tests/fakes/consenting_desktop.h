#pragma once

#include <cstdint>
#include <optional>
#include <string>

#include "platform/desktop.h"

namespace kitbay::fakes {

/// A desktop without windows, whose user agrees to everything at once.
class ConsentingDesktop : public platform::Desktop {
 public:
  int PlatformId() const override { return platform::kPlatformNt; }
  int ShowMessage(const std::string& /*text*/, const std::string& /*title*/,
                  int /*style*/) override {
    return platform::kAnswerOk;
  }
  void DisplayHelpTopic(const std::string& /*topic*/) override {}
  void CloseAllHelp() override {}
  void PassForegroundRight() override {}
  void SetWindowPos(platform::WindowHandle /*window*/, std::intptr_t /*insert_after*/,
                    unsigned /*flags*/) override {}
  void ShowWindow(platform::WindowHandle /*window*/, int /*command*/) override {}
  void SetActiveWindow(platform::WindowHandle /*window*/) override {}
  platform::WindowHandle FindTopWindow(const std::string& /*window_class*/,
                                       const std::string& /*caption*/) override {
    return {};
  }
  void SendClose(platform::WindowHandle /*window*/) override {}
  std::optional<int> ProgramBits(const std::string& /*path*/) const override { return {}; }
  void StartProgram(const std::string& /*path*/) override {}
  void StartProgramAsUser(const std::string& /*path*/) override {}
};

}  // namespace kitbay::fakes
