#pragma once

#include <string_view>

namespace kitbay::catalog {

/// Whether `text` is UTF-8 of characters that an XML document can hold. One with others, written
/// into a file, would make strict readers refuse the whole file.
bool IsXmlText(std::string_view text);

}  // namespace kitbay::catalog
