#pragma once

#include <string>

#include "platform/files.h"

namespace kitbay::fakes {

/// The file system of the machine that runs the tests. Drive C: is one of its folders; names are
/// case-sensitive, and `Exists` does not support patterns.
class DiskFiles : public platform::Files {
 public:
  /// `drive` is the folder that C: stands for.
  explicit DiskFiles(std::string drive);

  bool Exists(const std::string& path) const override;
  std::string Read(const std::string& path) const override;
  std::unique_ptr<platform::FileReader> Open(const std::string& path) const override;
  void Create(const std::string& path, std::string_view bytes) override;
  void Replace(const std::string& path, std::string_view bytes) override;
  bool ReplaceUnchanged(const std::string& path, std::string_view before,
                        std::string_view bytes) override;
  void ReplaceInUse(const std::string& path, std::string_view bytes) override {
    Replace(path, bytes);
  }
  void Delete(const std::string& path) override;
  void WaitForOthers(unsigned /*milliseconds*/) const override {}
  void SweepReplacements(const std::string& /*folder*/) override {}  // Replacements leave nothing.
  void CreateFolder(const std::string& path) override;
  bool RefusesFiles(const std::string& /*folder*/) override { return false; }
  bool IsLink(const std::string& path) const override;
  platform::LocalTime LastModified(const std::string& path) const override;
  void Redate(const std::string& path, const platform::LocalTime& time) override;

 private:
  std::string Place(const std::string& path) const;

  std::string drive_;
};

}  // namespace kitbay::fakes
