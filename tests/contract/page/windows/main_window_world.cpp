#include <windows.h>

#include <commctrl.h>

#include <memory>
#include <stdexcept>

#include "contract/page/main_window_contract.h"
#include "contract/page/windows/loaded_window.h"

namespace kitbay::contract {
namespace {

class Win32MainWindowWorld : public MainWindowWorld {
 public:
  platform::MainWindow& window() override { return loaded_.window(); }
  RecordingMainWindowEvents& events() override { return loaded_; }
  void ShowPage() override {
    if (!loaded_.ShowMarkup("<html><body><div id='list'></div></body></html>")) {
      throw std::runtime_error("no page");
    }
  }
  bool IsShown() const override { return IsWindowVisible(loaded_.handle()) != FALSE; }
  bool IsProgressShown() const override { return IsWindowVisible(progress_) != FALSE; }
  bool IsProgressInStatusBar() const override {
    const HWND parent = GetParent(progress_);
    EXPECT_TRUE(parent == status_bar_ || parent == loaded_.handle());
    return parent == status_bar_;
  }
  platform::Rectangle ProgressPlace() const override {
    const RECT place = PlaceIn(GetParent(progress_), progress_);
    return {static_cast<int>(place.left), static_cast<int>(place.top),
            static_cast<int>(place.right), static_cast<int>(place.bottom)};
  }
  int Progress() const override {
    return static_cast<int>(SendMessageW(progress_, PBM_GETPOS, 0, 0));
  }

 private:
  LoadedWindow loaded_;
  HWND status_bar_ = loaded_.Control(STATUSCLASSNAMEW);
  HWND progress_ = loaded_.Control(PROGRESS_CLASSW);
};

std::unique_ptr<MainWindowWorld> MakeWorld() { return std::make_unique<Win32MainWindowWorld>(); }

INSTANTIATE_TEST_SUITE_P(Win32, MainWindowContract, testing::Values(&MakeWorld));

}  // namespace
}  // namespace kitbay::contract
