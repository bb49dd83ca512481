#pragma once

namespace kpx {

// The names by which the window program and the agent know each other on the session bus.

/// The window program, an org.freedesktop.Application; also the name of its desktop entry and its icon.
inline constexpr char applicationName[] = "example.velmora.Velmora";
inline constexpr char applicationPath[] = "/example/velmora/Velmora";

/// The window program's actions. Both take one map with the reminder's "identifier" (a text), "title" and "text"
/// (the bytes of UTF-8). The first is a click. The second asks for a window with the reminder in it, which stands
/// when the call is answered: what is left to a desktop without a notification server.
inline constexpr char clickedAction[] = "reminder";
inline constexpr char showAction[] = "show-reminder";

/// The agent: its bus name, its interface, and its autostart entry.
inline constexpr char agentName[] = "example.velmora.Velmora.Reminders";
inline constexpr char agentPath[] = "/example/velmora/Velmora/Reminders";

}  // namespace kpx
