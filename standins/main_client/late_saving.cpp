#include "late_saving.h"

#include <windows.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "event_log.h"
#include "program_folder.h"

namespace {

constexpr int kMostLooks = 60;
constexpr DWORD kPauseMs = 50;

std::filesystem::path Datastore() { return PathBesideProgram(L"Datastore\\olregistry.xml"); }

std::string ReadDatastore() {
  std::ifstream file(Datastore(), std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

}  // namespace

LateSaving::LateSaving() {
  if (GetFileAttributesW(PathBesideProgram(L"Tessel.saves").c_str()) != INVALID_FILE_ATTRIBUTES) {
    datastore_ = ReadDatastore();
  }
}

void LateSaving::Save() const {
  const std::size_t end = datastore_.rfind("</root>");
  if (end == std::string::npos) {
    return;
  }
  for (int look = 0; look < kMostLooks && ReadDatastore() == datastore_; ++look) {
    Sleep(kPauseMs);
  }
  std::ofstream(Datastore(), std::ios::binary)
      << datastore_.substr(0, end) << "<!--saved by Tessel-->" << datastore_.substr(end);
  AppendToEventLog("saved");
}
