#pragma once

#include <cstdint>
#include <pugixml.hpp>
#include <string>

#include "base/error_log.h"
#include "base/settings.h"
#include "catalog/update_source_list.h"
#include "platform/file_system_object.h"
#include "platform/files.h"

namespace kitbay::update {

/// The user's file of update sources, `updatepreference.xml`, and the list in it.
class UpdateSourceFile {
 public:
  UpdateSourceFile(base::ErrorLog& log, platform::Files& files, const base::Settings& settings,
                   catalog::UpdateSourceList& sources)
      : log_(log), files_(files), settings_(settings), sources_(sources) {}

  /// Creates the file if it is missing, and sets its first source to the installation's default,
  /// and its key to the default's key, if there is one. Otherwise a source that is still the same
  /// keeps its key. Without a readable default the file is unchanged. `file_system` may be empty;
  /// that is logged.
  void MakeDirectoryPreferenceFile(platform::FileSystemObject* file_system);

  /// Reads the file into the source list: replaces `UpdateSources` and the keys, appends to
  /// `PendingSources`. A missing or unreadable file leaves `UpdateSources` empty but keeps the
  /// keys, because answers may still be on their way. Sources whose manifests have the same file
  /// name are logged.
  void GetPreferences();

  /// Records that the source of the signed manifest with that file name has reached `serial`, in
  /// the list and in the file; ignores a lower one than before. Fails as `catalog::ChangeXml`.
  void NoteSerial(const std::string& manifest, std::uint64_t serial);

  std::string Path() const;

 private:
  void ReportSameNames() const;
  void CreateWithOneSource(platform::FileSystemObject& file_system) const;
  void ReadKey(const pugi::xml_node& source, const std::string& url);

  base::ErrorLog& log_;
  platform::Files& files_;
  const base::Settings& settings_;
  catalog::UpdateSourceList& sources_;
};

}  // namespace kitbay::update
