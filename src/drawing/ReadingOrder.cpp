#include "drawing/ReadingOrder.h"

#include <algorithm>

namespace kpx {

std::vector<std::vector<const DrawText*>> linesInReadingOrder(const Page& page) {
    std::vector<const DrawText*> texts;
    for (const DrawingOperation& operation : page.operations) {
        if (const auto* text = std::get_if<DrawText>(&operation); text && !text->text.empty()) {
            texts.push_back(text);
        }
    }
    std::ranges::stable_sort(texts, [](const DrawText* left, const DrawText* right) {
        return left->y != right->y ? left->y > right->y : left->x < right->x;
    });
    std::vector<std::vector<const DrawText*>> lines;
    for (const DrawText* text : texts) {
        // Baselines less than a point apart are one line to the eye.
        if (lines.empty() || lines.back().front()->y - text->y >= 1) {
            lines.emplace_back();
        }
        lines.back().push_back(text);
    }
    for (std::vector<const DrawText*>& line : lines) {
        std::ranges::stable_sort(line, {}, &DrawText::x);
    }
    return lines;
}

}  // namespace kpx
