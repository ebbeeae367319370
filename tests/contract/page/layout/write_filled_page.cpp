// write_filled_page [light|dark]
// Writes the body of the program's page to standard output, with rows in all six lists: short and
// long names, versions and descriptions, with and without buttons. With a word, one row of each
// list is open, buttons are off as while a download runs, and the user's colours are light or dark.

#include <cstdint>
#include <cstdio>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#include "fakes/fake_clock.h"
#include "fakes/fake_html_document.h"
#include "fakes/fake_main_window.h"
#include "fakes/fake_version_resource.h"
#include "fakes/memory_files.h"
#include "fakes/recording_error_log.h"
#include "view/component_page.h"
#include "view/page_ids.h"

namespace {

constexpr const char* kNames[] = {
    "Notes",
    "A name that goes on and on, longer than anybody would want to read in one row of a list",
    "Donaudampfschifffahrtselektrizitaetenhauptbetriebswerkbauunterbeamtengesellschaft",
    "Sternenhimmel \xC3\xBC"
    "ber \xC3\x85lesund",
};
constexpr const char* kVersions[] = {"1.0", "N/A", "65535.65535.65535.65535", "1.2.-25536.0"};
constexpr const char* kDescriptions[] = {
    "",
    "Keeps short notes.",
    "Translates a message before you send it and shows answers in your own language beside the "
    "original. Comes with dictionaries for English, German, French and Polish; further ones are "
    "found "
    "among the updates, where Rindfleischetikettierungsueberwachungsaufgabenuebertragungsgesetz is "
    "one "
    "of the words that they know.",
};
constexpr std::int16_t kRows = 8;

void FillLists(kitbay::view::PageRows& rows) {
  rows.AddImageTab("imgtab", kitbay::view::kInstalledBarMarkup);
  rows.AddImageTab("imgtab1", kitbay::view::kUpdatesBarMarkup);
  for (const char* list : {"installedaddons", "installedtransports", "installedchannels"}) {
    rows.FillDivHeader(list, "itabencloser", "Currently Installed  Components");
  }
  for (const char* list : {"updatedaddons", "updatedtransports", "updatedchannels"}) {
    rows.FillDivHeader(list, "tabencloser", "Components available right now");
  }
  for (std::int16_t row = 1; row <= kRows; ++row) {
    const std::string name = kNames[row % std::size(kNames)];
    const std::string version = kVersions[row / 2 % std::size(kVersions)];
    const std::string text = kDescriptions[row % std::size(kDescriptions)];
    rows.fillDivWithUpdates("installedaddons", name, version, text, row, row % 4 == 0, false);
    rows.fillDivWithUpdates("installedtransports", name, version, text, row, false, row % 2 == 0);
    rows.fillDiv("installedchannels", name, version, text, row, row % 3 == 0);
    for (const char* list : {"updatedaddons", "updatedtransports", "updatedchannels"}) {
      rows.showUpdates(list, name, version, text, row);
    }
  }
}

// The first button of each list stays on.
void UsePage(kitbay::view::ComponentPage& page, const kitbay::fakes::FakeHtmlDocument& document) {
  constexpr int kOpenRow = 2;
  for (const char* list : {"installedaddons", "installedtransports", "installedchannels",
                           "updatedaddons", "updatedtransports", "updatedchannels"}) {
    const auto buttons = document.ById(list)->ElementsByTag("input");
    for (std::size_t i = 1; i < buttons.size(); ++i) {
      buttons[i]->SetDisabled(true);
    }
    page.tabs.HideOthers(document.ById(list)->Child(kOpenRow)->Child(0));
  }
}

}  // namespace

int main(int count, char** words) {
  std::ifstream file(KITBAY_PAGE_FILE, std::ios::binary);
  const std::string markup{std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
  const auto document = std::make_shared<kitbay::fakes::FakeHtmlDocument>(markup);

  kitbay::fakes::RecordingErrorLog log;
  const kitbay::fakes::MemoryFiles files;
  const kitbay::fakes::FakeClock clock;
  const kitbay::base::Settings settings;
  const kitbay::fakes::FakeVersionResource versions;
  kitbay::fakes::FakeMainWindow window{""};
  kitbay::view::ComponentPage page{log, files, clock, settings, versions, window};
  page.document.Connect(document);
  const std::string colours = count > 1 ? words[1] : "";
  page.tabs.FollowLooks({.has_dark_colours = colours == "dark"});
  FillLists(page.rows);
  if (!colours.empty()) {
    UsePage(page, *document);
  }

  std::fputs(document->ById("category")->ParentElement()->InnerHtml().c_str(), stdout);
  return log.entries.empty() ? 0 : 1;
}
