#include "ui/views/ReminderWindow.h"

#include "ui/style/Headings.h"
#include "ui/views/LongNames.h"

#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QScrollArea>
#include <QVBoxLayout>

namespace kpx {

namespace {

QLabel* plainLabel(const QString& text, const QString& name) {
    auto* label = new QLabel(withBreaks(text));
    label->setObjectName(name);
    label->setTextFormat(Qt::PlainText);
    label->setTextInteractionFlags(Qt::TextSelectableByMouse);
    label->setWordWrap(true);
    return label;
}

/// However long they are, the buttons below stay on the screen.
QScrollArea* scrolled(QLabel* heading, QLabel* text) {
    auto* content = new QWidget;
    auto* lines = new QVBoxLayout(content);
    lines->setContentsMargins({});
    lines->addWidget(heading);
    lines->addWidget(text);
    lines->addStretch();
    auto* area = new QScrollArea;
    area->setObjectName(QStringLiteral("reminderScroll"));
    area->setWidget(content);
    area->setWidgetResizable(true);
    area->setFrameShape(QFrame::NoFrame);
    area->setSizeAdjustPolicy(QAbstractScrollArea::AdjustToContents);
    area->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    return area;
}

QString inLines(QString text) {
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n")).replace(QLatin1Char('\r'), QLatin1Char('\n'));
    QStringList lines = text.split(QLatin1Char('\n'));
    for (QString& line : lines) {
        line = line.trimmed();
    }
    return lines.join(QLatin1Char('\n'));
}

}  // namespace

ReminderWindow::ReminderWindow(const QString& title, QString text) : QDialog(nullptr, Qt::WindowStaysOnTopHint) {
    setObjectName(QStringLiteral("theReminderWindow"));
    setWindowTitle(tr("Reminder"));
    text = inLines(text);
    setAccessibleName(title);
    setAccessibleDescription(text);
    QLabel* heading = plainLabel(title, QStringLiteral("reminderTitle"));
    makeHeading(*heading);
    auto* buttons = new QDialogButtonBox;
    auto* show = buttons->addButton(tr("&Show"), QDialogButtonBox::AcceptRole);
    auto* later = buttons->addButton(tr("&Later"), QDialogButtonBox::RejectRole);
    show->setObjectName(QStringLiteral("showReminderBtn"));
    later->setObjectName(QStringLiteral("laterReminderBtn"));
    connect(buttons, &QDialogButtonBox::accepted, this, [this] {
        accept();
        Q_EMIT showWanted();
    });
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* layout = new QVBoxLayout(this);
    constexpr int margin = 20;
    constexpr int smallestWidth = 380;
    layout->setContentsMargins(margin, margin, margin, margin);
    layout->setSpacing(margin / 2);
    layout->addWidget(scrolled(heading, plainLabel(text, QStringLiteral("reminderText"))));
    layout->addWidget(buttons);
    setMinimumWidth(smallestWidth);
    // Now that it is the dialog's: the desktop decides which button stands first, and the first would have the keys.
    show->setDefault(true);
    show->setFocus();
}

}  // namespace kpx
