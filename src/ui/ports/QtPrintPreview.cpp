#include "ui/ports/QtPrintPreview.h"

#include "ui/ReportOutput.h"
#include "ui/ReportPainter.h"
#include "ui/views/PreviewWindow.h"

#include <QGuiApplication>
#include <QScreen>

#include <algorithm>
#include <utility>

namespace kpx {

namespace {

/// Room for a title bar, so that each window's can be read and grasped.
constexpr int cascadeStep = 34;

/// A step down and to the right of the window before, anew from the corner when the screen ends.
QPoint placeAfter(const QRect& before, const QSize& size, const QRect& screen) {
    const QPoint next = before.topLeft() + QPoint(cascadeStep, cascadeStep);
    const QRect place(next, size);
    return screen.contains(place) ? next : screen.topLeft() + QPoint(cascadeStep, cascadeStep);
}

}  // namespace

QtPrintPreview::~QtPrintPreview() {
    for (PreviewWindow* window : windows()) {
        delete window;
    }
}

void QtPrintPreview::open(Document document) {
    std::erase_if(m_windows, [](const QPointer<PreviewWindow>& window) { return window.isNull(); });
    auto* window = new PreviewWindow(std::move(document), reportPageLayout());
    window->setAttribute(Qt::WA_DeleteOnClose);
    const QRect screen = window->screen()->availableGeometry();
    window->resize(window->size().boundedTo(screen.size() - QSize(8 * cascadeStep, 8 * cascadeStep)));
    const QRect before = m_windows.empty() ? QRect(screen.topLeft(), QSize()) : QRect(m_windows.back()->pos(), QSize());
    window->move(placeAfter(before, window->size(), screen));
    m_windows.emplace_back(window);
    window->show();
    window->raise();
    window->activateWindow();
}

FontMetrics QtPrintPreview::metrics(const std::string&, double size) { return ReportPainter::metrics(size); }

std::vector<PreviewWindow*> QtPrintPreview::windows() const {
    std::vector<PreviewWindow*> open;
    for (const QPointer<PreviewWindow>& window : m_windows) {
        if (window) {
            open.push_back(window);
        }
    }
    return open;
}

}  // namespace kpx
