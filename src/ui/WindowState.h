#pragma once

namespace kpx {

class MainWindow;

// What the window looked like last: its size and place, and the columns that the user has set. Kept in
// $XDG_STATE_HOME/Velmora, apart from the preferences; what is missing or damaged there is as if it had never been.

void restoreWindowState(MainWindow& window);
void saveWindowState(MainWindow& window);

}  // namespace kpx
