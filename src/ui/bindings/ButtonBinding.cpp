#include "ui/bindings/ButtonBinding.h"

#include "ui/Conversions.h"
#include "ui/views/DropButton.h"
#include "ui/views/ReceiptLoader.h"

#include <QAbstractButton>
#include <QAction>
#include <QDateTime>
#include <QFileInfo>
#include <QIcon>
#include <QSignalBlocker>

#include <memory>
#include <utility>

namespace kpx {

namespace {

QString withoutMnemonic(QString text) { return text.remove(QLatin1Char('&')); }

/// The form's own text carries the mnemonic; it stands as long as it says what the control says.
template <class Widget>
void showTitle(const Button& control, Widget& widget) {
    const QString title = qstring(control.title());
    if (!title.isEmpty() && withoutMnemonic(widget.text()) != title) {
        widget.setText(title);
    }
}

void showImage(const Button& control, QAbstractButton& widget) {
    const QString resource = QStringLiteral(":/images/") + qstring(control.image());
    widget.setIcon(control.image().empty() || !QFileInfo::exists(resource) ? QIcon() : QIcon(resource));
}

void showReceipt(const QString& file, DropButton& widget, ReceiptLoader& loader) {
    loader.cancel();
    widget.setAccessibleDescription(QFileInfo(file).fileName());
    if (file.isEmpty()) {
        widget.setPicture({});
        return;
    }
    widget.expectPicture();
    loader.load(file, widget.sizeHint() * widget.devicePixelRatioF());
}

/// The file as it stands now: one that was scanned anew under its name is another picture.
struct ReceiptFile {
    std::string path;
    qint64 size = 0;
    QDateTime modified;
    bool operator==(const ReceiptFile&) const = default;
};

ReceiptFile receiptFileAt(const std::string& path) {
    const QFileInfo file(qstring(path));
    return path.empty() ? ReceiptFile() : ReceiptFile{path, file.size(), file.lastModified()};
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
    control.changed = [&control, &widget] {
        showTitle(control, widget);
        showImage(control, widget);
        widget.setEnabled(control.isEnabled());
    };
    QObject::connect(&widget, &QAbstractButton::clicked, &widget, clickOf(control, std::move(beforeClick)));
}

void bind(Button& control, QAction& widget, std::function<void()> beforeClick) {
    control.changed = [&control, &widget] {
        showTitle(control, widget);
        widget.setEnabled(control.isEnabled());
    };
    QObject::connect(&widget, &QAction::triggered, &widget, clickOf(control, std::move(beforeClick)));
}

void bind(KPXDropButton& control, DropButton& widget, std::function<void()> beforeClick) {
    auto shown = std::make_shared<ReceiptFile>();
    auto* loader = new ReceiptLoader(&widget);
    QObject::connect(loader, &ReceiptLoader::loaded, &widget, &DropButton::setPicture);
    control.changed = [&control, &widget, shown, loader] {
        if (ReceiptFile file = receiptFileAt(control.image()); *shown != file) {
            *shown = std::move(file);
            showReceipt(qstring(control.image()), widget, *loader);
        }
        widget.setDragInside(control.dragInside());
        widget.setEnabled(control.isEnabled());
    };
    QObject::connect(&widget, &QAbstractButton::clicked, &widget, clickOf(control, std::move(beforeClick)));
}

}  // namespace kpx
