#pragma once

#include <string>

#include "base/error_log.h"
#include "platform/html_document.h"
#include "view/click.h"
#include "view/page_buttons.h"
#include "view/page_categories.h"
#include "view/page_document.h"
#include "view/page_tabs.h"
#include "view/view_state.h"

namespace kitbay::view {

/// What the buttons of the page's rows start.
class PageCommands {
 public:
  virtual ~PageCommands() = default;

  virtual void UpdateInstalled(const Click& click) = 0;
  virtual void RemoveAddon(const Click& click) = 0;

  /// Returns whether an installation is under way now.
  virtual bool InstallNewAddons(const Click& click) = 0;
};

/// Decides what a click on the page does, by the clicked element and its ancestors.
class PageEvents : public platform::HtmlDocumentEvents {
 public:
  PageEvents(base::ErrorLog& log, const PageDocument& page, ViewState& state, PageTabs& tabs,
             PageCategories& categories, PageButtons& buttons, PageCommands& commands)
      : log_(log),
        page_(page),
        state_(state),
        tabs_(tabs),
        categories_(categories),
        buttons_(buttons),
        commands_(commands) {}

  void doc_onclick() override;

  /// False: nothing on the page can be dragged.
  bool doc_ondragstart() override;

  /// Enter and Space click a tab or a row; arrows, Home and End move the focus. Returns false if
  /// the key was used for that.
  bool doc_onkeydown() override;

  void window_onresize() override;

 private:
  void Dispatch(const platform::HtmlNodeRef& source);
  bool SwitchCategory(const std::string& id);
  bool SwitchTab(const platform::HtmlNodeRef& source);
  bool OpenRow(const platform::HtmlNodeRef& source);
  void Perform(const Click& click);
  void Install(const Click& click);

  base::ErrorLog& log_;
  const PageDocument& page_;
  ViewState& state_;
  PageTabs& tabs_;
  PageCategories& categories_;
  PageButtons& buttons_;
  PageCommands& commands_;
};

}  // namespace kitbay::view
