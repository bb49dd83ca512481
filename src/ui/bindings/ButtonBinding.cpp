#include "ui/bindings/ButtonBinding.h"

#include "ui/Conversions.h"
#include "ui/bindings/UserAct.h"
#include "ui/views/DropButton.h"
#include "ui/views/ReceiptLoader.h"
#include "ui/views/ReceiptWatch.h"

#include <QAbstractButton>
#include <QAction>
#include <QFileInfo>
#include <QIcon>
#include <QMenu>
#include <QSignalBlocker>

#include <utility>

namespace kpx {

namespace {

/// The form's own text carries the mnemonic and is in the user's language. It stands until the program gives the
/// control another title.
template <class Widget>
std::function<void()> titleShower(const Button& control, Widget& widget) {
    return [&control, &widget, shown = control.title()]() mutable {
        if (control.title() != shown) {
            shown = control.title();
            widget.setText(qstring(shown));
        }
    };
}

void showImage(const Button& control, QAbstractButton& widget) {
    const QString resource = QStringLiteral(":/images/") + qstring(control.image());
    widget.setIcon(control.image().empty() || !QFileInfo::exists(resource) ? QIcon() : QIcon(resource));
}

void showReceipt(const std::string& file, DropButton& widget, ReceiptLoader& loader) {
    loader.cancel();
    if (file.empty()) {
        widget.setPicture({});
        return;
    }
    widget.expectPicture();
    const QSize room = widget.sizeHint() * widget.devicePixelRatioF();
    loader.load({.file = file, .purpose = DecodingRequest::Purpose::Thumbnail, .room = {room.width(), room.height()}});
}

DropButton::Problem problemOf(KPXDropButton::State state) {
    return state == KPXDropButton::State::CannotBeShown ? DropButton::Problem::CannotBeShown
           : state == KPXDropButton::State::NotFound    ? DropButton::Problem::NotFound
                                                        : DropButton::Problem::None;
}

std::function<void()> clickOf(Button& control, std::function<void()> beforeClick) {
    return [&control, before = std::move(beforeClick)] {
        before();
        // Ending an edit may have switched the button off.
        if (control.isEnabled()) {
            control.userClick();
        }
    };
}

}  // namespace

void bind(Button& control, QAbstractButton& widget, std::function<void()> beforeClick) {
    control.changed = [&control, &widget, showTitle = titleShower(control, widget)] {
        showTitle();
        showImage(control, widget);
        widget.setEnabled(control.isEnabled());
        if (widget.property("hiddenWhileDisabled").toBool()) {
            widget.setVisible(control.isEnabled());
        }
    };
    QObject::connect(&widget, &QAbstractButton::clicked, &widget,
                     byUser(control, widget, clickOf(control, std::move(beforeClick))));
}

void bind(Button& control, QAction& widget, std::function<void()> beforeClick) {
    control.changed = [&control, &widget, showTitle = titleShower(control, widget)] {
        showTitle();
        widget.setEnabled(control.isEnabled());
    };
    const auto& menuOrWindow = *qobject_cast<const QWidget*>(widget.parent());
    QObject::connect(&widget, &QAction::triggered, &widget,
                     byUser(control, *menuOrWindow.window(), clickOf(control, std::move(beforeClick))));
}

void bind(KPXDropButton& control, DropButton& widget, std::function<void()> beforeClick) {
    auto* loader = new ReceiptLoader(&widget);
    auto* watch = new ReceiptWatch(&widget);
    QObject::connect(loader, &ReceiptLoader::pageCame, &widget,
                     [&widget](int, const QImage& picture) { widget.setPicture(picture); });
    QObject::connect(loader, &ReceiptLoader::finished, &widget, [&control, &widget](DecodingResult result) {
        if (result != DecodingResult::Shown) {
            widget.setPicture({});
            if (control.pictureFailed) {
                control.pictureFailed(result == DecodingResult::NotFound);
            }
        } else if (control.pictureShown) {
            control.pictureShown();
        }
    });
    QObject::connect(&widget, &DropButton::contextMenuWanted, &widget,
                     byUser(control, widget, [&widget](const QPoint& position) {
                         if (auto* menu = widget.window()->findChild<QMenu*>(QStringLiteral("contextMenuReceipt"))) {
                             menu->popup(position);
                         }
                     }));
    QObject::connect(watch, &ReceiptWatch::changed, &widget,
                     [watch, loader, &widget] { showReceipt(watch->file(), widget, *loader); });
    control.changed = [&control, &widget, loader, watch] {
        if (watch->file() != control.image() || watch->hasChanged()) {
            watch->watch(control.image());
            showReceipt(control.image(), widget, *loader);
        }
        widget.setProblem(problemOf(control.state()), qstring(control.text()));
        widget.setAccessibleDescription(qstring(control.text()));
        widget.setDragInside(control.dragInside());
        widget.setEnabled(control.isEnabled());
    };
    QObject::connect(&widget, &QAbstractButton::clicked, &widget,
                     byUser(control, widget, clickOf(control, std::move(beforeClick))));
}

}  // namespace kpx
