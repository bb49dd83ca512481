#pragma once

#include <QTabWidget>

namespace kpx {

/// Tabs whose titles can still be told apart when there are many: where the window is too narrow for that, they can be
/// scrolled.
class DocumentTabs : public QTabWidget {
    Q_OBJECT

public:
    explicit DocumentTabs(QWidget* parent = nullptr);
};

}  // namespace kpx
