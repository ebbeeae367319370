#pragma once

#include <windows.h>

#include <oleauto.h>

#include <span>
#include <string>
#include <vector>

#include "platform/win32/com/variant.h"

namespace kitbay::platform::win32 {

/// Late-bound calls by a member's name, with the arguments in source order. A failure that the
/// object reports is thrown as `base::Failure` with its number and description; a member that the
/// object does not have is 438.
Variant GetProperty(IDispatch& object, const std::string& name,
                    const std::vector<Variant>& arguments = {});
void PutProperty(IDispatch& object, const std::string& name, const Variant& value);
Variant CallMethod(IDispatch& object, const std::string& name,
                   const std::vector<Variant>& arguments = {});

/// The members of a collection, fetched in batches. Throws 13 if the collection cannot be
/// enumerated.
std::vector<Variant> MembersOf(IDispatch& collection);

/// The number of a member. Throws 438 if there is none.
DISPID FindMember(IDispatch& object, const std::string& name);

/// As above, by the member's number; `flags` are those of IDispatch::Invoke.
Variant Invoke(IDispatch& object, DISPID member, WORD flags,
               std::span<const Variant> arguments = {});

}  // namespace kitbay::platform::win32
