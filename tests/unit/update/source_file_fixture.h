#pragma once

#include <gmock/gmock.h>

#include <string>

#include "fakes/memory_files.h"
#include "fakes/recording_error_log.h"
#include "update/update_source_file.h"

namespace kitbay::update {

/// The user's file of update sources and the installation's own, neither of which exists yet.
class SourceFileTest : public testing::Test {
 protected:
  static constexpr const char* kPath = "C:\\User\\Ovalink\\updatepreference.xml";
  static constexpr const char* kSeed = "C:\\Suite\\Kitbay\\DirectoryPreference.xml";

  SourceFileTest() {
    settings_.InstallFolder = "C:\\Suite";
    settings_.CustomDataFolder = "C:\\User\\Ovalink\\CustomData";
    files_.AddFolder("C:\\User\\Ovalink\\CustomData");
    files_.AddFolder("C:\\Suite\\Kitbay");
  }

  /// A file with those preference elements.
  static std::string FileOf(const std::string& sources) {
    return "<root><preferences>" + sources + "</preferences></root>";
  }

  std::string File() const { return files_.Bytes(kPath).value_or("(no file)"); }

  /// The bytes of the user's file after it was loaded from `bytes` and seeded.
  std::string Seeded(const std::string& bytes) {
    files_.AddFile(kPath, bytes);
    sources_file_.MakeDirectoryPreferenceFile(&file_system_);
    return File();
  }

  fakes::RecordingErrorLog log_;
  fakes::MemoryFiles files_;
  fakes::MemoryFileSystemObject file_system_{files_};
  base::Settings settings_;
  catalog::UpdateSourceList sources_;
  UpdateSourceFile sources_file_{log_, files_, settings_, sources_};
};

}  // namespace kitbay::update
