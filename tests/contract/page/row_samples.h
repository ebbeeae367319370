#pragma once

#include <string>

namespace kitbay::contract {

/// The three pieces of markup from which the program creates a row of a list.
struct RowSample {
  std::string start_tag;  ///< of the row element
  std::string name_line;  ///< inserted at "afterBegin"
  std::string panel;      ///< inserted at "beforeEnd"
};

/// What a component shows in its row.
struct ComponentSample {
  std::string name = "Notes";
  std::string version = "1.2.0.5";
  std::string description = "Keeps short notes beside a conversation.";
  int number = 7;
};

inline std::string Button(const std::string& id, const std::string& value, bool disabled) {
  return "<input type='button' id='" + id + "' " + (disabled ? "disabled " : "") + "value='" +
         value + "' style='width:70; height:22; font-family:verdana; font-size:11;'>";
}

inline const std::string kEndOfRow = "</font></span></div>";

inline std::string NameLine(const ComponentSample& component) {
  return "<span id =" + std::to_string(component.number) +
         "  style='margin-right:4pt; margin-left:4pt; width:100%; cursor:default;'>"
         "<font style='font-size:11; font-family:verdana; width:50%; text-align:left;'>" +
         component.name +
         "</font>"
         "<font style='font-size:11; font-family:verdana; width:50%; text-align:right;'>"
         "Version " +
         component.version + "</font></span>";
}

/// A row of the installed list without looking for updates.
inline RowSample InstalledRow(const ComponentSample& component, bool core) {
  const std::string number = std::to_string(component.number);
  return {"<div id =" + number + " style='padding-bottom:5pt; padding-top:5pt;'>",
          NameLine(component),
          "<div id ='div" + number +
              "'  style='display:none; width:100%; padding-top:5pt;'>"
              "<span style='margin-right:4pt; margin-left:4pt; width:100%;'>"
              "<font style='font-size:11; font-family:verdana; width:70%; text-align:left;'>" +
              component.description +
              "&nbsp;&nbsp;&nbsp;</font>"
              "<font style='font-family:verdana; width:30%; text-align:right;'>" +
              (core ? "" : Button("btninstalled", "Remove", false)) + kEndOfRow};
}

/// A row of the installed list with its update status.
inline RowSample InstalledRowWithUpdates(const ComponentSample& component, bool downloading,
                                         bool not_installed, bool has_update) {
  const std::string number = std::to_string(component.number);
  std::string buttons;
  if (not_installed || has_update) {
    buttons = Button("btninstalled", not_installed ? "Install" : "Update", downloading);
  } else {
    buttons = Button("btninstalled", "Remove", false) + "&nbsp&nbsp" +
              Button("btnchange", "Update", downloading);
  }
  return {"<div id =" + number + " style='padding-bottom:5pt;padding-top:5pt;'>",
          NameLine(component),
          "<div id ='div" + number +
              "'  style='font-size:11; display:none; width:100%; padding-top:5pt;' );'>"
              "<span style='margin-left:4pt; margin-right:4pt; width:100&; '>"
              "<font style='font-size:11; font-family:verdana; width:30%; text-align:left;'>" +
              component.description +
              "&nbsp;&nbsp;&nbsp;</font>"
              "<font style='font-family:verdana; text-align:right; width:70%; '>" +
              buttons + kEndOfRow};
}

/// A row of the list of new and updated components.
inline RowSample AvailableRow(const ComponentSample& component, bool downloading) {
  const std::string number = std::to_string(component.number);
  return {"<div id =" + number + " style='padding-bottom:5pt; padding-top:5pt;'>",
          NameLine(component),
          "<div id ='div" + number +
              "' style='font-size:11; display:none; width:100%; padding-top:5pt;'>"
              "<span style='margin-right:4pt; margin-left:4pt; width:100%;'>"
              "<font style='font-size:11; font-family:verdana; width:50%; text-align:left;'>" +
              component.description +
              "&nbsp;&nbsp;&nbsp;</font>"
              "<font style='font-family:verdana; text-align:right; width:50%;'>" +
              Button("btninstalled", "Install", downloading) + kEndOfRow};
}

inline const std::string kInstalledBar =
    "<span class='styleclass' style='background:gray;  width:100%; height:33px; "
    "position:relative;'  id='itabencloser'><img src='ichannels.gif' id='channels' );'>"
    "<img src='utrans.gif' id='trans' ><img src='uaddons.gif' id='addons' ></span>";

inline const std::string kUpdatesBar =
    "<span class='styleclass' style='background:gray; width:100%; height:33px; "
    "position:relative; display:none;' id='tabencloser'><img src='ichannels.gif' id='channels'>"
    "<img src='utrans.gif' id='trans'><img src='uaddons.gif' id='addons' ></span>";

inline std::string Heading(const std::string& title) {
  return "<font style='font-size:11; font-family:verdana; '>" + title +
         "<hr style='height:1pt;'></font>";
}

inline std::string Status(const std::string& message) {
  return message + "<hr style='height:1pt; '>";
}

}  // namespace kitbay::contract
