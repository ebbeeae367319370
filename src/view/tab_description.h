#pragma once

#include <string>

#include "platform/html_document.h"
#include "view/page_document.h"

namespace kitbay::view {

/// Gives a bar of tab images what keyboard and screen reader need: a role and a text for each
/// image, a place in the Tab order, and whether it is selected. Fails as the page's members do.
void DescribeTabs(const platform::HtmlNodeRef& bar);

/// Says of a tab image whether it is the selected one.
void SaySelected(const platform::HtmlNodeRef& tab, bool is_selected);

/// Shows the images of both bars in the variant for the user's colours. They keep their file names:
/// the page's base names another folder for them.
void ShowTabImagesFor(const PageDocument& page, bool dark_colours);

/// Whether a tab image with that source is the selected one of its bar: its file name begins with
/// "i".
bool ShowsSelected(const std::string& src);

}  // namespace kitbay::view
