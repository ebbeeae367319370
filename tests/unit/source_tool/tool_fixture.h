#pragma once

#include <gmock/gmock.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "fakes/zip_bytes.h"
#include "source_tool/commands.h"

namespace kitbay::source_tool {

using namespace std::chrono_literals;

inline constexpr std::chrono::sys_days kToday = 2026y / 11 / 21;

/// A folder for this test, in which the tool runs.
class Workplace {
 public:
  Workplace() {
    std::string name = (std::filesystem::temp_directory_path() / "kitbay-source-XXXXXX").string();
    folder_ = mkdtemp(name.data());
  }
  ~Workplace() { std::filesystem::remove_all(folder_); }
  Workplace(const Workplace&) = delete;
  Workplace& operator=(const Workplace&) = delete;

  std::string Path(const std::string& name) const { return folder_ + "/" + name; }

  std::string Write(const std::string& name, const std::string& bytes) const {
    std::ofstream(Path(name), std::ios::binary) << bytes;
    return Path(name);
  }

  std::string Read(const std::string& name) const {
    std::ifstream file(Path(name), std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }

  /// The tool's exit code for these arguments; its output is kept.
  int Run(const std::vector<std::string>& words, bool is_err_shown = false) {
    std::ostringstream out;
    std::ostringstream err;
    const int code = source_tool::Run(
        words, {.out = out, .err = err, .is_err_shown = is_err_shown, .today = kToday});
    this->out = out.str();
    this->err = err.str();
    return code;
  }

  std::string out;
  std::string err;

 private:
  std::string folder_;
};

/// An addon's entry without mistakes, with the texts of some elements replaced.
inline std::string Entry(const std::string& id, const std::string& changed = "",
                         const std::string& text = "", const std::string& attributes = "") {
  const std::vector<std::pair<std::string, std::string>> elements = {
      {"name", id},
      {"version", "1.2.0.7"},
      {"description", "Does things."},
      {"url", "u.org/p/" + id + ".zip"},
      {"progid", "P.P"},
      {"filename", "own.dll"},
      {"category", ""},
      {"autoaccept", "0"},
      {"params", ""},
      {"offline", "0"},
      {"dependencies", "own.dll"}};
  std::string entry =
      "<addon " + (attributes.empty() ? "id=\"" + id + "\" type=\"tool\"" : attributes) + ">\n";
  for (const auto& [element, usual] : elements) {
    if (element != changed || text != "(none)") {
      entry += "<" + element + ">" + (element == changed ? text : usual) + "</" + element + ">\n";
    }
  }
  return entry + "</addon>\n";
}

/// The entry with more of what it says of its package.
inline std::string Announcing(const std::string& said, std::string entry) {
  return entry.insert(entry.find("<progid>"), said);
}

inline std::string ManifestOf(const std::string& addons) {
  return "<components>\n<addons>\n" + addons +
         "</addons>\n<transports/>\n<channels/>\n</components>\n";
}

inline std::string RegistryOf(const std::string& addons) {
  return "<root><addons>" + addons + "</addons><transports/><channels/></root>";
}

inline std::string Installed(const std::string& id, const std::string& core = "0") {
  return "<addon id=\"" + id + "\" name=\"" + id + "\"><filename>own.dll</filename><description>D" +
         "</description><core>" + core + "</core></addon>";
}

}  // namespace kitbay::source_tool
