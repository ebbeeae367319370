#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "fakes/fake_dom.h"

namespace kitbay::fakes {

/// Parses a whole page without a doctype, that is in quirks mode, into `tree`.
void ParsePage(DomTree& tree, std::string_view markup);

/// Parses markup as the content of an element of tag `context` on a quirks-mode page. The nodes
/// belong to `tree` and have no parent as yet.
std::vector<DomNode*> ParseFragment(DomTree& tree, std::string_view context,
                                    std::string_view markup);

}  // namespace kitbay::fakes
