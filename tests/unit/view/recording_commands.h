#pragma once

#include <array>
#include <string>
#include <vector>

#include "base/component_kind.h"
#include "view/page_events.h"

namespace kitbay::view {

/// Records every command, in order: what is done, the kind, and the name.
class RecordingCommands : public PageCommands {
 public:
  void UpdateInstalled(const Click& click) override { Note("Update", click); }
  void RemoveAddon(const Click& click) override { Note("Remove", click); }
  bool InstallNewAddons(const Click& click) override {
    Note("Install", click);
    return is_sent;
  }

  bool is_sent = true;
  std::vector<std::string> calls;

 private:
  void Note(const char* command, const Click& click) {
    constexpr base::PerKind<const char*> kKinds = {
        .addon = " addon ", .transport = " transport ", .channel = " channel "};
    calls.push_back(command + (kKinds[click.kind] + click.Name()));
  }
};

}  // namespace kitbay::view
