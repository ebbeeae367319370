#pragma once

#include <cstdint>
#include <string>

#include "base/error_log.h"
#include "base/settings.h"
#include "platform/registry_keys.h"
#include "platform/services.h"

namespace kitbay::install {

/// The public class `Registry`: the suite's own key, the user's application data folder and the
/// suite's URL protocol. Every member logs its failure and then returns its default.
class Registry : public platform::RegistryService {
 public:
  /// Opens the suite's key of the current user, and creates it if it is missing.
  Registry(base::ErrorLog& log, platform::RegistryKeys& keys, const base::Settings& settings);
  ~Registry() override;
  Registry(const Registry&) = delete;
  Registry& operator=(const Registry&) = delete;
  Registry(Registry&&) = delete;
  Registry& operator=(Registry&&) = delete;

  /// Registers the protocol "ovl" to open with this program: for the machine or, if that is
  /// refused, for the user. Other failures are not reported.
  void RegisterUrlHandler() override;

  /// The user's application data folder; empty if it cannot be read.
  std::string GetAppDataPath() override;

  /// The handle of the suite's key.
  std::int32_t ROOT_REGISTRY_KEY() override;

 private:
  void OpenRootKey();
  void SetClassText(const std::string& name, const std::string& data);
  platform::RegistryKey OpenProtocolKey();
  std::int32_t SetDefaultValue(platform::RegistryKey hive, const std::string& name,
                               const std::string& data);

  base::ErrorLog& log_;
  platform::RegistryKeys& keys_;
  const base::Settings& settings_;
  platform::RegistryKey root_;
};

}  // namespace kitbay::install
