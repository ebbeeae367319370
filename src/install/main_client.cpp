#include "install/main_client.h"

#include <cstdint>

#include "base/failure.h"
#include "base/guarded.h"

namespace kitbay::install {
namespace {

using base::guarded;

constexpr const char* kWindowClass = "ThunderRT6FormDC";
constexpr const char* kCaption = "OvlTessel";
constexpr platform::WindowHandle kNoWindow;

}  // namespace

bool MainClient::CheckExeForUpdate(const std::string& name, const std::string& kind) {
  bool may_update = true;
  guarded(log_, "Kitbay::CheckExeForUpdate", [&] {
    const platform::WindowHandle window = FindWindow();
    if (window == kNoWindow) {
      return;
    }
    const std::string& client = settings_.MainAppName;
    may_update =
        Confirm("To Update " + name + " " + kind + " " + client + " needs to be shut down. " +
                client + " will restart after changes take effect.");
    if (may_update) {
      desktop_.SendClose(window);
    }
  });
  return may_update;
}

RemovalAnswer MainClient::AskBeforeRemoval(const std::string& name, const std::string& kind) {
  const platform::WindowHandle window = FindWindow();
  if (window == kNoWindow) {
    return Confirm("Are you sure you want to Remove the " + name + " " + kind + ".")
               ? RemovalAnswer::kClientNotRunning
               : RemovalAnswer::kCancelled;
  }
  const std::string& client = settings_.MainAppName;
  if (!Confirm("To Remove " + name + " " + kind + " " + client +
               "  needs to be shut down. Please restart " + client +
               " for the changes to take effect.")) {
    return RemovalAnswer::kCancelled;
  }
  desktop_.SendClose(window);
  return RemovalAnswer::kClientClosed;
}

void MainClient::LaunchMainApplication() {
  guarded(log_, "Kitbay::LaunchMainApplication", [&] {
    const std::string path = settings_.InstallFolder + "\\" + settings_.MainAppExe;
    if (settings_.is_administrator) {
      StartAsUser(path);
    } else {
      desktop_.StartProgram(path);
    }
  });
}

// The client runs for the user, whatever rights Kitbay was given.
void MainClient::StartAsUser(const std::string& path) {
  try {
    desktop_.StartProgramAsUser(path);
  } catch (const base::Failure& failure) {
    if (failure.number() != static_cast<std::int32_t>(base::RuntimeError::kFileNotFound)) {
      desktop_.ShowMessage(settings_.MainAppName +
                               " could not be started again with your own rights. Please start it "
                               "yourself.",
                           platform::kMessageTitle, platform::kOkOnly);
    }
    throw;
  }
}

platform::WindowHandle MainClient::FindWindow() {
  return desktop_.FindTopWindow(kWindowClass, kCaption);
}

bool MainClient::Confirm(const std::string& question) {
  return desktop_.ShowMessage(question, platform::kMessageTitle, platform::kOkCancel) ==
         platform::kAnswerOk;
}

}  // namespace kitbay::install
