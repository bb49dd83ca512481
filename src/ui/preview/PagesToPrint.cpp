#include "ui/preview/PagesToPrint.h"

#include <algorithm>

namespace kpx {

namespace {

bool isAskedFor(const PrintRequest& request, int number) {
    return request.ranges.empty() || std::ranges::any_of(request.ranges, [number](const std::pair<int, int>& range) {
               return range.first <= number && number <= range.second;
           });
}

}  // namespace

std::vector<int> pagesToPrint(const PrintRequest& request, int pageCount) {
    std::vector<int> once;
    for (int index = 0; index < pageCount; ++index) {
        if (isAskedFor(request, index + 1)) {
            once.push_back(index);
        }
    }
    if (request.lastFirst) {
        std::ranges::reverse(once);
    }
    std::vector<int> all;
    for (int copy = 0; copy < request.copies; ++copy) {
        all.insert(all.end(), once.begin(), once.end());
    }
    if (!request.collated) {
        std::ranges::stable_sort(all,
                                 [&](int left, int right) { return request.lastFirst ? left > right : left < right; });
    }
    return all;
}

}  // namespace kpx
