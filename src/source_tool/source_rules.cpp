#include "source_tool/source_rules.h"

#include <map>

#include "base/text.h"
#include "catalog/manifest_file.h"
#include "catalog/xml_file.h"
#include "source_tool/manifest_rules.h"

namespace kitbay::source_tool {

std::vector<Finding> CheckSources(const platform::Files& files, const std::string& path) {
  ManifestText text{.file = path, .bytes = files.Read(path), .document = {}};
  catalog::ParseXml(text.bytes, path, text.document);
  std::vector<Finding> findings;
  std::map<std::string, std::string> urls;  // by the manifest's file name
  for (const auto& source : catalog::SelectNodes(text.document, "root/preferences/preference")) {
    const std::string url = source.node().first_attribute().value();
    const std::string name = base::AfterLastSlash(url);
    if (!catalog::IsManifestName(name)) {
      findings.push_back({.rule = Rule::kName,
                          .file = path,
                          .place = text.PlaceOf(source.node()),
                          .what = "\"" + name + "\" is not a valid name for a manifest",
                          .shows = "sees nothing from this source: it is not contacted",
                          .todo = "make it end in .xml, without \"~\""});
    }
    const auto [before, is_new] = urls.try_emplace(base::ToLower(name), url);
    if (!is_new) {
      findings.push_back({.rule = Rule::kSameFileName,
                          .file = path,
                          .place = text.PlaceOf(source.node()),
                          .what = url + " has the file name of " + before->second,
                          .shows = "sees every offer twice, from whichever source answered last",
                          .todo = "give one of the manifests another name"});
    }
  }
  return findings;
}

}  // namespace kitbay::source_tool
