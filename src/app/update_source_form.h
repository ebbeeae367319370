#pragma once

#include "app/main_form.h"
#include "base/error_log.h"
#include "platform/desktop.h"
#include "platform/files.h"
#include "platform/main_window.h"
#include "platform/preference_window.h"
#include "prefs/update_source_dialog.h"
#include "update/update_driver.h"
#include "update/update_source_file.h"
#include "view/page_document.h"

namespace kitbay::app {

/// The dialog of update sources, owned by the main window. The driver asks new sources while there
/// is a page to show the answers.
class UpdateSourceForm : public PreferenceForm, private prefs::SourceListUser {
 public:
  UpdateSourceForm(base::ErrorLog& log, platform::Files& files,
                   update::UpdateSourceFile& source_file, platform::PreferenceWindow& dialog_window,
                   platform::Desktop& desktop, const platform::MainWindow& main_window,
                   const view::PageDocument& page, update::UpdateDriver& driver)
      : dialog_(log, files, source_file, dialog_window, *this),
        desktop_(desktop),
        main_window_(main_window),
        page_(page),
        driver_(driver) {}

  void Show() override { dialog_.Show(main_window_.Handle()); }
  void FocusUrlBox() override { dialog_.FocusUrlBox(); }
  void Unload() override { dialog_.Unload(); }

 private:
  void GetDirectoryPreferenceFile() override;
  void TellNotSaved() override;
  void TellSameName(const std::string& url, const std::string& other) override;

  prefs::UpdateSourceDialog dialog_;
  platform::Desktop& desktop_;
  const platform::MainWindow& main_window_;
  const view::PageDocument& page_;
  update::UpdateDriver& driver_;
};

}  // namespace kitbay::app
