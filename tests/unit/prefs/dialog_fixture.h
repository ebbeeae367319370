#pragma once

#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <vector>

#include "fakes/fake_preference_window.h"
#include "fakes/memory_files.h"
#include "fakes/recording_error_log.h"
#include "prefs/update_source_dialog.h"

namespace kitbay::prefs {

using testing::ElementsAre;
using testing::IsEmpty;

inline constexpr const char* kPath = "C:\\User\\Ovalink\\updatepreference.xml";
inline constexpr const char* kPermissionDenied = "Permission denied";
inline constexpr platform::WindowHandle kOwner{0x10042};

/// The dialog on a file in memory, with a main window that counts its notifications.
class DialogTest : public testing::Test, private SourceListUser {
 protected:
  DialogTest() {
    settings_.CustomDataFolder = "C:\\User\\Ovalink\\CustomData";
    files_.AddFolder("C:\\User\\Ovalink");
  }

  /// The bytes of a file with these sources.
  static std::string FileOf(const std::vector<std::string>& urls) {
    std::string file = "<root><preferences>";
    for (const std::string& url : urls) {
      file += "<preference url=\"" + url + "\"/>";
    }
    return file + "</preferences></root>";
  }

  void Open() { dialog_.Show(kOwner); }
  void OpenWith(const std::vector<std::string>& urls) { OpenFile(FileOf(urls)); }
  void OpenFile(const std::string& bytes) {
    files_.AddFile(kPath, bytes);
    Open();
    window_.calls().Clear();
  }

  /// Types the text and presses the button.
  void Add(const std::string& text) {
    window_.Type(text);
    window_.events()->cmdPrefOk_Click();
  }

  void SelectAndPressDelete(int position) {
    window_.Select(position);
    window_.events()->lstPrefURL_KeyDown(46);
  }

  std::string File() const { return files_.Bytes(kPath).value_or("(no file)"); }

  static fakes::LogEntry Entry(const std::string& procedure, base::RuntimeError error) {
    const base::Failure failure(error);
    return fakes::Entry(procedure, failure.number(), failure.description());
  }

  fakes::RecordingErrorLog log_;
  fakes::MemoryFiles files_;
  base::Settings settings_;
  catalog::UpdateSourceList sources_;
  update::UpdateSourceFile source_file_{log_, files_, settings_, sources_};
  fakes::FakePreferenceWindow window_;
  UpdateSourceDialog dialog_{log_, files_, source_file_, window_, *this};

  /// The contents of the file at each notification of the main window.
  std::vector<std::string> told_;

  /// How often a change that could not be saved was reported.
  int unsaved_ = 0;

  /// What was reported about sources with the same file name.
  std::vector<std::string> same_names_;

 private:
  void GetDirectoryPreferenceFile() override { told_.push_back(File()); }
  void TellNotSaved() override { ++unsaved_; }
  void TellSameName(const std::string& url, const std::string& other) override {
    same_names_.push_back(url + " " + other);
  }
};

}  // namespace kitbay::prefs
