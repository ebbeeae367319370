#pragma once

#include <cstdint>
#include <string>
#include <vector>

#include "catalog/row_writer.h"

namespace kitbay::catalog {

/// Records every call, in order: the procedure, a blank, and its arguments joined by "|". Flags
/// appear by their names, or as "-" when they are off.
class RecordingRowWriter : public RowWriter {
 public:
  void AddImageTab(const std::string& holder, const std::string& markup) override {
    calls.push_back("AddImageTab " + holder + "|" + markup);
  }

  void ShowTab(const std::string& tab_bar, const std::string& tab, bool shown) override {
    calls.push_back("ShowTab " + tab_bar + "|" + tab + "|" + (shown ? "shown" : "-"));
  }

  void FillDivHeader(const std::string& container, const std::string& tab_bar,
                     const std::string& title) override {
    calls.push_back("FillDivHeader " + container + "|" + tab_bar + "|" + title);
  }

  void FillEmptyDivHeader(const std::string& container, const std::string& markup) override {
    calls.push_back("FillEmptyDivHeader " + container + "|" + markup);
  }

  void FillDivStatus(const std::string& container, const std::string& message) override {
    calls.push_back("FillDivStatus " + container + "|" + message);
  }

  void fillDiv(const std::string& container, const std::string& name, const std::string& version,
               const std::string& description, std::int16_t row, bool is_core) override {
    calls.push_back("fillDiv " + Row(container, name, version, description, row) + "|" +
                    (is_core ? "core" : "-"));
  }

  void fillDivWithUpdates(const std::string& container, const std::string& name,
                          const std::string& version, const std::string& description,
                          std::int16_t row, bool is_core, bool not_installed) override {
    calls.push_back("fillDivWithUpdates " + Row(container, name, version, description, row) + "|" +
                    (is_core ? "core" : "-") + "|" + (not_installed ? "not installed" : "-"));
  }

  void showUpdates(const std::string& container, const std::string& name,
                   const std::string& version, const std::string& description,
                   std::int16_t row) override {
    calls.push_back("showUpdates " + Row(container, name, version, description, row));
  }

  std::vector<std::string> calls;

 private:
  static std::string Row(const std::string& container, const std::string& name,
                         const std::string& version, const std::string& description,
                         std::int16_t row) {
    return container + "|" + name + "|" + version + "|" + description + "|" + std::to_string(row);
  }
};

}  // namespace kitbay::catalog
