#include "ui/views/SplashWindow.h"

#include "ui/style/Headings.h"
#include "ui_SplashWindow.h"

#include <QIcon>
#include <QPainter>

namespace kpx {

SplashWindow::SplashWindow(const QStringList& fields, QWidget& window) : QWidget(&window) {
    Ui::SplashWindow form;
    form.setupUi(this);
    showHeadings(*this);
    form.labelIcon->setPixmap(QIcon(QStringLiteral(":/images/velmora.svg")).pixmap(QSize(72, 72), devicePixelRatioF()));
    form.labelFields->setText(fields.join(QLatin1Char('\n')));
    adjustSize();
    move(window.rect().center() - rect().center());
}

void SplashWindow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void SplashWindow::mousePressEvent(QMouseEvent*) { hide(); }

}  // namespace kpx
