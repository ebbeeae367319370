#pragma once

#include <oaidl.h>

#include <map>
#include <string>
#include <vector>

namespace kitbay::web_browser {

/** Numbers the member names that a host has requested, ignoring case. */
class MemberNames {
 public:
  DISPID IdOf(const wchar_t* name);
  /**
   * The name as it was first requested, empty for DISPID_VALUE; nullptr for a number never
   * assigned.
   */
  const std::wstring* NameOf(DISPID id) const;

 private:
  std::vector<std::wstring> names_;
  std::map<std::wstring, DISPID> ids_;
  std::wstring default_member_;
};

}  // namespace kitbay::web_browser
