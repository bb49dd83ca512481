#pragma once

#include <QByteArray>
#include <QList>
#include <QTemporaryDir>
#include <QUrl>

namespace kpx::test {

/// Stands before the desktop's opener on the search path: notes what it is to open and ends with a status.
class FakeOpener {
public:
    FakeOpener();
    ~FakeOpener();

    QList<QUrl> opened() const;
    void forget();
    void setStatus(int status);

private:
    QTemporaryDir m_folder;
    QByteArray m_searchPath;
};

}  // namespace kpx::test
