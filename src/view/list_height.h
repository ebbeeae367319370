#pragma once

#include "platform/html_document.h"
#include "view/page_document.h"

namespace kitbay::view {

/// Sets a list's height to what its tab bar leaves of the page, and never to less than 0. Fails as
/// the page's members do.
void FitUnderBar(const PageDocument& page, const platform::HtmlNodeRef& list,
                 const platform::HtmlNodeRef& bar);

}  // namespace kitbay::view
