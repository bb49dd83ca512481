// drag_source X Y ACTIONS ADDRESS…: a small window at that place of the screen, out of which the addresses
// can be dragged; ACTIONS is any of "copy,move,link". Prints "ready" when it is on the screen, then, after
// each drag, how the drag ended: "copy", "move", "link" or "none". While no button is down it prints "at X Y"
// for the mouse inside it, as a Wayland desktop chooses the place.

#include <QApplication>
#include <QDrag>
#include <QMimeData>
#include <QMouseEvent>
#include <QTextStream>
#include <QUrl>
#include <QWidget>

class DragSource : public QWidget {
public:
    DragSource(Qt::DropActions actions, QList<QUrl> offered) : m_actions(actions), m_addresses(std::move(offered)) {
        setWindowFlags(Qt::FramelessWindowHint);
        setMouseTracking(true);
    }

protected:
    void paintEvent(QPaintEvent*) override {
        if (!m_painted) {
            m_painted = true;
            tell(QStringLiteral("ready"));
        }
    }
    void enterEvent(QEnterEvent* event) override {
        tell(QStringLiteral("at %1 %2").arg(event->position().x()).arg(event->position().y()));
    }
    void mouseMoveEvent(QMouseEvent* event) override {
        if (!(event->buttons() & Qt::LeftButton)) {
            tell(QStringLiteral("at %1 %2").arg(event->pos().x()).arg(event->pos().y()));
            return;
        }
        auto* addresses = new QMimeData;
        addresses->setUrls(m_addresses);
        auto* drag = new QDrag(this);
        drag->setMimeData(addresses);
        const Qt::DropAction end = drag->exec(m_actions);
        tell(end == Qt::LinkAction   ? QStringLiteral("link")
             : end == Qt::CopyAction ? QStringLiteral("copy")
             : end == Qt::MoveAction ? QStringLiteral("move")
                                     : QStringLiteral("none"));
    }

private:
    static void tell(const QString& word) { QTextStream(stdout) << word << Qt::endl; }

    Qt::DropActions m_actions;
    QList<QUrl> m_addresses;
    bool m_painted = false;
};

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    const QStringList arguments = QApplication::arguments();
    if (arguments.size() < 5) {
        return 2;
    }
    Qt::DropActions actions;
    actions.setFlag(Qt::CopyAction, arguments[3].contains(QStringLiteral("copy")));
    actions.setFlag(Qt::MoveAction, arguments[3].contains(QStringLiteral("move")));
    actions.setFlag(Qt::LinkAction, arguments[3].contains(QStringLiteral("link")));
    QList<QUrl> addresses;
    for (const QString& address : arguments.mid(4)) {
        addresses << QUrl(address);
    }
    DragSource source(actions, addresses);
    source.setGeometry(arguments[1].toInt(), arguments[2].toInt(), 480, 480);
    source.show();
    return QApplication::exec();
}
