#pragma once

#include <string>
#include <vector>

#include "base/failure.h"
#include "catalog/installed_with_updates.h"

namespace kitbay::catalog {

/// Records every call, in order, as "AddAddonInfo news.xml [chat dice] 1 2": the manifest, the ids
/// of the installed entries and the row numbers that it takes, one per entry.
class RecordingUpdateCheck : public UpdateCheck {
 public:
  explicit RecordingUpdateCheck(InstalledRows& shown) : shown_(shown) {}

  void AddAddonInfo(Installed installed, const std::string& manifest, RowNumber& row) override {
    Note("AddAddonInfo", installed, manifest, row);
  }
  void AddTransportInfo(Installed installed, const std::string& manifest, RowNumber& row) override {
    Note("AddTransportInfo", installed, manifest, row);
  }
  void AddInfo(Installed installed, const std::string& manifest, RowNumber& row) override {
    Note("AddInfo", installed, manifest, row);
  }
  void AddCustomInfo(Installed installed, const std::string& manifest, RowNumber& row) override {
    Note("AddCustomInfo", installed, manifest, row);
  }

  std::vector<std::string> calls;
  std::vector<InstalledRows> shown_at_call;  ///< the collections at each call
  bool notes_ids = true;  ///< whether the entries' ids are added to the shared collection
  bool fails = false;     ///< whether each call fails with error 9 after it is recorded

 private:
  void Note(const std::string& procedure, Installed installed, const std::string& manifest,
            RowNumber& row) {
    shown_at_call.push_back(shown_);
    std::string ids;
    std::string rows;
    for (const InstalledEntry& entry : installed) {
      const std::string id(entry.id.value_or(""));
      ids += (ids.empty() ? "" : " ") + id;
      rows += " " + std::to_string(row.Next());
      if (notes_ids) {
        shown_.ids.push_back(id);
      }
    }
    calls.push_back(procedure + " " + manifest + " [" + ids + "]" + rows);
    if (fails) {
      throw base::Failure(base::RuntimeError::kSubscriptOutOfRange);
    }
  }

  InstalledRows& shown_;
};

}  // namespace kitbay::catalog
