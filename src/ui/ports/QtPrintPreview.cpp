#include "ui/ports/QtPrintPreview.h"

#include "ui/ReportOutput.h"
#include "ui/ReportPainter.h"
#include "ui/preview/PreviewWindow.h"

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

QtPrintPreview::QtPrintPreview() {
    // An action ends before the event loop goes on.
    m_endOfAction.setSingleShot(true);
    m_endOfAction.setInterval(0);
    m_endOfAction.callOnTimeout([this] { m_filling = nullptr; });
}

QtPrintPreview::~QtPrintPreview() {
    lastClosed = nullptr;
    for (PreviewWindow* window : windows()) {
        delete window;
    }
}

void QtPrintPreview::open(Document document) { windowOfThisAction().add(std::move(document)); }

PreviewWindow& QtPrintPreview::windowOfThisAction() {
    if (m_filling) {
        return *m_filling;
    }
    std::erase_if(m_windows, [](const QPointer<PreviewWindow>& window) { return window.isNull(); });
    auto* window = new PreviewWindow(reportPageLayout(), language);
    window->setAttribute(Qt::WA_DeleteOnClose);
    QObject::connect(window, &QObject::destroyed, &m_endOfAction, [this, window] {
        std::erase_if(m_windows, [window](const QPointer<PreviewWindow>& open) { return !open || open == window; });
        if (m_windows.empty() && lastClosed) {
            lastClosed();
        }
    });
    const QRect screen = window->screen()->availableGeometry();
    window->resize(window->size().boundedTo(screen.size() - QSize(8 * cascadeStep, 8 * cascadeStep)));
    const QRect before = m_windows.empty() ? QRect(screen.topLeft(), QSize()) : QRect(m_windows.back()->pos(), QSize());
    window->move(placeAfter(before, window->size(), screen));
    m_windows.emplace_back(window);
    m_filling = window;
    m_endOfAction.start();
    window->show();
    window->raise();
    window->activateWindow();
    return *window;
}

void QtPrintPreview::closeKept() {
    for (PreviewWindow* window : windows()) {
        if (window->isAllKept()) {
            window->close();
        }
    }
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
