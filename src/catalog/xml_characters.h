#pragma once

#include <string_view>

namespace kitbay::catalog {

/// Whether `text` is UTF-8 and contains only characters that XML allows. Any other character
/// written to a file would make strict readers refuse the whole file.
bool IsXmlText(std::string_view text);

}  // namespace kitbay::catalog
