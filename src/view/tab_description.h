#pragma once

#include <string>

#include "platform/html_document.h"
#include "platform/main_window.h"
#include "view/page_document.h"

namespace kitbay::view {

/// Gives a bar of tab images what keyboard and screen reader need: a role and a text for each
/// image, a place in the Tab order, and whether it is selected. Fails as the page's members do.
void DescribeTabs(const platform::HtmlNodeRef& bar);

/// Says of a tab image whether it is the selected one.
void SaySelected(const platform::HtmlNodeRef& tab, bool is_selected);

/// The folder of the tab images for these looks, relative to the page's folder and with a slash at
/// its end; empty if they are beside the page.
std::string TabFolderFor(const platform::Looks& looks);

/// Shows the images of both bars from that folder. They keep their file names.
void ShowTabImages(const PageDocument& page, const std::string& folder);

/// Whether a tab image with that source is the selected one of its bar: its file name begins with
/// "i".
bool ShowsSelected(const std::string& src);

}  // namespace kitbay::view
