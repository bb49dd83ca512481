#include "tests/pdf/PdfReading.h"

#include <QProcess>
#include <QTemporaryDir>
#include <QXmlStreamReader>

#include <gtest/gtest.h>

#include <QFile>

namespace kpx::test {

QString askAboutPdf(const QString& program, const QStringList& options, const QByteArray& pdf) {
    const QTemporaryDir folder;
    const QString path = folder.filePath(QStringLiteral("report.pdf"));
    QFile file(path);
    EXPECT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(pdf);
    file.close();
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, QStringList(options)
                               << path
                               << (program == QLatin1String("pdftotext") ? QStringList{QStringLiteral("-")}
                                                                         : QStringList()));
    EXPECT_TRUE(process.waitForFinished(60000));
    EXPECT_EQ(process.exitCode(), 0);
    return QString::fromUtf8(process.readAll());
}

std::vector<FoundPage> wordsOfPdf(const QByteArray& pdf) {
    std::vector<FoundPage> pages;
    QXmlStreamReader reader(askAboutPdf(QStringLiteral("pdftotext"), {QStringLiteral("-bbox")}, pdf));
    while (!reader.atEnd()) {
        if (reader.readNext() != QXmlStreamReader::StartElement) {
            continue;
        }
        const auto number = [&](const char* name) { return reader.attributes().value(QLatin1String(name)).toDouble(); };
        if (reader.name() == QLatin1String("page")) {
            pages.push_back({number("width"), number("height"), {}});
        } else if (reader.name() == QLatin1String("word")) {
            FoundWord word{{}, number("xMin"), number("yMin"), number("xMax"), number("yMax")};
            word.text = reader.readElementText();
            pages.back().words.push_back(word);
        }
    }
    EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
    return pages;
}

}  // namespace kpx::test
