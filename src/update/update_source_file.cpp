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

constexpr const char* kSources = "root/preferences/preference";
constexpr const char* kInitialFile = "<root><preferences><preference url=''/></preferences></root>";

constexpr const char* kKey = "key";
constexpr const char* kSerial = "serial";

bool AreEqual(const std::string& one, const std::string& other) {
  return base::ToLower(one) == base::ToLower(other);
}

// The attribute with a source's URL, which is read by position.
pugi::xml_attribute UrlOf(const pugi::xml_node& source) {
  const pugi::xml_attribute url = source.first_attribute();
  if (!url) {
    throw base::Failure(base::RuntimeError::kObjectVariableNotSet);
  }
  return url;
}

void SetAttribute(pugi::xml_node source, const char* name, const std::string& value) {
  pugi::xml_attribute attribute = source.attribute(name);
  if (!attribute) {
    attribute = source.append_attribute(name);
  }
  attribute.set_value(value.c_str());
}

// Serial numbers belong to a key, and a key to a source.
void FollowSeed(pugi::xml_node source, const pugi::xml_node& seed) {
  const std::string url = UrlOf(seed).value();
  if (!AreEqual(UrlOf(source).value(), url)) {
    source.remove_attribute(kKey);
    source.remove_attribute(kSerial);
  }
  UrlOf(source).set_value(url.c_str());
  const std::string key = seed.attribute(kKey).value();
  if (!key.empty() && !AreEqual(source.attribute(kKey).value(), key)) {
    SetAttribute(source, kKey, key);
    source.remove_attribute(kSerial);
  }
}

bool IsSignedAs(const pugi::xml_node& source, const std::string& manifest) {
  return source.attribute(kKey) && AreEqual(base::AfterLastSlash(UrlOf(source).value()), manifest);
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
      FollowSeed(catalog::FirstElement(preferences), catalog::FirstElement(seed_preferences));
      return true;
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
    sources_.keys.clear();
    for (const auto& preference : catalog::SelectNodes(document, kSources)) {
      const std::string url = catalog::FirstAttributeText(preference.node());
      sources_.PendingSources.push_back(url);
      sources_.UpdateSources.push_back(url);
      ReadKey(preference.node(), url);
    }
    ReportSameNames();
  });
}

void UpdateSourceFile::ReportSameNames() const {
  std::map<std::string, std::string> sources;  // the first one for each file name
  for (const std::string& source : sources_.UpdateSources) {
    const std::string name = base::ToLower(base::AfterLastSlash(source));
    const std::string& first = sources.try_emplace(name, source).first->second;
    if (!name.empty() && base::ToLower(first) != base::ToLower(source)) {
      guarded(log_, "Kitbay::GetPreferences", [&] {
        throw base::Failure(
            base::RuntimeError::kFileAlreadyExists,
            std::string(first).append(" and ").append(source).append(" have the same file name"));
      });
    }
  }
}

// If several sources have manifests with the same name, and so the same file, the first key counts.
void UpdateSourceFile::ReadKey(const pugi::xml_node& source, const std::string& url) {
  const pugi::xml_attribute key = source.attribute(kKey);
  if (key) {
    sources_.keys.try_emplace(
        base::ToLower(base::AfterLastSlash(url)),
        catalog::SourceKey{.key = key.value(), .serial = source.attribute(kSerial).as_ullong()});
  }
}

void UpdateSourceFile::NoteSerial(const std::string& manifest, std::uint64_t serial) {
  const auto known = sources_.keys.find(base::ToLower(manifest));
  if (known == sources_.keys.end() || serial <= known->second.serial) {
    return;
  }
  known->second.serial = serial;
  catalog::ChangeXml(files_, Path(), [&](const catalog::XmlDocument& document) {
    for (const auto& preference : catalog::SelectNodes(document, kSources)) {
      if (IsSignedAs(preference.node(), manifest)) {
        SetAttribute(preference.node(), kSerial, std::to_string(serial));
      }
    }
    return true;
  });
}

}  // namespace kitbay::update
