// Puts the program on the real platform and runs it.
#include <memory>

#include "app/program.h"
#include "platform/win32/win32_platform.h"

namespace kitbay::app {
namespace {

namespace win32 = platform::win32;

/// Windows, one object per service.
class Windows {
 public:
  PlatformParts parts() const {
    return {*clock_,         *files_,     *keys_,           *version_resource_, *desktop_,
            *elevation_,     *libraries_, *active_objects_, *com_server_,       *instance_mark_,
            *suite_objects_, *loop_,      *window_,         *preference_window_};
  }

 private:
  win32::ComApartment apartment_;
  std::unique_ptr<platform::Clock> clock_ = win32::MakeClock();
  std::unique_ptr<platform::Files> files_ = win32::MakeFiles();
  std::unique_ptr<platform::RegistryKeys> keys_ = win32::MakeRegistryKeys();
  std::unique_ptr<platform::VersionResource> version_resource_ = win32::MakeVersionResource();
  std::unique_ptr<platform::Desktop> desktop_ = win32::MakeDesktop();
  std::unique_ptr<platform::Elevation> elevation_ = win32::MakeElevation();
  std::unique_ptr<platform::Libraries> libraries_ = win32::MakeLibraries();
  std::unique_ptr<platform::ActiveObjects> active_objects_ = win32::MakeActiveObjects();
  std::unique_ptr<platform::ComServer> com_server_ = win32::MakeComServer();
  std::unique_ptr<platform::InstanceMark> instance_mark_ = win32::MakeInstanceMark();
  std::unique_ptr<platform::SuiteObjects> suite_objects_ =
      win32::MakeSuiteObjects(win32::FindProgramPlace().folder);
  std::unique_ptr<platform::MessageLoop> loop_ = win32::MakeMessageLoop();
  std::unique_ptr<platform::MainWindow> window_ = win32::MakeMainWindow(*loop_);
  std::unique_ptr<platform::PreferenceWindow> preference_window_ =
      win32::MakePreferenceWindow(*loop_);
};

base::Settings OwnPlace() {
  const win32::ProgramPlace place = win32::FindProgramPlace();
  base::Settings settings;
  settings.program_folder = place.folder;
  settings.program_name = place.name;
  settings.program_bits = 8 * sizeof(void*);
  return settings;
}

}  // namespace
}  // namespace kitbay::app

int main() {
  kitbay::platform::win32::DisableGhostWindows();
  const kitbay::app::Windows windows;
  kitbay::app::Program(windows.parts(), kitbay::app::OwnPlace()).Run();
  return 0;
}
