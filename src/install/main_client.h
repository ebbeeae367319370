#pragma once

#include <string>

#include "base/error_log.h"
#include "base/settings.h"
#include "platform/desktop.h"

namespace kitbay::install {

/// The user's answer before a component is removed, if one was needed.
enum class RemovalAnswer {
  kCancelled,         ///< nothing is to be removed
  kClientClosed,      ///< the main client was running and has been sent the close message
  kClientNotRunning,  ///< there was no main client to close
};

/// Closes the suite's main client before its components change, and starts it again. Does not wait
/// for a main client that does not close.
class MainClient {
 public:
  MainClient(base::ErrorLog& log, const base::Settings& settings, platform::Desktop& desktop)
      : log_(log), settings_(settings), desktop_(desktop) {}

  /// Asks whether the main client may be closed for an update of the component `name`, and closes
  /// it. Returns false only if the user cancels; if no main client is running, nobody is
  /// asked.
  bool CheckExeForUpdate(const std::string& name, const std::string& kind);

  /// Asks whether the component `name` may be removed, and closes the main client if it is running.
  /// Throws `base::Failure` if the user cannot be asked.
  RemovalAnswer AskBeforeRemoval(const std::string& name, const std::string& kind);

  /// Starts the main client as the user, without waiting for it. If this process has more rights
  /// and the client cannot be started with the user's, tells the user to start it.
  void LaunchMainApplication();

 private:
  void StartAsUser(const std::string& path);
  platform::WindowHandle FindWindow();
  bool Confirm(const std::string& question);

  base::ErrorLog& log_;
  const base::Settings& settings_;
  platform::Desktop& desktop_;
};

}  // namespace kitbay::install
