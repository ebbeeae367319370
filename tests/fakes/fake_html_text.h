#pragma once

#include <string>

#include "fakes/fake_dom.h"

namespace kitbay::fakes {

/// The markup of the nodes below `node`.
std::string InnerMarkup(const DomNode& node);

/// The markup of `node` itself.
std::string OuterMarkup(const DomNode& node);

/// The text that a reader sees in `node`: white space collapsed, a line for each block, and without
/// what its own style hides, unless `node` itself is hidden or off the page.
std::string VisibleText(const DomTree& tree, const DomNode& node);

/// One line for each node, children indented by two blanks below their parent: an element as its
/// tag and its attributes sorted by name, a text in quotes. Texts of white space only are left out;
/// a style attribute shows the declarations that make sense.
std::string TreeText(const DomNode& node);

}  // namespace kitbay::fakes
