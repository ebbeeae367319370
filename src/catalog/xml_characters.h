#pragma once

#include <string_view>

namespace kitbay::catalog {

/// Whether `text` is UTF-8 and holds only characters that XML allows. Written to a file, any other
/// character would make strict readers refuse the whole file.
bool IsXmlText(std::string_view text);

}  // namespace kitbay::catalog
