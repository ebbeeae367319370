#pragma once

#include <map>
#include <string>

#include "flow_fixture.h"
#include "install/datastore_registration.h"

namespace kitbay::install {

/// The suite with row 7 of its page, that of Chess, clicked, and a component about to be entered in
/// the registry files.
class RegistrationTest : public FlowTest {
 protected:
  RegistrationTest() {
    state_.current_row_id = "7";
    state_.current_row_name = "Chess";
    window_.status_bar().SetPanelText(platform::kStatusPanel, "Downloading");
  }

  /// Adds an update source whose manifest has these contents.
  void Offer(const std::string& name, const std::string& contents) {
    sources_.UpdateSources.push_back("updates.example/path/" + name);
    files_.AddFile("C:\\Ovalink\\Kitbay\\" + name, "<components>" + contents + "</components>");
  }

  std::string Datastore() const { return files_.Bytes(kDatastore).value_or("(none)"); }
  std::string CustomRegistry() const { return files_.Bytes(kCustomRegistry).value_or("(none)"); }

  std::string Text(const std::string& id) const { return html_->ById(id)->InnerText(); }
  std::string Markup(const std::string& id) const { return html_->ById(id)->InnerHtml(); }

  DatastoreRegistration registration_{
      {log_, files_, catalog_files_, settings_, desktop_, rows_, buttons_, sources_, session_}};
};

/// The texts of a manifest entry's child elements, ordered by their names.
using Elements = std::map<std::string, std::string>;

/// `<kind attributes>` with those child elements; their texts are inserted as markup.
inline std::string ManifestEntry(const std::string& kind, const std::string& attributes,
                                 const Elements& elements) {
  std::string markup = "<" + kind + " " + attributes + ">";
  for (const auto& [name, text] : elements) {
    markup += "<" + name + ">" + text + "</" + name + ">";
  }
  return markup + "</" + kind + ">";
}

}  // namespace kitbay::install
