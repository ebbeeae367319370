#pragma once

#include <cstddef>
#include <string>

#include "base/component_kind.h"
#include "base/error_log.h"
#include "base/settings.h"
#include "catalog/catalog_files.h"
#include "catalog/file_version.h"
#include "catalog/installed_components.h"
#include "catalog/manifest_trust.h"
#include "catalog/row_writer.h"
#include "catalog/update_source_list.h"
#include "fakes/fake_clock.h"
#include "platform/files.h"
#include "platform/version_resource.h"

namespace kitbay::bench {

/// A datastore as the suite writes it, with `entries` entries of one kind; UTF-8.
std::string DatastoreOf(base::ComponentKind kind, std::size_t entries);

/// A manifest as a source serves it, with `entries` entries of one kind whose ids begin with
/// `id_prefix`; UTF-8. Entries with the prefix "component" have the ids of a datastore, each with a
/// newer version.
std::string ManifestOf(base::ComponentKind kind, std::size_t entries, const std::string& id_prefix);

/// The same with `entries` entries that alternate between the three kinds. In the manifest, every
/// other id begins with `id_prefix` and is not in the datastore.
std::string DatastoreOfAllKinds(std::size_t entries);
std::string ManifestOfAllKinds(std::size_t entries, const std::string& id_prefix);

/// A disk that contains one datastore and no other file.
class DatastoreDisk : public platform::Files {
 public:
  explicit DatastoreDisk(std::string datastore) : datastore_(std::move(datastore)) {}

  const std::string& datastore() const { return datastore_; }

  bool Exists(const std::string& path) const override;
  std::string Read(const std::string& path) const override;
  std::unique_ptr<platform::FileReader> Open(const std::string& path) const override;
  void Create(const std::string& path, std::string_view bytes) override;
  void Replace(const std::string& path, std::string_view bytes) override;
  bool ReplaceUnchanged(const std::string& path, std::string_view /*before*/,
                        std::string_view bytes) override {
    Replace(path, bytes);
    return true;
  }
  void ReplaceInUse(const std::string& path, std::string_view bytes) override {
    Replace(path, bytes);
  }
  void Delete(const std::string& path) override { Create(path, {}); }
  void WaitForOthers(unsigned /*milliseconds*/) const override {}
  void SweepReplacements(const std::string& /*folder*/) override {}
  void CreateFolder(const std::string& path) override;
  bool RefusesFiles(const std::string& /*folder*/) override { return false; }
  bool IsLink(const std::string& /*path*/) const override { return false; }
  platform::LocalTime LastModified(const std::string& path) const override;
  void Redate(const std::string& path, const platform::LocalTime& /*time*/) override {
    Create(path, {});
  }

 private:
  std::string datastore_;
};

/// Every library has the same version.
class OneVersion : public platform::VersionResource {
 public:
  std::optional<platform::FileVersion> Read(const std::string& /*path*/) const override {
    return platform::FileVersion{0x00050002, 0x000100A7};
  }
};

/// A log that ends the run, because what is measured must work.
class StrictLog : public base::ErrorLog {
 public:
  std::string TimeText() const override { return {}; }
  void LogError(const std::string& time_text, const std::string& procedure, std::int32_t number,
                const std::string& description) override;
};

/// Creates the markup of each row, as the page gets it, and counts the rows.
class CountedRows : public catalog::RowWriter {
 public:
  std::size_t rows() const { return rows_; }
  std::size_t markup_bytes() const { return markup_bytes_; }

  void AddImageTab(catalog::Category /*category*/) override {}
  void ShowTab(base::ComponentKind /*kind*/, bool /*shown*/) override {}
  void FillDivHeader(catalog::Category /*category*/, base::ComponentKind /*kind*/) override {}
  void FillEmptyDivHeader(base::ComponentKind /*kind*/) override {}
  void FillDivStatus(base::ComponentKind /*kind*/, bool /*is_local*/) override {}
  void fillDiv(base::ComponentKind kind, const catalog::ComponentRow& row, bool is_core) override;
  void fillDivWithUpdates(base::ComponentKind /*kind*/, const catalog::ComponentRow& /*row*/,
                          bool /*is_core*/) override {}
  void showUpdates(base::ComponentKind /*kind*/, const catalog::ComponentRow& /*row*/) override {}

 private:
  std::size_t rows_ = 0;
  std::size_t markup_bytes_ = 0;
};

/// Counts the rows and creates no markup, to measure only how their contents are determined.
class PlainRows : public CountedRows {
 public:
  std::size_t count() const { return count_; }

  void fillDiv(base::ComponentKind /*kind*/, const catalog::ComponentRow& /*row*/,
               bool /*is_core*/) override {
    ++count_;
  }
  void fillDivWithUpdates(base::ComponentKind /*kind*/, const catalog::ComponentRow& /*row*/,
                          bool /*is_core*/) override {
    ++count_;
  }
  void showUpdates(base::ComponentKind /*kind*/, const catalog::ComponentRow& /*row*/) override {
    ++count_;
  }

 private:
  std::size_t count_ = 0;
};

/// The catalog over a suite with `entries` installed components of `kind`.
class SampleSuite {
 public:
  SampleSuite(base::ComponentKind kind, std::size_t entries);

  const std::string& datastore() const { return disk_.datastore(); }
  const CountedRows& rows() const { return rows_; }

  /// Loads the datastore as the program does, and does nothing with it.
  void Load();

  /// Writes the installed list of the suite's kind.
  void List();

 private:
  base::ComponentKind kind_;
  DatastoreDisk disk_;
  base::Settings settings_;
  StrictLog log_;
  OneVersion version_resource_;
  CountedRows rows_;
  fakes::FakeClock clock_;
  catalog::UpdateSourceList sources_;
  catalog::ManifestTrust trust_{log_, clock_, sources_};
  catalog::CatalogFiles catalog_files_{disk_, settings_, trust_};
  catalog::FileVersions versions_{log_, settings_, version_resource_};
  catalog::InstalledComponents installed_{log_, catalog_files_, versions_, rows_};
};

}  // namespace kitbay::bench
