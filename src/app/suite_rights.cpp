#include "app/suite_rights.h"

#include <algorithm>
#include <array>

namespace kitbay::app {
namespace {

// The folders of the log, downloads, manifests, components and the datastore.
constexpr std::array kFolders = {"", "\\Temp", "\\Kitbay", "\\addons", "\\Channels", "\\Datastore"};

std::string WhyNot(const base::Settings& settings) {
  return "You do not have permission to change files in " + settings.InstallFolder + ".";
}

std::string WhatToDo(const base::Settings& settings) {
  return settings.is_administrator ? "Ask the person who manages that folder."
                                   : "Start Kitbay again and agree when Windows asks for an "
                                     "administrator, or ask one for help.";
}

}  // namespace

void SuiteRights::Check() {
  parts_.settings.is_administrator = parts_.elevation.HasAdministratorRights();
  parts_.settings.may_change_suite = MayWriteEverywhere();
  if (!parts_.settings.may_change_suite && !parts_.settings.is_administrator) {
    AskForRights();
  }
}

// A missing folder is created when it is needed, in a folder that exists.
bool SuiteRights::MayWriteEverywhere() {
  const std::string& suite = parts_.settings.InstallFolder;
  return suite.empty() || std::none_of(kFolders.begin(), kFolders.end(), [&](const char* folder) {
           return parts_.files.RefusesFiles(suite + folder);
         });
}

// The program that starts with the rights must find no other instance. Another one may have been
// started while the user was asked.
void SuiteRights::AskForRights() {
  parts_.instance_mark.Release();
  const bool is_started =
      parts_.elevation.StartWithAdministratorRights() == platform::ElevationAnswer::kStarted;
  if (is_started || parts_.instance_mark.PreviousInstanceExists()) {
    parts_.window.Unload();
  }
}

void SuiteRights::TellOnce() {
  if (is_told_ || parts_.settings.may_change_suite) {
    return;
  }
  is_told_ = true;
  parts_.desktop.ShowMessage(
      WhyNot(parts_.settings) +
          " Kitbay shows what is installed, but it cannot ask the update sources, and it cannot "
          "install, update or remove anything.\n\n" +
          WhatToDo(parts_.settings),
      platform::kMessageTitle, platform::kOkOnly);
}

bool SuiteRights::DemandChange() {
  if (!parts_.settings.may_change_suite) {
    parts_.desktop.ShowMessage(WhyNot(parts_.settings) +
                                   " Kitbay cannot install, update or remove anything there.\n\n" +
                                   WhatToDo(parts_.settings),
                               platform::kMessageTitle, platform::kOkOnly);
  }
  return parts_.settings.may_change_suite;
}

}  // namespace kitbay::app
