#pragma once

#include "app/Ports.h"

#include <QVariantList>

#include <optional>

namespace kpx {

/// The reminder that the agent hands over, out of an action's parameters as they came over the bus, from whomever:
/// one map of the bus's type a{sv} with these three entries; others are not looked at. None for anything else.
///
/// | entry        | type |                                                                    |
/// |--------------|------|--------------------------------------------------------------------|
/// | `identifier` | s    |                                                                    |
/// | `title`      | ay   | bytes, for a text on the bus cannot hold everything a name may     |
/// | `text`       | ay   | likewise                                                           |
std::optional<UserNotification> handedOverReminder(const QVariantList& parameters);

}  // namespace kpx
