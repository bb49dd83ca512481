#include "ui/preview/DocumentTabs.h"

#include <QTabBar>

namespace kpx {

namespace {

/// The toolkit's bar elides titles down to their first letter before it scrolls.
class DocumentTabBar : public QTabBar {
public:
    using QTabBar::QTabBar;

protected:
    QSize minimumTabSizeHint(int index) const override {
        constexpr int letters = 24;
        const QSize whole = tabSizeHint(index);
        return {qMin(whole.width(), letters * fontMetrics().averageCharWidth()), whole.height()};
    }
};

}  // namespace

DocumentTabs::DocumentTabs(QWidget* parent) : QTabWidget(parent) {
    setTabBar(new DocumentTabBar);
    setDocumentMode(true);
    setTabBarAutoHide(true);
    setTabsClosable(true);
    setUsesScrollButtons(true);
    tabBar()->setElideMode(Qt::ElideRight);
}

}  // namespace kpx
