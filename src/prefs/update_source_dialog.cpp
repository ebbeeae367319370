#include "prefs/update_source_dialog.h"

#include <pugixml.hpp>

#include <algorithm>

#include "base/failure.h"
#include "base/guarded.h"
#include "base/text.h"
#include "catalog/xml_change.h"
#include "catalog/xml_file.h"

namespace kitbay::prefs {
namespace {

using base::guarded;

constexpr int kEnter = 13;
constexpr int kDelete = 46;

// Always the installation's own source, which the user cannot remove.
constexpr int kFirstPosition = 1;

bool AreEqual(const std::string& left, const std::string& right) {
  return base::ToLower(left) == base::ToLower(right);
}

pugi::xml_node PreferencesOf(const catalog::XmlDocument& file) {
  return file.select_node("/root/preferences").node();
}

pugi::xml_node FirstSource(const pugi::xml_node& preferences) {
  if (!preferences) {
    throw base::Failure(base::RuntimeError::kObjectVariableNotSet);
  }
  return catalog::FirstElement(preferences);
}

// The first source with that URL, starting at `source`.
pugi::xml_node FindSource(pugi::xml_node source, const std::string& url) {
  while (source && !AreEqual(catalog::FirstAttributeText(source), url)) {
    source = catalog::NextElement(source);
  }
  return source;
}

// Returns whether the file lacked the source or its key.
bool AddSource(pugi::xml_node preferences, const TypedSource& typed) {
  pugi::xml_node source = FindSource(FirstSource(preferences), typed.url);
  const bool lacks_key = !typed.key.empty() && !source.attribute("key");
  if (source && !lacks_key) {
    return false;
  }
  if (!source) {
    source = preferences.append_child("preference");
    source.append_attribute("url") = typed.url.c_str();
  }
  if (lacks_key) {
    source.append_attribute("key") = typed.key.c_str();
  }
  return true;
}

}  // namespace

void UpdateSourceDialog::Show(platform::WindowHandle owner) {
  if (!window_.IsLoaded()) {
    window_.Load(*this, owner);
    Form_Load();
  }
  window_.Show();
}

void UpdateSourceDialog::Form_Load() {
  has_additions_ = false;
  listed_.clear();
  guarded(log_, "Kitbay::Form_Load", [&] {
    window_.EnableRemoveButton(false);
    catalog::XmlDocument file;
    if (!catalog::TryLoadXml(files_, source_file_.Path(), file) || !PreferencesOf(file)) {
      return;
    }
    for (pugi::xml_node source = FirstSource(PreferencesOf(file)); source;
         source = catalog::NextElement(source)) {
      List({.url = catalog::FirstAttributeText(source), .key = source.attribute("key").value()});
    }
  });
}

void UpdateSourceDialog::Form_Unload() {
  if (SavePreference()) {
    user_.GetDirectoryPreferenceFile();
  }
}

void UpdateSourceDialog::cmdPrefOk_Click() {
  guarded(log_, "Kitbay::cmdPrefOK_Click", [&] {
    window_.SetStatusText("");
    AddURL();
  });
}

void UpdateSourceDialog::txtPrefUrl_KeyDown(int key_code) {
  guarded(log_, "Kitbay::txtPrefUrl_KeyDown", [&] {
    if (key_code == kEnter) {
      AddURL();
    }
  });
}

void UpdateSourceDialog::Command1_Click() {
  lstPrefURL_KeyDown(kDelete);
  window_.SetStatusText("");
}

void UpdateSourceDialog::lstPrefURL_KeyDown(int key_code) {
  const bool is_done = guarded(log_, "Kitbay::lstPrefURL_KeyDown", [&] {
    if (key_code == kDelete && window_.SelectedItem() > kFirstPosition) {
      RemoveSource(window_.SelectedItem());
    }
  });
  if (!is_done) {
    user_.TellNotSaved();
  }
}

void UpdateSourceDialog::lstPrefURL_MouseUp() {
  guarded(log_, "Kitbay::lstPrefURL_MouseUp",
          [&] { window_.EnableRemoveButton(window_.SelectedItem() > kFirstPosition); });
}

// The keyboard moved the selection.
void UpdateSourceDialog::lstPrefURL_SelectionChange() { lstPrefURL_MouseUp(); }

void UpdateSourceDialog::cmdPrefClose_Click() {
  guarded(log_, "Kitbay::cmdPrefClose_Click", [&] { Unload(); });
}

void UpdateSourceDialog::AddURL() {
  guarded(log_, "Kitbay::AddURL", [&] {
    const auto typed = ReadTypedSource(window_.UrlText());
    if (!typed || !ValidateUrl(typed->url)) {
      RefuseUrl();
    } else if (IsListed(typed->url)) {
      RefuseDuplicate();
    } else {
      TakeSource(*typed);
    }
  });
}

void UpdateSourceDialog::RefuseUrl() {
  window_.SetStatusText("Please enter valid URL.");
  window_.FocusUrlBox();
}

void UpdateSourceDialog::RefuseDuplicate() {
  window_.FocusAddButton();
  window_.SetUrlText("");
  window_.SetStatusText("You have same URL added in your preference.");
}

void UpdateSourceDialog::TakeSource(const TypedSource& source) {
  const std::string other = UrlOfSameName(source.url);
  List(source);
  has_additions_ = true;
  window_.FocusAddButton();
  window_.SetUrlText("");
  window_.SetStatusText("The URL is saved. You will start getting updates from this location.");
  window_.FocusUrlBox();
  if (!other.empty()) {
    user_.TellSameName(source.url, other);
  }
}

std::string UpdateSourceDialog::UrlOfSameName(const std::string& url) const {
  const auto found = std::ranges::find_if(listed_, [&](const TypedSource& source) {
    return AreEqual(base::AfterLastSlash(source.url), base::AfterLastSlash(url));
  });
  return found == listed_.end() ? "" : found->url;
}

void UpdateSourceDialog::List(const TypedSource& source) {
  window_.AddItem(source.key.empty() ? source.url : source.url + " (signed)");
  listed_.push_back(source);
}

bool UpdateSourceDialog::IsListed(const std::string& url) const {
  return std::any_of(listed_.begin(), listed_.end(),
                     [&](const TypedSource& source) { return AreEqual(source.url, url); });
}

// The search starts after the first source, which must stay even if another one has the same URL. A
// source that was added since the dialog opened is not in the file yet.
void UpdateSourceDialog::RemoveSource(int position) {
  window_.SetStatusText("");
  const auto item = listed_.begin() + (position - 1);
  catalog::ChangeXml(files_, source_file_.Path(), [&](catalog::XmlDocument& file) {
    pugi::xml_node preferences = PreferencesOf(file);
    const pugi::xml_node source =
        FindSource(catalog::NextElement(FirstSource(preferences)), item->url);
    return preferences.remove_child(source);
  });
  window_.RemoveItem(position);
  listed_.erase(item);
}

bool UpdateSourceDialog::SavePreference() {
  bool is_changed = false;
  const bool is_done = guarded(log_, "Kitbay::SavePreference", [&] {
    // A file that could not be loaded in the first place is not a failure.
    for (const TypedSource& source : listed_) {
      bool is_new = false;
      const auto add = [&](catalog::XmlDocument& file) {
        is_new = AddSource(PreferencesOf(file), source);
        return is_new;
      };
      if (&source != &listed_.front()) {
        catalog::ChangeXml(files_, source_file_.Path(), add);
      } else if (!catalog::TryChangeXml(files_, source_file_.Path(), add)) {
        return;
      }
      is_changed = is_changed || is_new;
    }
  });
  if (!is_done && has_additions_) {
    user_.TellNotSaved();
  }
  return is_changed;
}

}  // namespace kitbay::prefs
