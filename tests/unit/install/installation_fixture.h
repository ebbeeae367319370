#pragma once

#include <string>
#include <vector>

#include "fakes/recording_libraries.h"
#include "fakes/zip_bytes.h"
#include "flow_fixture.h"
#include "install/package_installation.h"

namespace kitbay::install {

inline constexpr const char* kEmptyRegistry = "<root><addons/><transports/><channels/></root>";

/// A suite without components, whose only update source offers "notes" as an addon, a transport and
/// a channel; the package of each is in the working folder.
class InstallationTest : public FlowTest {
 protected:
  InstallationTest() {
    sources_.UpdateSources = {"updates.example/list.xml"};
    files_.AddFolder("C:\\Ovalink\\addons");
    files_.AddFolder("C:\\Ovalink\\channels");
    files_.AddFolder("C:\\Ana\\CustomData\\channels");
    files_.AddFile(kDatastore, kEmptyRegistry);
    Offer("notes");
    AddPackage("notes");
    session_.file_system = &file_system_;
  }

  /// Makes the manifest offer that id as each kind, with those further libraries of an addon and a
  /// channel, and those files of a transport.
  void Offer(const std::string& id, const std::string& libraries = "notes.dll",
             const std::string& own_library = "own.dll") {
    const auto offer = [&](base::ComponentKind kind, const std::string& library,
                           const std::string& more) {
      return fakes::OfferText(
          kind, {.id = id,
                 .name = "Notes",
                 .version = "2.0",
                 .description = "Keeps notes.",
                 .more = "<progid>N.N</progid><category/><dependencies>" + libraries +
                         "</dependencies><filename>" + library + "</filename>" + more});
    };
    files_.AddFile(
        "C:\\Ovalink\\Kitbay\\list.xml",
        fakes::ManifestText(
            offer(base::ComponentKind::kAddon, own_library,
                  "<autoaccept>0</autoaccept><params/><offline>0</offline>"),
            offer(base::ComponentKind::kTransport, libraries,
                  "<displayname>N</displayname><instructions>I</instructions>"),
            offer(base::ComponentKind::kChannel, own_library, "<xmlfilename>n.xml</xmlfilename>")));
  }

  void AddPackage(const std::string& name) {
    files_.AddFile("C:\\Ovalink\\Temp\\" + name + ".zip",
                   fakes::ZipOf({{.name = "own.dll", .bytes = "MZ own"},
                                 {.name = "data/notes.txt", .bytes = "one"}}));
  }

  /// Adds a library at `path` that registers itself.
  void AddLibrary(const std::string& path) { libraries_.Add(path, {{"DllRegisterServer", {}}}); }

  /// Delivers the package `name`, requested from row 3, of Notes, as downloaded.
  void Install(base::ComponentKind kind, const std::string& name = "notes") {
    const update::PendingPackage package = {
        .file_path = name + ".zip", .name = name, .row_id = "3", .row_name = "Notes"};
    const std::string path = settings_.InstallFolder + "\\Temp\\" + name + ".zip";
    switch (kind) {
      case base::ComponentKind::kAddon:
        return installation_.Unpack(package, path);
      case base::ComponentKind::kTransport:
        return installation_.UnpackTransport(package, path);
      case base::ComponentKind::kChannel:
        return installation_.UnpackChannel(package, path);
    }
  }

  std::string File(const std::string& path) const { return files_.Bytes(path).value_or("(none)"); }

  /// The operations that begin with one of `starts`, such as "CreateFolder" or "fso.".
  std::vector<std::string> Operations(const std::vector<std::string>& starts) const {
    std::vector<std::string> found;
    for (const std::string& operation : files_.operations()) {
      for (const std::string& start : starts) {
        if (operation.starts_with(start)) {
          found.push_back(operation);
        }
      }
    }
    return found;
  }

  /// The libraries that were loaded, in order.
  std::vector<std::string> Loaded() const {
    std::vector<std::string> loaded;
    for (const std::string& call : libraries_.calls()) {
      if (call.starts_with("Load ")) {
        loaded.push_back(call.substr(5, call.find("] [") - 4));
      }
    }
    return loaded;
  }

  /// The messages that the user has read, without title and style.
  std::vector<std::string> Messages() const {
    constexpr const char* kEnd = "] [Kitbay] 0";
    std::vector<std::string> messages;
    for (const std::string& call : desktop_.calls()) {
      if (call.starts_with("ShowMessage [")) {
        messages.push_back(call.substr(13, call.find(kEnd) - 13));
      }
    }
    return messages;
  }

  bool StatusIsClear() { return Status().empty() && !window_.progress_bar().visible(); }

  fakes::MemoryFileSystemObject file_system_{files_};
  fakes::RecordingLibraries libraries_;
  PackageExpansion expansion_{log_, files_};
  SelfRegistration self_registration_{log_, settings_, libraries_, session_};
  DatastoreRegistration datastore_{
      {log_, files_, catalog_files_, settings_, desktop_, rows_, buttons_, sources_, session_}};
  PackageInstallation installation_{{log_, settings_, files_, desktop_, state_, buttons_,
                                     expansion_, self_registration_, datastore_, main_client_,
                                     session_}};
};

}  // namespace kitbay::install
