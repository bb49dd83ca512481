#pragma once

#include <QStringList>
#include <QWidget>

namespace kpx::test {

/// What is wrong with the texts of a window as it stands, its visible controls and its menus: a text that is cut, a
/// control over another or beyond what it lies in, a mnemonic that two of them have. A line each; none is as it should
/// be. What the user's data say is no concern of it: names may be longer than any field.
QStringList faultsOf(const QWidget& window);

/// Which words of the program do not fit into the pop-up that offers them. In the smallest window they end in an
/// ellipsis, as names do, and a tool tip tells them whole.
QStringList wordsWithoutRoom(const QWidget& window);

/// The program's own texts in it: of labels, buttons, tabs, menus, headings, tool tips, and for assistive technology.
QStringList textsOf(const QWidget& window);

}  // namespace kpx::test
