#include "member_names.h"

namespace kitbay::web_browser {
namespace {

constexpr DISPID kFirstId = 1;

std::wstring Lower(std::wstring name) {
  for (wchar_t& c : name) {
    if (c >= L'A' && c <= L'Z') {
      c += L'a' - L'A';
    }
  }
  return name;
}

}  // namespace

DISPID MemberNames::IdOf(const wchar_t* name) {
  const DISPID next = kFirstId + static_cast<DISPID>(names_.size());
  const auto [entry, is_new] = ids_.emplace(Lower(name), next);
  if (is_new) {
    names_.push_back(name);
  }
  return entry->second;
}

const std::wstring* MemberNames::NameOf(DISPID id) const {
  if (id == DISPID_VALUE) {
    return &default_member_;
  }
  const DISPID index = id - kFirstId;
  if (index < 0 || index >= static_cast<DISPID>(names_.size())) {
    return nullptr;
  }
  return &names_[static_cast<std::size_t>(index)];
}

}  // namespace kitbay::web_browser
