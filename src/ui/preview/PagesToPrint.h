#pragma once

#include <utility>
#include <vector>

namespace kpx {

/// What a print dialog leaves to the program.
struct PrintRequest {
    /// From and to, counted from 1; none for all pages.
    std::vector<std::pair<int, int>> ranges;
    bool lastFirst = false;
    int copies = 1;
    /// Whole copies one after the other, not each page as often.
    bool collated = true;
};

/// The indices of the pages in the order in which they come out. What lies beyond the document is left out, and a
/// page that several ranges hold comes once.
std::vector<int> pagesToPrint(const PrintRequest& request, int pageCount);

}  // namespace kpx
