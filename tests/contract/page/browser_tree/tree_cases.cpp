#include "contract/page/browser_tree/tree_cases.h"

#include "contract/page/row_samples.h"

namespace kitbay::contract {
namespace {

Step Row(const std::string& list, const RowSample& row) {
  return {"row", list, row.start_tag, row.name_line, row.panel};
}

std::string YesNo(bool yes) { return yes ? "yes" : "no"; }

std::vector<TreeCase> BuilderCases() {
  std::vector<TreeCase> cases;
  for (const bool core : {false, true}) {
    cases.push_back(
        {"installed row, core " + YesNo(core), {Row("installedaddons", InstalledRow({}, core))}});
  }
  for (const bool downloading : {false, true}) {
    for (const bool not_installed : {false, true}) {
      for (const bool has_update : {false, true}) {
        cases.push_back(
            {"row with updates, downloading " + YesNo(downloading) + ", not installed " +
                 YesNo(not_installed) + ", has update " + YesNo(has_update),
             {Row("installedtransports",
                  InstalledRowWithUpdates({}, downloading, not_installed, has_update))}});
      }
    }
    cases.push_back({"available row, downloading " + YesNo(downloading),
                     {Row("updatedchannels", AvailableRow({}, downloading))}});
  }
  return cases;
}

std::vector<TreeCase> PageCases() {
  return {
      {"tab bars", {{"html", "imgtab", kInstalledBar}, {"html", "imgtab1", kUpdatesBar}}},
      {"heading and rows",
       {{"html", "installedaddons", Heading("Currently Installed  Addons")},
        Row("installedaddons", InstalledRow({.number = 1}, false)),
        Row("installedaddons", InstalledRow({.number = 2}, true))}},
      {"heading clears rows",
       {Row("installedaddons", InstalledRow({}, false)),
        {"html", "installedaddons", Heading("Currently Installed  Addons")}}},
      {"status line", {{"html", "installedaddons", Status("No Addon is installed.")}}},
      {"empty heading",
       {{"html", "updatedaddons",
         "<font style='font-family:verdana; font-size:11;  margin-right:4pt;'>No additional "
         "Addons available right now<hr style='height:1pt; '></font>"}}},
      {"nothing available",
       {{"html", "updatedaddons",
         "<font style='font-family:verdana; font-size:11; '>No additional modules are available "
         "right now.</font>"}}},
      {"version and buttons changed",
       {Row("installedaddons", InstalledRowWithUpdates({}, true, false, true)),
        {"modify", "installedaddons", "0", "2.0.0.0", Button("btninstalled", "Remove", false)}}},
      {"row removed from one of two lists",
       {Row("installedaddons", InstalledRow({}, false)),
        Row("updatedaddons", AvailableRow({}, false)),
        {"remove", "updatedaddons", "0"}}},
      {"first buttons disabled",
       {Row("updatedaddons", AvailableRow({}, false)), {"disable", "updatedaddons", "0"}}},
      {"styles set and cleared",
       {{"html", "imgtab", kInstalledBar},
        {"style", "itabencloser", "display", "none"},
        {"style", "itabencloser", "background", "navy"},
        {"style", "itabencloser", "position", ""},
        {"style", "installedaddons", "fontWeight", "800"},
        {"style", "installedaddons", "top", "33px"},
        {"style", "installedaddons", "fontWeight", ""}}},
  };
}

struct Hostile {
  const char* name;
  const char* text;
};

constexpr Hostile kHostile[] = {
    {"nothing", ""},
    {"blanks", "   "},
    {"letters of other scripts", "Größe Ωmega Привет 漢字 \xF0\x9F\x98\x80"},
    {"entities", "Tom &amp; Jerry &lt;3 &copy &notanentity; &#65;"},
    {"a lone less-than", "1 < 2 <3 <"},
    {"quotes", "it's \"quoted\""},
    {"script", "<script>document.title = 'ran'</script>after"},
    {"script with markup", "<script>'<b>' + \"</font>\"</script>after"},
    {"iframe", "<iframe src='about:blank'><b>inside</b></iframe>after"},
    {"image with handler", "<img src=nosuch.gif onerror=\"document.title='ran'\">after"},
    {"svg with handler", "<svg onload=\"document.title='ran'\"><path d='M0 0'/></svg>after"},
    {"object", "<object data='nosuch.swf'><param name='movie' value='x'></object>after"},
    {"link that says javascript", "<a href=\"javascript:document.title='ran'\">x</a>"},
    {"style element", "<style>b { color: red }</style>after"},
    {"open bold", "<b>bold"},
    {"open bold and italic crossed", "<b>one<i>two</b>three"},
    {"early end of the cell", "x</font>y"},
    {"early end of the row", "x</font></span></div>y"},
    {"end tags alone", "</b></p></br>x"},
    {"block in the line", "<div>block</div>"},
    {"paragraphs", "<p>one<p>two"},
    {"heading", "<h1>one<h2>two</h1>"},
    {"list", "<ul><li>one<li>two</ul>"},
    {"table", "<table><tr><td>a<td>b</table>"},
    {"table in a paragraph", "<p><table><tr><td>a</table>"},
    {"text in a table", "<table>text<tr><td>a</table>"},
    {"cells without table", "<tr><td>a</td></tr>"},
    {"form", "<form><input name='q'><form><input></form>"},
    {"button in button", "<button>one<button>two</button>"},
    {"link in link", "<a href='#'>one<a href='#'>two</a>"},
    {"body with handler", "<body onload='x'><html lang='en'><head>text"},
    {"end of the body", "one</body></html>two"},
    {"frameset", "<frameset><frame src='x'></frameset>after"},
    {"comment", "one<!-- two -->three"},
    {"open comment", "one<!-- two"},
    {"open textarea", "<textarea>one</font>"},
    {"open attribute", "<b title='one>two"},
    {"attribute twice", "<b title=a title=b CLASS=c>x</b>"},
    {"own tag", "<x-note Kind=y>x</x-note>"},
    {"line ends", "one\r\ntwo\nthree"},
    {"id of a list", "<div id='installedaddons'>x</div>"},
    {"styles", "<b style=\"color:red; width:10; height:1e; position:nowhere; x\">x</b>"},
};

std::vector<TreeCase> HostileCases() {
  std::vector<TreeCase> cases;
  for (const Hostile& hostile : kHostile) {
    cases.push_back({std::string("in the name: ") + hostile.name,
                     {Row("installedaddons", InstalledRow({.name = hostile.text}, false)),
                      Row("installedaddons", InstalledRow({.name = "Next", .number = 8}, false))}});
    cases.push_back({std::string("in the description: ") + hostile.name,
                     {Row("updatedaddons", AvailableRow({.description = hostile.text}, true))}});
    cases.push_back({std::string("in a status line: ") + hostile.name,
                     {{"html", "installedchannels", Status(hostile.text)}}});
  }
  return cases;
}

}  // namespace

std::string BodyOfCases() {
  std::string body = "<div id=\"imgtab\"></div>\n<div id=\"imgtab1\"></div>\n";
  for (const char* category : {"installed", "updated"}) {
    for (const char* kind : {"addons", "transports", "channels"}) {
      body += std::string("<div id=\"") + category + kind + "\"></div>\n";
    }
  }
  return body;
}

std::vector<TreeCase> TreeCases() {
  std::vector<TreeCase> all = BuilderCases();
  for (const auto& group : {PageCases(), HostileCases()}) {
    all.insert(all.end(), group.begin(), group.end());
  }
  return all;
}

}  // namespace kitbay::contract
