// clipboard_peer TEXT: a small window of another program. It prints "ready" when it has the keys; Ctrl+C puts the text
// onto the clipboard and prints "copied"; Ctrl+V prints what lies there, as two lines: the plain text and the markup,
// each percent-encoded.

#include <QApplication>
#include <QClipboard>
#include <QKeyEvent>
#include <QMimeData>
#include <QTextStream>
#include <QUrl>
#include <QWidget>

class ClipboardPeer : public QWidget {
public:
    explicit ClipboardPeer(QString text) : m_text(std::move(text)) { setFocusPolicy(Qt::StrongFocus); }

protected:
    void focusInEvent(QFocusEvent*) override { tell(QStringLiteral("ready")); }
    void keyPressEvent(QKeyEvent* event) override {
        QClipboard& clipboard = *QGuiApplication::clipboard();
        if (event->matches(QKeySequence::Copy)) {
            clipboard.setText(m_text);
            tell(QStringLiteral("copied"));
        } else if (event->matches(QKeySequence::Paste)) {
            const QMimeData* held = clipboard.mimeData();
            tell(encoded(held ? held->text() : QString()));
            tell(encoded(held ? held->html() : QString()));
        }
    }

private:
    static QString encoded(const QString& text) { return QString::fromLatin1(QUrl::toPercentEncoding(text)); }
    static void tell(const QString& word) { QTextStream(stdout) << word << Qt::endl; }

    QString m_text;
};

int main(int argc, char** argv) {
    QApplication application(argc, argv);
    ClipboardPeer peer(QApplication::arguments().value(1));
    peer.resize(300, 200);
    peer.show();
    peer.setFocus();
    return QApplication::exec();
}
