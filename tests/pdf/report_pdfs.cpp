#include "tests/pdf/ExampleReports.h"
#include "ui/ReportOutput.h"

#include <QFile>
#include <QGuiApplication>
#include <QTextStream>

// Writes the eight reports into a folder, for a careful eye.

int main(int argc, char** argv) {
    const QGuiApplication application(argc, argv);
    if (argc != 2) {
        QTextStream(stderr) << "usage: report_pdfs FOLDER\n";
        return 2;
    }
    const QPageLayout layout(QPageSize(QPageSize::Letter), QPageLayout::Landscape, QMarginsF());
    for (const int type : {1, 2, 3, 4, 5, 6, 7, 99}) {
        QFile file(QStringLiteral("%1/report-%2.pdf").arg(QString::fromLocal8Bit(argv[1])).arg(type));
        const QByteArray pdf = kpx::reportPdf(kpx::test::exampleReport(type, 46), layout, QStringLiteral("en-US"));
        if (!file.open(QIODevice::WriteOnly) || file.write(pdf) != pdf.size()) {
            return 1;
        }
    }
    return 0;
}
