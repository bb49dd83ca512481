#pragma once

#include "ui/Application.h"

#include <QString>

#include <memory>

namespace kpx::test {

/// Leads through the program: starts it on a household, acts as its user would, and takes a picture of
/// what is on the screen at each stop. A step that cannot be done ends the tour with an error.
class Guide {
public:
    /// Pictures go to the folder, their names ending in the suffix.
    Guide(QString folder, QString suffix);
    ~Guide();

    /// Starts the program on the household in the data folder, without its splash window unless wanted.
    void start(bool withSplash = false);
    /// Closes the main window, as the user does at the end.
    void close();

    /// The main window and all that hangs from it, as it stands on the screen.
    void picture(const QString& name);
    /// One window alone.
    void pictureOf(QWidget& window, const QString& name);
    /// What is on the screen, other programs' windows too; all of it, or an area in pixels of the screen.
    void pictureOfScreen(const QString& name, const QRect& area = {});
    /// The path of a file of the tour.
    QString file(const QString& name, const QString& ending) const;

    void selectTab(int index);
    void click(const char* button);
    void choose(const char* popUp, const QString& title);
    void type(const char* field, const QString& text);
    void pressKey(Qt::Key key);
    void answerAlert(int button);
    void doubleClickRow(const char* table, int row);
    void setSize(int width, int height);
    /// For what is drawn in its own time, such as the pages of a document.
    void wait(int milliseconds);

    Application& program() { return *m_program; }

    /// Ends the tour with an error when the condition does not hold.
    void require(bool condition, const QString& step);

private:
    template <class Widget>
    Widget& find(const char* name);

    QString m_folder;
    QString m_suffix;
    std::unique_ptr<Application> m_program;
};

}  // namespace kpx::test
