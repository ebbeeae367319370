// The lists use indexes for lookups; here they are compared with plain nested walks over the same
// random entries.
#include <gmock/gmock.h>

#include <random>

#include "base/text.h"
#include "catalog/new_component_listing.h"
#include "catalog/version_rule.h"
#include "manifest_fixture.h"

namespace kitbay::catalog {
namespace {

struct Item {
  std::string id;
  std::string version;
  bool has_id = true;
};

class LookupComparison : public ManifestTest {
 protected:
  int Below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(random_); }

  /// Only a few different ids, in two spellings of their case, so that many are equal.
  std::vector<Item> RandomItems(int count, bool may_lack_id) {
    std::vector<Item> items;
    for (int i = 0; i < count; ++i) {
      const char letter = static_cast<char>((Below(2) == 0 ? 'a' : 'A') + Below(12));
      std::string version = std::to_string(Below(3));
      for (int parts = Below(3); parts > 0; --parts) {
        version += "." + std::to_string(Below(4));
      }
      items.push_back({std::string(1, letter), version, !may_lack_id || Below(40) != 0});
    }
    return items;
  }

  static std::string InstalledText(const std::vector<Item>& items) {
    std::string text;
    for (const Item& item : items) {
      text += Channel(item.id, "N" + item.id, item.version);
    }
    return RegistryText("", "", text);
  }

  static std::string OfferedText(const std::vector<Item>& items) {
    std::string text;
    for (const Item& item : items) {
      text += item.has_id ? Offer("channel", item.id, "N" + item.id, item.version)
                          : "<channel label=\"~\"><name/><version>9.9.9</version></channel>";
    }
    return ManifestText("", "", text);
  }

  /// What the check of one source writes: one walk through the offers per installed entry, ended by
  /// the first failure.
  static std::vector<std::string> CheckByWalking(const std::vector<Item>& installed,
                                                 const std::vector<Item>& offered) {
    std::vector<std::string> calls;
    int row = 0;
    for (const Item& entry : installed) {
      bool has_update = false;
      for (const Item& offer : offered) {
        if (!offer.has_id) {
          return calls;
        }
        if (offer.id == entry.id) {
          try {
            has_update = IsNewer(entry.version, offer.version);
          } catch (const base::Failure&) {
            return calls;
          }
          break;
        }
      }
      const std::string shown = "installedchannels|N" + entry.id + "|" + entry.version +
                                "|About N" + entry.id + "|" + std::to_string(++row);
      calls.push_back(has_update ? "fillDivWithUpdates " + shown + "|-"
                                 : "fillDiv " + shown + "|-");
    }
    return calls;
  }

  /// What the list of new components writes for one source.
  static std::vector<std::string> NewByWalking(const std::vector<Item>& installed,
                                               const std::vector<Item>& offered) {
    std::vector<std::string> calls;
    int row = 0;
    for (const Item& offer : offered) {
      if (!offer.has_id) {
        return calls;  // no other list has the id "~", and the entry has no @id
      }
      bool is_installed = false;
      for (const Item& entry : installed) {
        if (base::ToLower(entry.id) == base::ToLower(offer.id)) {
          is_installed = true;
          break;
        }
      }
      if (!is_installed) {
        calls.push_back("showUpdates updatedchannels|N" + offer.id + "|" + offer.version +
                        "|New N" + offer.id + "|" + std::to_string(++row));
      }
    }
    return calls;
  }

  /// The rows among what was written.
  std::vector<std::string> Rows() const {
    std::vector<std::string> calls;
    for (const std::string& call : rows_.calls) {
      if (call.starts_with("fillDiv") || call.starts_with("showUpdates")) {
        calls.push_back(call);
      }
    }
    return calls;
  }

  std::mt19937 random_{20261121};
};

TEST_F(LookupComparison, UpdateCheckGivesWhatANestedWalkGives) {
  sources_.UpdateSources = {"h/m.xml"};
  AvailableUpdates available(log_, catalog_files_, versions_, shown_, rows_);
  InstalledWithUpdates listing(log_, catalog_files_, settings_, sources_, available, shown_, rows_);
  std::size_t updates = 0;
  std::size_t failures = 0;
  for (int round = 0; round < 2000; ++round) {
    const std::vector<Item> installed = RandomItems(Below(8), false);
    const std::vector<Item> offered = RandomItems(Below(14), true);
    SetDatastore(InstalledText(installed));
    SetManifest("m.xml", OfferedText(offered));
    rows_.calls.clear();
    log_.entries.clear();
    listing.InstalledChannels();
    const std::vector<std::string> expected = CheckByWalking(installed, offered);
    ASSERT_EQ(Rows(), expected) << InstalledText(installed) << "\n" << OfferedText(offered);
    ASSERT_EQ(log_.entries.size(), expected.size() < installed.size() ? 1U : 0U);
    failures += log_.entries.size();
    for (const std::string& call : expected) {
      updates += call.starts_with("fillDivWithUpdates") ? 1 : 0;
    }
  }
  // The rounds are useful only if all of this has occurred.
  EXPECT_GT(updates, 200U);
  EXPECT_GT(failures, 200U);
}

TEST_F(LookupComparison, NewComponentsAreThoseThatANestedWalkGives) {
  sources_.UpdateSources = {"h/m.xml"};
  NewComponents found;
  NewComponentListing listing(log_, catalog_files_, sources_, found, rows_);
  std::size_t new_ones = 0;
  std::size_t failures = 0;
  for (int round = 0; round < 2000; ++round) {
    const std::vector<Item> custom = RandomItems(Below(5), false);
    const std::vector<Item> own = RandomItems(Below(5), false);
    const std::vector<Item> offered = RandomItems(Below(14), true);
    SetCustomRegistry(InstalledText(custom));
    SetDatastore(InstalledText(own));
    SetManifest("m.xml", OfferedText(offered));
    rows_.calls.clear();
    log_.entries.clear();
    listing.funcShowChannels();
    std::vector<Item> installed = custom;
    installed.insert(installed.end(), own.begin(), own.end());
    const std::vector<std::string> expected = NewByWalking(installed, offered);
    ASSERT_EQ(Rows(), expected) << OfferedText(offered);
    ASSERT_EQ(found.channel.size(), expected.size());
    new_ones += expected.size();
    failures += log_.entries.size();
  }
  EXPECT_GT(new_ones, 200U);
  EXPECT_GT(failures, 100U);
}

}  // namespace
}  // namespace kitbay::catalog
