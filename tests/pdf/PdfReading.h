#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <vector>

namespace kpx::test {

/// A word as an independent reader finds it, in points; the origin is the upper left corner.
struct FoundWord {
    QString text;
    double left = 0;
    double top = 0;
    double right = 0;
    double bottom = 0;
};

struct FoundPage {
    double width = 0;
    double height = 0;
    std::vector<FoundWord> words;
};

/// What pdftotext finds, page by page.
std::vector<FoundPage> wordsOfPdf(const QByteArray& pdf);

/// What another of poppler's programs prints about the PDF, its complaints included.
QString askAboutPdf(const QString& program, const QStringList& options, const QByteArray& pdf);

}  // namespace kpx::test
