#pragma once

#include <memory>
#include <string>

#include "platform/active_objects.h"
#include "platform/clock.h"
#include "platform/com_server.h"
#include "platform/desktop.h"
#include "platform/elevation.h"
#include "platform/files.h"
#include "platform/instance_mark.h"
#include "platform/libraries.h"
#include "platform/main_window.h"
#include "platform/preference_window.h"
#include "platform/registry_keys.h"
#include "platform/suite_objects.h"
#include "platform/version_resource.h"

namespace kitbay::platform::win32 {

std::unique_ptr<Clock> MakeClock();
std::unique_ptr<Files> MakeFiles();
std::unique_ptr<RegistryKeys> MakeRegistryKeys();
std::unique_ptr<VersionResource> MakeVersionResource();
std::unique_ptr<Desktop> MakeDesktop();
std::unique_ptr<Libraries> MakeLibraries();
std::unique_ptr<Elevation> MakeElevation();

/// Keeps the calling thread in COM's single-threaded apartment as long as it lives; the objects
/// below need it.
class ComApartment {
 public:
  ComApartment();
  ~ComApartment();
  ComApartment(const ComApartment&) = delete;
  ComApartment& operator=(const ComApartment&) = delete;
};

std::unique_ptr<ActiveObjects> MakeActiveObjects();
std::unique_ptr<ComServer> MakeComServer();
std::unique_ptr<InstanceMark> MakeInstanceMark();

/// The suite's objects: the registered ones or, if there are none, those in `folder` that the
/// side-by-side manifest there names. UTF-8.
std::unique_ptr<SuiteObjects> MakeSuiteObjects(const std::string& folder);

/// Tells the system not to replace windows by ghosts, for the rest of the process, if they do not
/// respond for some seconds, as while a library registers itself: a ghost's close button would end
/// the program in the middle of its work.
void DisableGhostWindows();

std::unique_ptr<MessageLoop> MakeMessageLoop();

/// A main window whose keys `loop` offers first to the window, then to its browser control.
std::unique_ptr<MainWindow> MakeMainWindow(MessageLoop& loop);

/// A dialog of update sources whose keys `loop` passes on.
std::unique_ptr<PreferenceWindow> MakePreferenceWindow(MessageLoop& loop);

/// The folder of the running executable, and its file name without ".exe". UTF-8.
struct ProgramPlace {
  std::string folder;
  std::string name;
};
ProgramPlace FindProgramPlace();

}  // namespace kitbay::platform::win32
