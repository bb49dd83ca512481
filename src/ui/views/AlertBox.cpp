#include "ui/views/AlertBox.h"

#include "ui/Conversions.h"
#include "ui/views/LongNames.h"

#include <QGridLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QPushButton>
#include <QScreen>
#include <QScrollArea>
#include <QScrollBar>

#include <algorithm>

namespace kpx {

namespace {

constexpr int comfortableWidth = 420;
constexpr int widestWidth = 760;
/// What a window manager puts around a window, and a little air.
constexpr int roomForFrame = 64;

/// Texts separate their paragraphs by carriage returns.
QString lines(const std::string& text) {
    return withBreaks(qstring(text).replace(QLatin1Char('\r'), QLatin1Char('\n')));
}

QMessageBox::Icon iconFor(AlertStyle style) {
    switch (style) {
        case AlertStyle::Informational:
            return QMessageBox::Information;
        case AlertStyle::Critical:
            return QMessageBox::Critical;
        case AlertStyle::Warning:
            break;
    }
    return QMessageBox::Warning;
}

}  // namespace

AlertBox::AlertBox(const Alert& alert, QWidget* parent) : QMessageBox(parent), m_escapeIndex(buttonForEscape(alert)) {
    // The box's own would make it a sheet, which on Wayland has neither frame nor shadow.
    QWidget::setWindowModality(Qt::WindowModal);
    setWindowTitle(QStringLiteral("Velmora"));
    setIcon(iconFor(alert.style));
    setTextFormat(Qt::PlainText);
    setText(lines(alert.shownMessage.empty() ? alert.messageText : alert.shownMessage));
    m_informativeText = lines(alert.informativeText);
    setInformativeText(m_informativeText);
    if (auto* message = findChild<QLabel*>(QStringLiteral("qt_msgbox_label"))) {
        QFont bold = message->font();
        bold.setBold(true);
        message->setFont(bold);
    }
    if (auto* body = findChild<QLabel*>(QStringLiteral("qt_msgbox_informativelabel"))) {
        // The box applies its text format to the message only, and a drug's name is not markup.
        body->setTextFormat(Qt::PlainText);
        body->setText(lines(alert.informativeText));
        if (body->text().contains(QLatin1Char('\t'))) {
            // Its lines are laid out by hand, and broken ones would fall back to the left of their indent.
            body->setWordWrap(false);
            const int widthOfLines = body->sizeHint().width();
            body->setWordWrap(true);
            body->setMinimumWidth(qMin(widthOfLines, qMin(widestWidth, screen()->availableGeometry().width() / 2)));
        }
    }
    addButtons(alert);
    // A short message is not to make a narrow box. A minimum width of the message itself would hide from the
    // box how much room a long one needs.
    if (auto* grid = qobject_cast<QGridLayout*>(layout())) {
        grid->addItem(new QSpacerItem(comfortableWidth, 0), grid->rowCount(), 0, 1, grid->columnCount());
    }
}

void AlertBox::addButtons(const Alert& alert) {
    for (const AlertButton& description : alert.buttons) {
        const bool first = m_buttons.empty();
        QPushButton* button = addButton(qstring(description.title), first ? AcceptRole : RejectRole);
        button->setToolTip(qstring(description.toolTip));
        button->setAutoDefault(first);
        if (alert.smallControls) {
            QFont font = button->font();
            font.setPointSizeF(font.pointSizeF() * 0.88);
            button->setFont(font);
        }
        if (first) {
            setDefaultButton(button);
        }
        m_buttons.push_back(button);
    }
    if (!m_buttons.empty()) {
        setEscapeButton(m_buttons[static_cast<std::size_t>(m_escapeIndex)]);
    }
    if (alert.showsHelp) {
        // The texts call it the '?' button.
        QPushButton* help = addButton(QStringLiteral("?"), HelpRole);
        help->setAccessibleName(tr("Help"));
        help->setToolTip(tr("Help"));
        help->setAutoDefault(false);
        // The box would close on any of its buttons.
        help->disconnect(SIGNAL(clicked(bool)));
        connect(help, &QPushButton::clicked, this, &AlertBox::helpWanted);
    }
}

void AlertBox::showEvent(QShowEvent* event) {
    QMessageBox::showEvent(event);
    const int most = screen()->availableGeometry().height() - roomForFrame;
    if (height() > most && !m_scroll) {
        scrollTexts(most);
        moveIntoScreen();
    }
}

void AlertBox::moveIntoScreen() {
    const QRect room = screen()->availableGeometry().adjusted(0, roomForFrame / 2, 0, -roomForFrame / 2);
    QRect place(QPoint(), size());
    place.moveCenter(parentWidget() ? parentWidget()->window()->geometry().center() : room.center());
    place.moveRight(qMin(place.right(), room.right()));
    place.moveBottom(qMin(place.bottom(), room.bottom()));
    place.moveTo(qMax(place.left(), room.left()), qMax(place.top(), room.top()));
    move(place.topLeft());
}

void AlertBox::scrollTexts(int most) {
    auto* grid = qobject_cast<QGridLayout*>(layout());
    auto* message = findChild<QLabel*>(QStringLiteral("qt_msgbox_label"));
    auto* body = findChild<QLabel*>(QStringLiteral("qt_msgbox_informativelabel"));
    if (!grid || !message) {
        return;
    }
    int row = 0, column = 0, rows = 1, columns = 1;
    grid->getItemPosition(grid->indexOf(message), &row, &column, &rows, &columns);
    auto* texts = new QWidget;
    auto* lines = new QVBoxLayout(texts);
    lines->setContentsMargins(0, 0, 0, 0);
    int textHeight = 0;
    int textWidth = comfortableWidth;
    for (QLabel* label : {message, body}) {
        if (label) {
            textHeight += label->height() + lines->spacing();
            textWidth = qMax(textWidth, label->width());
            label->setWordWrap(true);
            lines->addWidget(label);
        }
    }
    // The box has a fixed size, and so have its texts.
    texts->setFixedSize(textWidth, lines->totalHeightForWidth(textWidth));
    m_scroll = new QScrollArea(this);
    m_scroll->setFrameShape(QFrame::NoFrame);
    m_scroll->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
    m_scroll->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOn);
    m_scroll->setWidget(texts);
    const int bar = m_scroll->verticalScrollBar()->sizeHint().width();
    constexpr int fewLines = 60;
    m_scroll->setFixedHeight(qMax(fewLines, most - (height() - textHeight)));
    m_scroll->setMinimumWidth(textWidth + bar);
    grid->addWidget(m_scroll, row, column, body ? 2 : 1, columns);
    // At once: the box takes the size of what is visible when it is next laid out.
    m_scroll->show();
    QEvent layoutRequest(QEvent::LayoutRequest);
    event(&layoutRequest);
}

void AlertBox::keyPressEvent(QKeyEvent* event) {
    // The buttons have the focus, and the text is to be read.
    if (m_scroll && (event->key() == Qt::Key_PageUp || event->key() == Qt::Key_PageDown)) {
        m_scroll->verticalScrollBar()->triggerAction(
            event->key() == Qt::Key_PageUp ? QAbstractSlider::SliderPageStepSub : QAbstractSlider::SliderPageStepAdd);
        return;
    }
    QMessageBox::keyPressEvent(event);
}

void AlertBox::setTimes(int times, const QString& written) {
    m_times = times;
    m_writtenTimes = written;
    if (m_times == m_shownTimes) {
        return;
    }
    // A report may ask a thousand times in one go; the text is laid out once it has.
    QMetaObject::invokeMethod(
        this,
        [this] {
            if (m_times != m_shownTimes) {
                m_shownTimes = m_times;
                setInformativeText(
                    (m_informativeText + QLatin1Char(' ') + tr("(%1 times)").arg(m_writtenTimes)).trimmed());
            }
        },
        Qt::QueuedConnection);
}

int AlertBox::returnCode() const {
    const auto pressed = std::find(m_buttons.begin(), m_buttons.end(), clickedButton());
    const auto index = pressed == m_buttons.end() ? m_escapeIndex : static_cast<int>(pressed - m_buttons.begin());
    return alertFirstButtonReturn + index;
}

}  // namespace kpx
