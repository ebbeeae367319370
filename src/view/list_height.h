#pragma once

#include "platform/html_document.h"
#include "view/page_document.h"

namespace kitbay::view {

/// Gives a list the height that its tab bar leaves of the page, and never less than nothing. Fails
/// as the page's members do.
void FitUnderBar(const PageDocument& page, const platform::HtmlNodeRef& list,
                 const platform::HtmlNodeRef& bar);

}  // namespace kitbay::view
