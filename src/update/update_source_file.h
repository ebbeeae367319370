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

/// The user's file of update sources, `updatepreference.xml`, and the list that it holds.
class UpdateSourceFile {
 public:
  UpdateSourceFile(base::ErrorLog& log, platform::Files& files, const base::Settings& settings,
                   catalog::UpdateSourceList& sources)
      : log_(log), files_(files), settings_(settings), sources_(sources) {}

  /// Creates the file when it is missing and sets its first source to the installation's default,
  /// and its key to the one that comes with that, if any: a source that had a key and is still the
  /// same keeps it otherwise. Without a readable default the file stays as it is. `file_system` may
  /// be empty; that is logged.
  void MakeDirectoryPreferenceFile(platform::FileSystemObject* file_system);

  /// Reads the file into the source list: replaces `UpdateSources` and the keys, appends to
  /// `PendingSources`. A missing or unreadable file leaves no `UpdateSources`, and the keys:
  /// answers may still be on their way. Sources whose manifests have one file name are logged.
  void GetPreferences();

  /// Notes that the source of the signed manifest of that file name has reached `serial`, in the
  /// list and in the file; a lower one than before is passed over. Fails as `catalog::ChangeXml`.
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
