#include "view/row_markup.h"

#include <algorithm>
#include <cctype>

namespace kitbay::view {
namespace {

constexpr const char* kInstallCell =
    "<input type='button' id='btninstalled' value='Install' style='width:70; height:22; "
    "font-family:verdana; font-size:11;'></font></span></div>";
constexpr const char* kInstallCellOff =
    "<input type='button' id='btninstalled' disabled value='Install' style='width:70; height:22; "
    "font-family:verdana; font-size:11;'></font></span></div>";
constexpr const char* kUpdateCell =
    "<input type='button' id='btninstalled' value='Update' style='width:70; height:22; "
    "font-family:verdana; font-size:11;'></font></span></div>";
constexpr const char* kUpdateCellOff =
    "<input type='button' id='btninstalled' disabled value='Update' style='width:70; height:22; "
    "font-family:verdana; font-size:11;'></font></span></div>";
constexpr const char* kRemoveAndUpdateCell =
    "<input type='button' id='btninstalled' value='Remove' style='width:70; height:22; "
    "font-family:verdana; font-size:11;'>&nbsp&nbsp<input type='button' id='btnchange' "
    "value='Update' style='width:70; height:22; font-family:verdana; "
    "font-size:11;'></font></span></div>";
constexpr const char* kRemoveAndUpdateCellOff =
    "<input type='button' id='btninstalled' value='Remove' style='width:70; height:22; "
    "font-family:verdana; font-size:11;'>&nbsp&nbsp<input type='button' id='btnchange' disabled "
    "value='Update' style='width:70; height:22; font-family:verdana; "
    "font-size:11;'></font></span></div>";

const char* ButtonCell(bool is_core, bool not_installed, bool download_in_progress) {
  if (not_installed) {
    return download_in_progress ? kInstallCellOff : kInstallCell;
  }
  if (is_core) {
    return download_in_progress ? kUpdateCellOff : kUpdateCell;
  }
  return download_in_progress ? kRemoveAndUpdateCellOff : kRemoveAndUpdateCell;
}

bool OpensTag(char after) {
  return std::isalpha(static_cast<unsigned char>(after)) != 0 || after == '/' || after == '!' ||
         after == '?';
}

// The text of a piece of markup, for an attribute value in single quotes. Character references stay
// as they are, because they mean the same there.
std::string TextForAttribute(const std::string& markup) {
  std::string text;
  for (std::size_t i = 0; i < markup.size(); ++i) {
    if (markup[i] == '<' && i + 1 < markup.size() && OpensTag(markup[i + 1])) {
      i = std::min(markup.find('>', i), markup.size());
    } else if (markup[i] == '\'') {
      text += "&#39;";
    } else {
      text += markup[i];
    }
  }
  return text;
}

std::string LabelAttribute(const std::string& name, const std::string& version,
                           const char* status) {
  return "aria-label='" + TextForAttribute(name) + ", Version " + TextForAttribute(version) +
         status + "'";
}

}  // namespace

std::string RowAttributes(const std::string& name, const std::string& version, bool has_update) {
  return "<div role='treeitem' aria-expanded='false' tabindex='-1' " +
         LabelAttribute(name, version, has_update ? ", update available" : "") +
         (has_update ? " class='hasupdate'>" : ">");
}

std::string RowLabel(const std::string& name, const std::string& version) {
  return "<div " + LabelAttribute(name, version, "") + ">";
}

std::string NameLine(const std::string& name, std::int16_t row, const std::string& version) {
  return "<span id =" + std::to_string(row) +
         "  style='margin-right:4pt; margin-left:4pt; width:100%; cursor:default;'><font "
         "style='font-size:11; font-family:verdana; width:50%; text-align:left;'>" +
         name +
         "</font>"
         "<font style='font-size:11; font-family:verdana; width:50%; text-align:right;'>Version " +
         version + "</font></span>";
}

std::string DescriptionOpening(const std::string& description, std::int16_t row) {
  return "<div id ='div" + std::to_string(row) +
         "' "
         " style='display:none; width:100%; padding-top:5pt;'>"
         "<span style='margin-right:4pt; margin-left:4pt; width:100%;'><font "
         "style='font-size:11; font-family:verdana; width:70%; text-align:left;'>" +
         description + "&nbsp;&nbsp;&nbsp;</font>";
}

std::string RowStartTag(std::int16_t row) {
  return "<div id =" + std::to_string(row) + " style='padding-bottom:5pt; padding-top:5pt;'>";
}

std::string RowWithUpdatesStartTag(std::int16_t row) {
  return "<div id =" + std::to_string(row) + " style='padding-bottom:5pt;padding-top:5pt;'>";
}

std::string InstalledPanel(const std::string& opening, bool is_core) {
  return opening + "<font style='font-family:verdana; width:30%; text-align:right;'>" +
         (is_core ? "" : kRemoveButton) + "</font></span></div>";
}

std::string PanelWithUpdates(const std::string& description, std::int16_t row, bool is_core,
                             bool not_installed, bool download_in_progress) {
  return "<div id ='div" + std::to_string(row) +
         "' "
         " style='font-size:11; display:none; width:100%; padding-top:5pt;' );'>"
         "<span style='margin-left:4pt; margin-right:4pt; width:100&; '><font "
         "style='font-size:11; font-family:verdana; width:30%; text-align:left;'>" +
         description +
         "&nbsp;&nbsp;&nbsp;</font>"
         "<font style='font-family:verdana; text-align:right; width:70%; '>" +
         ButtonCell(is_core, not_installed, download_in_progress);
}

std::string NewComponentPanel(const std::string& description, std::int16_t row,
                              bool download_in_progress) {
  return "<div id ='div" + std::to_string(row) +
         "' style='font-size:11; display:none; width:100%; padding-top:5pt;'>"
         "<span style='margin-right:4pt; margin-left:4pt; width:100%;'><font "
         "style='font-size:11; font-family:verdana; width:50%; text-align:left;'>" +
         description +
         "&nbsp;&nbsp;&nbsp;</font>"
         "<font style='font-family:verdana; text-align:right; width:50%;'>" +
         ButtonCell(false, true, download_in_progress);
}

}  // namespace kitbay::view
