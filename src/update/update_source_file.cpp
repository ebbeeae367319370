#include "update/update_source_file.h"

#include <map>

#include "base/failure.h"
#include "base/guarded.h"
#include "base/text.h"
#include "catalog/xml_change.h"
#include "catalog/xml_document.h"
#include "catalog/xml_file.h"

namespace kitbay::update {
namespace {

using base::guarded;

constexpr const char* kInitialFile = "<root><preferences><preference url=''/></preferences></root>";

// The attribute of the first source, which is read by position.
pugi::xml_attribute FirstSourceUrl(const pugi::xml_node& preferences) {
  const pugi::xml_attribute url = catalog::FirstElement(preferences).first_attribute();
  if (!url) {
    throw base::Failure(base::RuntimeError::kObjectVariableNotSet);
  }
  return url;
}

}  // namespace

std::string UpdateSourceFile::Path() const {
  const std::string& folder = settings_.CustomDataFolder;
  return folder.substr(0, folder.rfind('\\') + 1) + "updatepreference.xml";
}

void UpdateSourceFile::CreateWithOneSource(platform::FileSystemObject& file_system) const {
  const auto stream = file_system.CreateTextFile(Path(), true);
  stream->Write(kInitialFile);
  stream->Close();
}

void UpdateSourceFile::MakeDirectoryPreferenceFile(platform::FileSystemObject* file_system) {
  guarded(log_, "Kitbay::MakeDirectoryPreferenceFile", [&] {
    if (file_system == nullptr) {
      throw base::Failure(base::RuntimeError::kObjectVariableNotSet);
    }
    if (!file_system->FileExists(Path())) {
      CreateWithOneSource(*file_system);
    }
    catalog::TryChangeXml(files_, Path(), [&](catalog::XmlDocument& document) {
      catalog::XmlDocument seed;
      if (!catalog::TryLoadXml(
              files_, settings_.InstallFolder + "\\Kitbay\\DirectoryPreference.xml", seed)) {
        return false;
      }
      const pugi::xml_node seed_preferences = seed.select_node("/root/preferences").node();
      const pugi::xml_node preferences = document.select_node("/root/preferences").node();
      if (!seed_preferences || !preferences) {
        return false;
      }
      return FirstSourceUrl(preferences).set_value(FirstSourceUrl(seed_preferences).value());
    });
  });
}

void UpdateSourceFile::GetPreferences() {
  guarded(log_, "Kitbay::GetPreferences", [&] {
    sources_.UpdateSources.clear();
    catalog::XmlDocument document;
    if (!files_.Exists(Path()) || !catalog::TryLoadXml(files_, Path(), document)) {
      return;
    }
    for (const auto& preference : catalog::SelectNodes(document, "root/preferences/preference")) {
      const std::string url = catalog::FirstAttributeText(preference.node());
      sources_.PendingSources.push_back(url);
      sources_.UpdateSources.push_back(url);
    }
    ReportSameNames();
  });
}

void UpdateSourceFile::ReportSameNames() const {
  std::map<std::string, std::string> sources;  // the first one of each file name
  for (const std::string& source : sources_.UpdateSources) {
    const std::string name = base::ToLower(base::AfterLastSlash(source));
    const std::string& first = sources.try_emplace(name, source).first->second;
    if (!name.empty() && base::ToLower(first) != base::ToLower(source)) {
      guarded(log_, "Kitbay::GetPreferences", [&] {
        throw base::Failure(base::RuntimeError::kFileAlreadyExists,
                            first + " and " + source + " have the same file name");
      });
    }
  }
}

}  // namespace kitbay::update
