#pragma once

#include <string>

#include "base/error_log.h"
#include "base/settings.h"
#include "catalog/update_source_list.h"
#include "platform/file_system_object.h"
#include "platform/files.h"

namespace kitbay::update {

/// The user's file of update sources, `updatepreference.xml`, and the list that it holds.
class UpdateSourceFile {
 public:
  UpdateSourceFile(base::ErrorLog& log, platform::Files& files, const base::Settings& settings,
                   catalog::UpdateSourceList& sources)
      : log_(log), files_(files), settings_(settings), sources_(sources) {}

  /// Creates the file when it is missing and sets its first source to the installation's default.
  /// Without a readable default the file stays as it is. `file_system` may be empty; that is
  /// logged.
  void MakeDirectoryPreferenceFile(platform::FileSystemObject* file_system);

  /// Reads the file into the source list: replaces `UpdateSources`, appends to
  /// `PendingSources`. A
  /// missing or unreadable file leaves no `UpdateSources`. Sources whose manifests have one file
  /// name are logged.
  void GetPreferences();

  std::string Path() const;

 private:
  void ReportSameNames() const;
  void CreateWithOneSource(platform::FileSystemObject& file_system) const;

  base::ErrorLog& log_;
  platform::Files& files_;
  const base::Settings& settings_;
  catalog::UpdateSourceList& sources_;
};

}  // namespace kitbay::update
