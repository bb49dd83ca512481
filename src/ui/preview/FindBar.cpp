#include "ui/preview/FindBar.h"

#include "ui/views/ReturnKey.h"

#include <QAccessible>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QToolButton>

#include <limits>

namespace kpx {

FindBar::FindBar(QWidget* parent) : QWidget(parent), m_words(new QLineEdit(this)), m_outcome(new QLabel(this)) {
    setObjectName(QStringLiteral("findBar"));
    m_words->setObjectName(QStringLiteral("wordsToFind"));
    m_words->setAccessibleName(tr("Words to find"));
    m_words->setPlaceholderText(tr("Find in this report"));
    m_words->setClearButtonEnabled(true);
    m_words->setMaxLength(std::numeric_limits<int>::max());
    m_words->installEventFilter(this);
    auto* layout = new QHBoxLayout(this);
    layout->setContentsMargins(8, 4, 8, 4);
    layout->addWidget(m_words);
    const auto addButton = [&](const QString& title, void (FindBar::*signal)()) {
        auto* button = new QToolButton(this);
        button->setText(title);
        connect(button, &QToolButton::clicked, this, signal);
        layout->addWidget(button);
    };
    addButton(tr("Previous"), &FindBar::previousWanted);
    addButton(tr("Next"), &FindBar::nextWanted);
    layout->addWidget(m_outcome);
    layout->addStretch();
    addButton(tr("Done"), &FindBar::closed);
    m_words->setMaximumWidth(320);
    connect(m_words, &QLineEdit::textEdited, this, &FindBar::wordsChanged);
    hide();
}

QString FindBar::words() const { return m_words->text(); }

void FindBar::open() {
    show();
    m_words->setFocus(Qt::ShortcutFocusReason);
    m_words->selectAll();
}

void FindBar::tell(bool found) {
    const QString outcome = found || words().isEmpty() ? QString() : tr("Not found");
    if (m_outcome->text() != outcome) {
        m_outcome->setText(outcome);
        QAccessibleEvent event(m_outcome, QAccessible::NameChanged);
        QAccessible::updateAccessibility(&event);
    }
}

bool FindBar::eventFilter(QObject* object, QEvent* event) {
    if (event->type() != QEvent::KeyPress && event->type() != QEvent::ShortcutOverride) {
        return QWidget::eventFilter(object, event);
    }
    auto* key = static_cast<QKeyEvent*>(event);
    const bool returns = isReturnKey(*key);
    if (!returns && key->key() != Qt::Key_Escape) {
        return QWidget::eventFilter(object, event);
    }
    // Escape closes the bar, not the window.
    event->accept();
    if (event->type() == QEvent::KeyPress) {
        if (!returns) {
            Q_EMIT closed();
        } else if (key->modifiers().testFlag(Qt::ShiftModifier)) {
            Q_EMIT previousWanted();
        } else {
            Q_EMIT nextWanted();
        }
    }
    return true;
}

}  // namespace kpx
