// Writes the cases and the page-in-memory's trees for them to standard output, to be compared with
// the browser's trees.

#include <cstdio>

#include "contract/page/browser_tree/tree_cases.h"

int main() {
  std::fputs(kitbay::contract::TreeCasesAsJson().c_str(), stdout);
  return 0;
}
