#pragma once

#include <oaidl.h>

#include <map>
#include <string>
#include <vector>

namespace kitbay::web_browser {

/** Numbers the member names that a host has asked for, whatever their case. */
class MemberNames {
 public:
  DISPID IdOf(const wchar_t* name);
  /** The name as it was first asked for, empty for DISPID_VALUE; nullptr for a number never given.
   */
  const std::wstring* NameOf(DISPID id) const;

 private:
  std::vector<std::wstring> names_;
  std::map<std::wstring, DISPID> ids_;
  std::wstring default_member_;
};

}  // namespace kitbay::web_browser
