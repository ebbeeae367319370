#include "update/update_driver.h"

#include <algorithm>
#include <chrono>

#include "base/failure.h"
#include "base/guarded.h"
#include "base/text.h"
#include "catalog/manifest_file.h"
#include "update/source_address.h"

namespace kitbay::update {
namespace {

std::chrono::sys_days DayOf(const platform::LocalTime& time) {
  return std::chrono::year(time.year) / std::chrono::month(static_cast<unsigned>(time.month)) /
         std::chrono::day(static_cast<unsigned>(time.day));
}

}  // namespace

void UpdateDriver::GetDirectoryPreferenceFile() {
  base::guarded(parts_.log, "Kitbay::GetDirectoryPreferenceFile", [&] {
    parts_.source_file.GetPreferences();
    FindRefused();
    if (!parts_.settings.may_change_suite) {
      // Their answers could not be stored.
      parts_.sources.PendingSources.clear();
    }
    if (parts_.sources.UpdateSources.empty()) {
      parts_.tabs.ShowLocalData();
      throw base::Failure(base::RuntimeError::kSubscriptOutOfRange);
    }
    const std::string manifest = base::AfterLastSlash(parts_.sources.UpdateSources.front());
    if (manifest.empty()) {
      parts_.tabs.ShowLocalData();
    } else if (!IsCached(manifest)) {
      ShowLocalDataAndAsk();
    } else {
      ShowWithCachedManifests();
    }
    parts_.requests.unanswered().ShowStatus();
    TellRefused();
  });
}

void UpdateDriver::FindRefused() {
  refused_.clear();
  for (const std::string& source : parts_.sources.UpdateSources) {
    const std::string manifest = base::AfterLastSlash(source);
    if (!parts_.trust.IsDemandedOf(manifest) || !IsCached(manifest)) {
      continue;
    }
    try {
      parts_.trust.CheckSignature(
          manifest, parts_.files.Read(catalog::ManifestPath(parts_.settings, manifest)));
    } catch (const base::Failure& refusal) {
      parts_.trust.LogRefusal(refusal);
      refused_.emplace(base::ToLower(manifest), refusal.description());
    }
  }
}

// Last, after the sources have been asked: an answer may arrive while the user reads.
void UpdateDriver::TellRefused() {
  std::string list;
  for (const auto& [manifest, why] : refused_) {
    list += "\r\n" + why;
  }
  if (!list.empty()) {
    parts_.desktop.ShowMessage(
        "Kitbay does not use the saved manifest of an update source:\r\n" + list,
        platform::kMessageTitle, platform::kInformation);
  }
}

void UpdateDriver::ShowLocalDataAndAsk() {
  parts_.tabs.ShowLocalData();
  parts_.requests.CheckPreferences();
}

void UpdateDriver::ShowWithCachedManifests() {
  DropFreshSources();
  parts_.rows.AddImageTab(catalog::Category::kInstalled);
  if (parts_.requests.CheckPreferences()) {
    parts_.categories.OfferUpdates();
  } else {
    parts_.tabs.ShowLocalData();
  }
}

// Each source in the list removes one of its pending entries.
void UpdateDriver::DropFreshSources() {
  std::vector<std::string>& pending = parts_.sources.PendingSources;
  for (const std::string& source : parts_.sources.UpdateSources) {
    const std::string manifest = base::AfterLastSlash(source);
    if (!IsCached(manifest) || !IsFetchedToday(manifest) || parts_.manifests.IsUnusable(source)) {
      continue;
    }
    const auto entry = std::find_if(pending.begin(), pending.end(), [&](const std::string& other) {
      return base::ToLower(other) == base::ToLower(source);
    });
    if (entry != pending.end()) {
      parts_.sources.UsedCachedManifest = true;
      pending.erase(entry);
    }
  }
}

// Any other name could match other files.
bool UpdateDriver::IsCached(const std::string& manifest) const {
  return catalog::IsManifestName(manifest) && !refused_.contains(base::ToLower(manifest)) &&
         parts_.files.Exists(catalog::ManifestPath(parts_.settings, manifest));
}

bool UpdateDriver::IsFetchedToday(const std::string& manifest) const {
  const auto fetched =
      DayOf(parts_.files.LastModified(catalog::ManifestPath(parts_.settings, manifest)));
  return DayOf(parts_.clock.Now()) <= fetched;
}

}  // namespace kitbay::update
