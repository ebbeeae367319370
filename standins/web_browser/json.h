#pragma once

#include <nlohmann/json.hpp>
#include <string>

#include "platform/win32/system/utf.h"

namespace kitbay::web_browser {

using platform::win32::ToUtf16;
using platform::win32::ToUtf8;

/** Texts are UTF-8. Reading a member that is missing or of another type throws Json::exception. */
using Json = nlohmann::json;

inline std::wstring TextOf(const Json& object, const char* name) {
  return ToUtf16(object.at(name).get_ref<const std::string&>());
}

}  // namespace kitbay::web_browser
