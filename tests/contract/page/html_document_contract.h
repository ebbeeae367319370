#pragma once

// The whole contract of platform::HtmlDocument; include it in one file of a test program.

// IWYU pragma: begin_exports
#include "contract/page/document_contract.h"
#include "contract/page/html_document_host.h"
#include "contract/page/node_contract.h"
#include "contract/page/row_contract.h"
#include "contract/page/style_contract.h"
#include "contract/page/tree_contract.h"
// IWYU pragma: end_exports
