#include "ui/views/SplashWindow.h"

#include "ui_SplashWindow.h"

#include <QGuiApplication>
#include <QIcon>
#include <QPainter>
#include <QScreen>

namespace kpx {

SplashWindow::SplashWindow(const QStringList& fields) : QWidget(nullptr, Qt::SplashScreen | Qt::FramelessWindowHint) {
    setAttribute(Qt::WA_ShowWithoutActivating);
    Ui::SplashWindow form;
    form.setupUi(this);
    form.labelIcon->setPixmap(QIcon(QStringLiteral(":/images/velmora.svg")).pixmap(QSize(72, 72), devicePixelRatioF()));
    form.labelFields->setText(fields.join(QLatin1Char('\n')));
}

void SplashWindow::showOver(QWidget* window) {
    adjustSize();
    const QRect area = window ? window->frameGeometry() : QGuiApplication::primaryScreen()->availableGeometry();
    move(area.center() - rect().center());
    show();
}

void SplashWindow::paintEvent(QPaintEvent*) {
    QPainter painter(this);
    painter.fillRect(rect(), palette().color(QPalette::Base));
    painter.setPen(palette().color(QPalette::Mid));
    painter.drawRect(rect().adjusted(0, 0, -1, -1));
}

void SplashWindow::mousePressEvent(QMouseEvent*) { hide(); }

}  // namespace kpx
