#pragma once

#include <string>
#include <vector>

namespace kitbay::contract {

/// One change of the page, as words: the kind of change and its arguments.
///   row <list> <start tag> <name line> <panel>   creates a row and appends it to the list
///   html <id> <markup>                           sets the element's inner HTML
///   style <id> <property> <value>                sets a style of the element
///   modify <list> <place> <version> <buttons>    changes the version and buttons of a list's row
///   remove <list> <place>                        removes a list's row from the page
///   disable <list> <place>                       disables the first button of a list's row
using Step = std::vector<std::string>;

struct TreeCase {
  std::string name;
  std::vector<Step> steps;
};

/// What the page in memory makes of a case.
struct TreeResult {
  std::vector<std::string> tree;   ///< The lines of the body's tree.
  std::vector<std::string> texts;  ///< The inner text of each name line, in document order.
};

/// The content of the body at the start of each case.
std::string BodyOfCases();

std::vector<TreeCase> TreeCases();

TreeResult Replay(const TreeCase& tree_case);

/// All cases with their results as JSON, for the comparison with a browser.
std::string TreeCasesAsJson();

}  // namespace kitbay::contract
