#pragma once

#include <memory>
#include <string>

#include "platform/files.h"

namespace kitbay::crash {

/// Files whose operations are counted, once before and once after each, and that stop for ever at
/// one of these points, after the line "stopped".
class StoppingFiles : public platform::Files {
 public:
  /// Stops at point number `stop`, counted from 1; with 0, at none.
  StoppingFiles(platform::Files& files, int stop) : files_(files), stop_(stop) {}

  int points() const { return points_; }

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
  void Pass() const;

  /// Carries out `operation` between two points.
  template <typename Operation>
  auto Between(Operation operation) const;

  platform::Files& files_;
  int stop_;
  mutable int points_ = 0;
};

}  // namespace kitbay::crash
