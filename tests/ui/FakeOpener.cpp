#include "tests/ui/FakeOpener.h"

#include <QFile>

namespace kpx::test {

namespace {

void write(const QString& path, const QByteArray& text) {
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size()) {
        qFatal("cannot write %s", qPrintable(path));
    }
}

}  // namespace

FakeOpener::FakeOpener() : m_searchPath(qgetenv("PATH")) {
    const QString program = m_folder.filePath(QStringLiteral("xdg-open"));
    write(program,
          "#!/bin/sh\nfolder=$(dirname \"$0\")\nprintf '%s\\n' \"$1\" >>\"$folder/opened\"\n"
          "exit \"$(cat \"$folder/status\")\"\n");
    QFile::setPermissions(program, QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    setStatus(0);
    qputenv("PATH", m_folder.path().toLocal8Bit() + ':' + m_searchPath);
}

FakeOpener::~FakeOpener() { qputenv("PATH", m_searchPath); }

QList<QUrl> FakeOpener::opened() const {
    QList<QUrl> addresses;
    QFile file(m_folder.filePath(QStringLiteral("opened")));
    if (file.open(QIODevice::ReadOnly)) {
        for (const QByteArray& line : file.readAll().trimmed().split('\n')) {
            addresses << QUrl::fromEncoded(line);
        }
    }
    return addresses;
}

void FakeOpener::forget() { QFile::remove(m_folder.filePath(QStringLiteral("opened"))); }

void FakeOpener::setStatus(int status) {
    write(m_folder.filePath(QStringLiteral("status")), QByteArray::number(status));
}

}  // namespace kpx::test
