#pragma once

#include <map>
#include <string>

#include "platform/files.h"

namespace kitbay::source_tool {

/// The files of the machine that the tool runs on, Windows or not. A path is one of the machine's
/// own. A Kitbay path such as "C:\Suite\Datastore\olregistry.xml" is a file that was put there with
/// `Place`; its case does not matter. Operations that the tool does not need fail with 70.
class Disk : public platform::Files {
 public:
  /// Makes the machine's file at `path` appear at `place` as well.
  void Place(const std::string& place, const std::string& path);

  bool Exists(const std::string& path) const override;
  std::string Read(const std::string& path) const override;
  std::unique_ptr<platform::FileReader> Open(const std::string& path) const override;
  void Create(const std::string& path, std::string_view bytes) override;
  void Replace(const std::string& path, std::string_view bytes) override;

  bool ReplaceUnchanged(const std::string& path, std::string_view before,
                        std::string_view bytes) override;
  void ReplaceInUse(const std::string& path, std::string_view bytes) override;
  void Delete(const std::string& path) override;
  void WaitForOthers(unsigned milliseconds) const override;
  void SweepReplacements(const std::string& folder) override;
  void CreateFolder(const std::string& path) override;
  bool RefusesFiles(const std::string& folder) override;
  bool IsLink(const std::string& path) const override;
  platform::LocalTime LastModified(const std::string& path) const override;
  void Redate(const std::string& path, const platform::LocalTime& time) override;

 private:
  const std::string& Real(const std::string& path) const;

  std::map<std::string, std::string> placed_;  // real paths by their place in lower case
};

/// What follows the last "/" or "\" of a path.
std::string FileNameOf(const std::string& path);

}  // namespace kitbay::source_tool
