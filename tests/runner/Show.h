#pragma once

#include "controls/Panels.h"
#include "drawing/Document.h"
#include "tests/support/Json.h"

namespace kpx::runner {

/// A menu's items as transcripts show them.
test::Json itemsOf(const Menu& menu);
/// A printed document, page by page, operation by operation.
test::Json describe(const Document& document);

}  // namespace kpx::runner
