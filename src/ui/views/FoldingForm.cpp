#include "ui/views/FoldingForm.h"

#include <QGridLayout>
#include <QToolButton>

namespace kpx {

FoldingForm::FoldingForm(QWidget& form, QToolButton& button)
    : QObject(&form),
      m_form(form),
      m_button(button),
      m_rows(*form.findChild<QGridLayout*>()),
      m_spacing(form.layout()->spacing()),
      m_spacingOfRows(m_rows.verticalSpacing()) {
    button.setCheckable(true);
    button.setProperty("ownedByWindow", true);
    connect(&button, &QToolButton::toggled, this, &FoldingForm::setFolded);
    setFolded(false);
}

void FoldingForm::unfold(QWidget& widget) {
    const auto* form = widget.parentWidget() ? widget.parentWidget()->findChild<FoldingForm*>() : nullptr;
    if (form) {
        form->m_button.setChecked(false);
    }
}

void FoldingForm::setFolded(bool folded) {
    if (folded) {
        for (QWidget* widget : m_form.findChildren<QWidget*>(QString(), Qt::FindDirectChildrenOnly)) {
            const bool stays = widget == &m_button || widget->objectName().startsWith(QStringLiteral("labelSection"));
            if (!stays && !widget->isHidden() && !widget->isWindow()) {
                widget->hide();
                m_folded << widget;
            }
        }
    } else {
        for (QWidget* widget : m_folded) {
            widget->show();
        }
        m_folded.clear();
    }
    // Below the headings there is nothing then to be kept apart.
    m_form.layout()->setSpacing(folded ? 0 : m_spacing);
    m_rows.setVerticalSpacing(folded ? 0 : m_spacingOfRows);
    const QString words = folded ? tr("Show the entry form") : tr("Fold the entry form");
    m_button.setArrowType(folded ? Qt::DownArrow : Qt::UpArrow);
    m_button.setToolTip(words);
    m_button.setAccessibleName(words);
}

}  // namespace kpx
