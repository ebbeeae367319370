// Writes the cases and the trees that the page in memory makes of them to standard output; the
// browser's trees are compared with them.

#include <cstdio>

#include "contract/page/browser_tree/tree_cases.h"

int main() {
  std::fputs(kitbay::contract::TreeCasesAsJson().c_str(), stdout);
  return 0;
}
