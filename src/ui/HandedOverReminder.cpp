#include "ui/HandedOverReminder.h"

#include "reminders/Schedule.h"

#include <QDBusArgument>

namespace kpx {

namespace {

/// Null unless it is a map of that very type: reading another one out of an argument ends the program.
std::optional<QVariantMap> mapFrom(const QVariant& parameter) {
    if (parameter.metaType() == QMetaType::fromType<QVariantMap>()) {
        return parameter.toMap();
    }
    if (parameter.metaType() != QMetaType::fromType<QDBusArgument>()) {
        return std::nullopt;
    }
    const auto argument = parameter.value<QDBusArgument>();
    return argument.currentSignature() == QStringLiteral("a{sv}") ? std::optional(qdbus_cast<QVariantMap>(argument))
                                                                  : std::nullopt;
}

}  // namespace

std::optional<UserNotification> handedOverReminder(const QVariantList& parameters) {
    const auto map = parameters.size() == 1 ? mapFrom(parameters.constFirst()) : std::nullopt;
    if (!map) {
        return std::nullopt;
    }
    const QVariant identifier = map->value(QStringLiteral("identifier"));
    const QVariant title = map->value(QStringLiteral("title"));
    const QVariant text = map->value(QStringLiteral("text"));
    if (identifier.typeId() != QMetaType::QString || title.typeId() != QMetaType::QByteArray ||
        text.typeId() != QMetaType::QByteArray) {
        return std::nullopt;
    }
    UserNotification reminder;
    reminder.identifier = identifier.toString().toStdString();
    reminder.title = title.toByteArray().toStdString();
    reminder.informativeText = text.toByteArray().toStdString();
    reminder.isStanding = reminder.identifier == standingIdentifier;
    return reminder;
}

}  // namespace kpx
