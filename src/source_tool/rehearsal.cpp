#include "source_tool/rehearsal.h"

#include <array>
#include <cstdint>
#include <optional>
#include <sstream>

#include "base/failure.h"
#include "base/text.h"
#include "catalog/available_updates.h"
#include "catalog/catalog_files.h"
#include "catalog/file_version.h"
#include "catalog/installed_with_updates.h"
#include "catalog/manifest_file.h"
#include "catalog/new_component_listing.h"
#include "catalog/registry_files.h"
#include "source_tool/finding.h"
#include "view/page_ids.h"

namespace kitbay::source_tool {
namespace {

struct Row {
  std::string list;
  std::string name;
  std::string version;
  std::string buttons;
};

/// Keeps the rows instead of writing them into a page.
class KeptRows : public catalog::RowWriter {
 public:
  void AddImageTab(catalog::Category /*category*/) override {}
  void ShowTab(base::ComponentKind /*kind*/, bool /*shown*/) override {}
  void FillDivHeader(catalog::Category category, base::ComponentKind kind) override {
    const std::string list = category == catalog::Category::kInstalled
                                 ? view::kInstalledContainers[kind]
                                 : view::kUpdatedContainers[kind];
    std::erase_if(rows, [&](const Row& row) { return row.list == list; });
  }
  void FillEmptyDivHeader(base::ComponentKind /*kind*/) override {}
  void FillDivStatus(base::ComponentKind /*kind*/, bool /*is_local*/) override {}
  void fillDiv(base::ComponentKind kind, const catalog::ComponentRow& row, bool is_core) override {
    rows.push_back({view::kInstalledContainers[kind], std::string(row.name),
                    std::string(row.version), is_core ? "" : "Remove"});
  }
  void fillDivWithUpdates(base::ComponentKind kind, const catalog::ComponentRow& row,
                          bool is_core) override {
    rows.push_back({view::kInstalledContainers[kind], std::string(row.name),
                    std::string(row.version), is_core ? "Update" : "Remove, Update"});
  }
  void showUpdates(base::ComponentKind kind, const catalog::ComponentRow& row) override {
    rows.push_back({view::kUpdatedContainers[kind], std::string(row.name), std::string(row.version),
                    "Install"});
  }

  std::vector<Row> rows;
};

class KeptLog : public base::ErrorLog {
 public:
  std::string TimeText() const override { return {}; }
  void LogError(const std::string& /*time_text*/, const std::string& procedure,
                std::int32_t /*number*/, const std::string& description) override {
    entries.push_back(procedure + ": " + description);
  }

  std::vector<std::string> entries;
};

class NoClock : public platform::Clock {
 public:
  platform::LocalTime Now() const override { return {}; }
  std::string GeneralDate(const platform::LocalTime& /*time*/) const override { return {}; }
};

/// The given versions of libraries, whose folders have the names of the components' ids.
class GivenVersions : public platform::VersionResource {
 public:
  explicit GivenVersions(const std::map<std::string, std::string>& versions)
      : versions_(versions) {}

  std::optional<platform::FileVersion> Read(const std::string& path) const override {
    for (const auto& [id, version] : versions_) {
      if (base::ToLower(path).find("\\addons\\" + base::ToLower(id) + "\\") != std::string::npos) {
        return VersionOf(version);
      }
    }
    return std::nullopt;
  }

 private:
  static platform::FileVersion VersionOf(const std::string& text) {
    std::istringstream in(text);
    std::array<std::uint32_t, 4> parts{};
    char dot = '.';
    for (std::uint32_t& part : parts) {
      in >> part >> dot;
    }
    return {.most_significant = parts[0] << 16U | parts[1],
            .least_significant = parts[2] << 16U | parts[3]};
  }

  const std::map<std::string, std::string>& versions_;
};

void WriteAsJson(std::ostream& out, const KeptRows& rows, const KeptLog& log) {
  out << "{\"rows\":[";
  const char* separator = "";
  for (const Row& row : rows.rows) {
    out << separator << "{\"list\":" << JsonText(row.list) << ",\"name\":" << JsonText(row.name)
        << ",\"version\":" << JsonText(row.version) << ",\"buttons\":" << JsonText(row.buttons)
        << "}";
    separator = ",";
  }
  out << "],\"log\":[";
  separator = "";
  for (const std::string& entry : log.entries) {
    out << separator << JsonText(entry);
    separator = ",";
  }
  out << "]}\n";
}

void Write(std::ostream& out, const KeptRows& rows, const KeptLog& log) {
  std::string list;
  for (const Row& row : rows.rows) {
    if (row.list != list) {
      list = row.list;
      out << list << "\n";
    }
    out << "  " << row.name << ", Version " << row.version << " [" << row.buttons << "]\n";
  }
  for (const std::string& entry : log.entries) {
    out << "log: " << entry << "\n";
  }
}

}  // namespace

bool Rehearse(const RehearsedUser& user, bool as_json, std::ostream& out) {
  base::Settings settings;
  settings.InstallFolder = "C:\\Suite";
  settings.CustomDataFolder = "C:\\User";
  Disk disk;
  disk.Read(user.registry);
  disk.Place(catalog::DatastorePath(settings), user.registry);
  if (!user.custom_registry.empty()) {
    disk.Place(catalog::CustomRegistryPath(settings), user.custom_registry);
  }
  catalog::UpdateSourceList sources;
  for (const std::string& manifest : user.manifests) {
    disk.Read(manifest);
    disk.Place(catalog::ManifestPath(settings, FileNameOf(manifest)), manifest);
    sources.UpdateSources.push_back("source/" + FileNameOf(manifest));
  }
  KeptLog log;
  KeptRows rows;
  const NoClock clock;
  const GivenVersions resources(user.versions);
  const catalog::ManifestTrust trust(log, clock, sources);
  catalog::CatalogFiles files(disk, settings, trust);
  const catalog::FileVersions versions(log, settings, resources);
  catalog::InstalledRows shown;
  catalog::NewComponents found;
  catalog::AvailableUpdates available(log, files, versions, shown, rows);
  catalog::InstalledWithUpdates installed(log, files, settings, sources, available, shown, rows);
  catalog::NewComponentListing listing(log, files, sources, found, rows);
  const catalog::CatalogFiles::Refresh refresh(files);
  installed.InstalledAddons();
  installed.InstalledTransports();
  installed.InstalledChannels();
  listing.funcShowUpdates();
  listing.funcShowTransports();
  listing.funcShowChannels();
  (as_json ? WriteAsJson : Write)(out, rows, log);
  return log.entries.empty();
}

}  // namespace kitbay::source_tool
