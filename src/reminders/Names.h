#pragma once

#include <QString>

namespace kpx {

// The names on the session bus. The window program knows the same ones.

/// The window program, an org.freedesktop.Application; also the name of its desktop entry and its icon.
inline const QString applicationName = QStringLiteral("example.velmora.Velmora");
inline const QString applicationPath = QStringLiteral("/example/velmora/Velmora");

/// The agent: its bus name, its interface, and its autostart entry.
inline const QString agentName = QStringLiteral("example.velmora.Velmora.Reminders");
inline const QString agentPath = QStringLiteral("/example/velmora/Velmora/Reminders");

}  // namespace kpx
