#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "fakes/fake_dom.h"

namespace kitbay::fakes {

/// Parses a whole page without a doctype, so in quirks mode, into `tree`.
void ParsePage(DomTree& tree, std::string_view markup);

/// Parses markup as the content of an element with the tag `context` on a quirks-mode page. The
/// nodes belong to `tree` and do not have a parent yet.
std::vector<DomNode*> ParseFragment(DomTree& tree, std::string_view context,
                                    std::string_view markup);

}  // namespace kitbay::fakes
