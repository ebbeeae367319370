#pragma once

#include <string>

#include "fakes/fake_dom.h"

namespace kitbay::fakes {

/// The markup of the nodes below `node`.
std::string InnerMarkup(const DomNode& node);

/// The markup of `node` itself.
std::string OuterMarkup(const DomNode& node);

/// The text that a reader sees in `node`: white space is collapsed and each block has its own line.
/// Leaves out what its own style hides, unless `node` itself is hidden or off the page.
std::string VisibleText(const DomTree& tree, const DomNode& node);

/// One line per node, children indented by two blanks below their parent: an element as its tag and
/// its attributes sorted by name, a text in quotes. Texts of only white space are left out; a style
/// attribute shows only its valid declarations.
std::string TreeText(const DomNode& node);

}  // namespace kitbay::fakes
