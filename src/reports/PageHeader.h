#pragma once

#include "drawing/Document.h"
#include "region/Environment.h"
#include "region/LocalizedStrings.h"

#include <string>

namespace kpx {

/// Every page begins with it: today's date, the title, the page's number, and a double rule below them.
void drawPageHeader(Page& page, const std::string& title, int pageNumber, const Environment& environment,
                    const LocalizedStrings& localized);

}  // namespace kpx
