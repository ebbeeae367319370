#include "app/update_source_form.h"

namespace kitbay::app {

// The dialog may outlive the main window's page when the program ends; its additions are then asked
// at the next start.
void UpdateSourceForm::GetDirectoryPreferenceFile() {
  if (page_.IsConnected()) {
    driver_.GetDirectoryPreferenceFile();
  }
}

void UpdateSourceForm::TellNotSaved() {
  desktop_.ShowMessage("The list of directories could not be saved.", platform::kMessageTitle,
                       platform::kOkOnly);
}

void UpdateSourceForm::TellSameName(const std::string& url, const std::string& other) {
  desktop_.ShowMessage(url + " and " + other +
                           " have the same file name. What one of them offers replaces what the "
                           "other offers.",
                       platform::kMessageTitle, platform::kOkOnly);
}

}  // namespace kitbay::app
