#include "tests/pdf/ExampleReports.h"
#include "tests/pdf/PdfReading.h"
#include "ui/ports/QtPrintPreview.h"
#include "ui/preview/PreviewWindow.h"

#include <gmock/gmock.h>

#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QFile>
#include <QLineEdit>
#include <QMessageBox>
#include <QPrintDialog>
#include <QProcess>
#include <QRadioButton>
#include <QRegularExpression>
#include <QSpinBox>
#include <QTest>
#include <QTimer>

// Through the dialog and a real print server into a file: each page asked for comes out once, whoever picks it.

namespace kpx::test {
namespace {

class PrintServer : public testing::Test {
protected:
    void SetUp() override { ASSERT_FALSE(m_printed.fileName().isEmpty()) << "start with-print-server.sh"; }

    template <typename Widget>
    static Widget* in(QPrintDialog& dialog, const char* name) {
        return dialog.findChild<Widget*>(QLatin1String(name));
    }

    /// What comes out when a report of five pages is printed with the dialog set so; the numbers in the pages' headers.
    QStringList printedPages(const std::function<void(QPrintDialog&)>& set) {
        QFile::remove(m_printed.fileName());
        preview.open(exampleReport(3, 200));
        PreviewWindow& window = *preview.windows().back();
        QTest::qWait(0);
        QTimer::singleShot(0, &window, [&] {
            auto* dialog = window.findChild<QPrintDialog*>();
            ASSERT_NE(dialog, nullptr);
            set(*dialog);
            QTimer::singleShot(0, &window, [] {
                if (auto* complaint = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                    ADD_FAILURE() << complaint->text().toStdString();
                    complaint->close();
                    static_cast<QDialog*>(QApplication::activeModalWidget())->reject();
                }
            });
            static_cast<QDialog*>(dialog)->accept();
        });
        window.findChild<QAction*>(QStringLiteral("printCommand"))->trigger();
        window.close();
        return QTest::qWaitFor(isDone, 60000) ? pageNumbers() : QStringList("never done");
    }

    static bool isDone() {
        QProcess jobs;
        jobs.start(QStringLiteral("lpstat"), {QStringLiteral("-o")});
        return jobs.waitForFinished() && jobs.readAllStandardOutput().isEmpty();
    }

    QStringList pageNumbers() {
        if (!m_printed.open(QIODevice::ReadOnly)) {
            return {};
        }
        static const QRegularExpression numberInHeader(QStringLiteral("Page:\\s*(\\d+)"));
        QStringList numbers;
        QStringList pages = askAboutPdf(QStringLiteral("pdftotext"), {}, m_printed.readAll()).split(QLatin1Char('\f'));
        m_printed.close();
        pages.removeLast();  // what follows the last page
        for (const QString& page : pages) {
            const QRegularExpressionMatch match = numberInHeader.match(page);
            numbers.append(match.hasMatch() ? match.captured(1) : page.trimmed() + QStringLiteral("nothing"));
        }
        return numbers;
    }

    QtPrintPreview preview;
    QFile m_printed{qEnvironmentVariable("PRINTED")};
};

void list(QPrintDialog& dialog, const char* pages) {
    dialog.findChild<QRadioButton*>(QStringLiteral("pagesRadioButton"))->setChecked(true);
    dialog.findChild<QLineEdit*>(QStringLiteral("pagesLineEdit"))->setText(QLatin1String(pages));
}

TEST_F(PrintServer, EachPageAskedForComesOutOnce) {
    EXPECT_EQ(printedPages([](QPrintDialog&) {}), (QStringList{"1", "2", "3", "4", "5"}));
    EXPECT_EQ(printedPages([](QPrintDialog& dialog) { list(dialog, "1-2,5"); }), (QStringList{"1", "2", "5"}));
    EXPECT_EQ(printedPages([](QPrintDialog& dialog) {
                  in<QRadioButton>(dialog, "printRange")->setChecked(true);
                  in<QSpinBox>(dialog, "from")->setValue(2);
                  in<QSpinBox>(dialog, "to")->setValue(3);
              }),
              (QStringList{"2", "3"}));
    EXPECT_EQ(printedPages([](QPrintDialog& dialog) { in<QComboBox>(dialog, "pageSetCombo")->setCurrentIndex(2); }),
              (QStringList{"2", "4"}));
}

TEST_F(PrintServer, ReversesAndCopiesOnce) {
    EXPECT_EQ(printedPages([](QPrintDialog& dialog) { in<QCheckBox>(dialog, "reverse")->setChecked(true); }),
              (QStringList{"5", "4", "3", "2", "1"}));
    EXPECT_EQ(printedPages([](QPrintDialog& dialog) {
                  list(dialog, "1-2,5");
                  in<QCheckBox>(dialog, "reverse")->setChecked(true);
                  in<QSpinBox>(dialog, "copies")->setValue(2);
                  in<QCheckBox>(dialog, "collate")->setChecked(true);
              }),
              (QStringList{"5", "2", "1", "5", "2", "1"}));
    EXPECT_EQ(printedPages([](QPrintDialog& dialog) {
                  list(dialog, "1-2");
                  in<QSpinBox>(dialog, "copies")->setValue(2);
                  in<QCheckBox>(dialog, "collate")->setChecked(false);
              }),
              (QStringList{"1", "1", "2", "2"}));
}

TEST_F(PrintServer, OnBothSidesACopyBeginsOnASheetOfItsOwn) {
    EXPECT_EQ(printedPages([](QPrintDialog& dialog) {
                  list(dialog, "3-5");
                  in<QRadioButton>(dialog, "duplexLong")->setChecked(true);
                  in<QSpinBox>(dialog, "copies")->setValue(2);
                  in<QCheckBox>(dialog, "collate")->setChecked(true);
              }),
              (QStringList{"3", "4", "5", "nothing", "3", "4", "5", "nothing"}));
}

}  // namespace
}  // namespace kpx::test

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
