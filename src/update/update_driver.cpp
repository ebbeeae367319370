#include "update/update_driver.h"

#include "base/failure.h"
#include "base/guarded.h"

namespace kitbay::update {

void UpdateDriver::GetDirectoryPreferenceFile() {
  base::guarded(log_, "Kitbay::GetDirectoryPreferenceFile", [&] {
    source_file_.GetPreferences();
    if (sources_.UpdateSources.empty()) {
      throw base::Failure(base::RuntimeError::kSubscriptOutOfRange);
    }
    tabs_.ShowLocalData();
  });
}

}  // namespace kitbay::update
