#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

#include "base/component_kind.h"
#include "catalog/kept_texts.h"
#include "catalog/xml_document.h"

namespace kitbay::catalog {

/// The ids of the components of one kind that the registry files contain. An offer needs a single
/// look-up, unless its id has capitals.
class InstalledIds {
 public:
  // In a sparse table, the look-up of an id that is not there mostly ends at once.
  InstalledIds() { in_lower_case_.max_load_factor(0.25F); }

  struct Found {
    bool is_installed = false;               ///< whether the id is installed, ignoring case
    std::optional<std::size_t> number = {};  ///< of exactly that id, if it has one
  };

  /// Adds the id of an entry, which counts as installed or only has a number, and returns the
  /// number. Numbers count from 0; ids that differ in case have different ones.
  std::size_t Add(std::string_view id, bool is_installed);

  /// How many numbers there are.
  std::size_t count() const { return count_; }

  /// Counts an id as installed without giving it a number.
  void AddInstalled(std::string_view id);

  /// Counts an entry that has no id.
  void AddMissing() { lacks_one_ = true; }

  Found Find(std::string_view id) const;

  /// Whether some entry has no id.
  bool lacks_one() const { return lacks_one_; }

 private:
  // By the id in lower case; the number is that of this spelling.
  std::unordered_map<std::string, Found> in_lower_case_;
  std::unordered_map<std::string, std::size_t> with_capitals_;
  std::size_t count_ = 0;
  bool lacks_one_ = false;
};

/// An entry of a registry file, as far as the lists need it. A text that it lacks is empty.
struct InstalledEntry {
  using Text = std::optional<std::string_view>;

  Text id;
  Text name;
  Text version;
  Text core;
  Text description;
  Text filename;
  std::size_t number = 0;               ///< of its id; equal ids have the same
  bool is_child_of_list = true;         ///< whether it is not deeper below its list
  std::string version_of_library = {};  ///< empty until it is read
};

/// The entries of one kind in a registry file, in document order.
struct InstalledEntries {
  bool has_list = false;  ///< whether the file has an element for them
  std::vector<InstalledEntry> entries;
};

/// What the lists need from a registry file.
class Registry {
 public:
  /// Adds the file's ids to `ids`, which this must outlive.
  Registry(const XmlDocument& document, base::PerKind<InstalledIds>& ids);

  InstalledEntries& operator[](base::ComponentKind kind) { return lists_[kind]; }

 private:
  void AddEntry(const pugi::xml_node& entry, InstalledEntries& list, InstalledIds& ids);

  KeptTexts texts_;
  base::PerKind<InstalledEntries> lists_;
};

/// A text that an entry must have. Throws 91 if it lacks it.
std::string_view Needed(const InstalledEntry::Text& text);

}  // namespace kitbay::catalog
