#include "tests/pdf/ExampleReports.h"
#include "tests/pdf/PdfReading.h"
#include "ui/ReportOutput.h"
#include "ui/ports/QtPrintPreview.h"
#include "ui/views/PagesView.h"
#include "ui/views/PreviewWindow.h"

#include <gmock/gmock.h>

#include <QAction>
#include <QApplication>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QPrinter>
#include <QScreen>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <set>

namespace kpx::test {
namespace {

class PreviewWindowTest : public testing::Test {
protected:
    PreviewWindow& open(int type, std::size_t records) {
        preview.open(exampleReport(type, records));
        return *preview.windows().back();
    }
    static PagesView& pagesOf(PreviewWindow& window) { return *window.findChild<PagesView*>(); }
    static QString positionOf(PreviewWindow& window) {
        return window.findChild<QLabel*>(QStringLiteral("pagePosition"))->text();
    }
    static void press(PreviewWindow& window, Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier) {
        window.activateWindow();
        ASSERT_TRUE(QTest::qWaitForWindowActive(&window));
        QTest::keyClick(&pagesOf(window), key, modifiers);
    }

    QtPrintPreview preview;
};

TEST_F(PreviewWindowTest, SevenAtOnceAndNoneHidesAnother) {
    std::set<std::pair<int, int>> places;
    for (int type = 1; type <= 7; ++type) {
        const PreviewWindow& window = open(type, 3);
        EXPECT_TRUE(window.isVisible());
        EXPECT_TRUE(window.screen()->availableGeometry().contains(window.geometry()));
        places.emplace(window.x(), window.y());
    }
    EXPECT_EQ(preview.windows().size(), 7U);
    EXPECT_EQ(places.size(), 7U);
    EXPECT_EQ(preview.windows()[3]->windowTitle(), QStringLiteral("Patient List – Print Preview"));
}

TEST_F(PreviewWindowTest, ClosesByKeyAndIsGone) {
    PreviewWindow& first = open(4, 1);
    open(5, 1);
    press(first, Qt::Key_W, Qt::ControlModifier);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_EQ(preview.windows().size(), 1U);
    EXPECT_EQ(preview.windows()[0]->document().type, 5);
}

TEST_F(PreviewWindowTest, FitsItsWidthUntilZoomed) {
    PreviewWindow& window = open(4, 46);
    PagesView& pages = pagesOf(window);
    const double before = pages.zoom();
    EXPECT_TRUE(pages.isFittingWidth());
    EXPECT_EQ(pages.horizontalScrollBar()->maximum(), 0);
    window.resize(window.width() - 200, window.height());
    EXPECT_LT(pages.zoom(), before);

    press(window, Qt::Key_Plus, Qt::ControlModifier);
    EXPECT_FALSE(pages.isFittingWidth());
    const double larger = pages.zoom();
    window.resize(window.width() + 100, window.height());
    EXPECT_EQ(pages.zoom(), larger);
    press(window, Qt::Key_Minus, Qt::ControlModifier);
    EXPECT_LT(pages.zoom(), larger);
    press(window, Qt::Key_0, Qt::ControlModifier);
    EXPECT_TRUE(pages.isFittingWidth());
}

TEST_F(PreviewWindowTest, ZoomHasEnds) {
    PagesView& pages = pagesOf(open(4, 1));
    for (int step = 0; step < 30; ++step) {
        pages.zoomIn();
    }
    EXPECT_EQ(pages.zoom(), 4.0);
    for (int step = 0; step < 30; ++step) {
        pages.zoomOut();
    }
    EXPECT_EQ(pages.zoom(), 0.25);
}

TEST_F(PreviewWindowTest, TellsThePage) {
    PreviewWindow& window = open(3, 100);
    EXPECT_THAT(positionOf(window).toStdString(), testing::StartsWith("Page 1 of 3 "));
    press(window, Qt::Key_End);
    EXPECT_THAT(positionOf(window).toStdString(), testing::StartsWith("Page 3 of 3 "));
    press(window, Qt::Key_Home);
    EXPECT_THAT(positionOf(window).toStdString(), testing::StartsWith("Page 1 of 3 "));
}

TEST_F(PreviewWindowTest, PaperIsWhiteAndInkBlack) {
    PreviewWindow& window = open(4, 3);
    PagesView& pages = pagesOf(window);
    pages.setZoom(1);
    const QImage image = pages.viewport()->grab().toImage();
    int white = 0;
    int black = 0;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            white += image.pixelColor(x, y) == QColor(Qt::white);
            black += image.pixelColor(x, y).lightness() < 60;
        }
    }
    EXPECT_GT(white, image.width() * image.height() / 2);
    EXPECT_GT(black, 500);
    if (const QString folder = qEnvironmentVariable("PREVIEW_PICTURES"); !folder.isEmpty()) {
        pages.fitWidth();
        EXPECT_TRUE(window.grab().save(folder + QStringLiteral("/preview.png")));
    }
}

TEST_F(PreviewWindowTest, SavesAPdf) {
    const QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("list.pdf"));
    PreviewWindow& window = open(6, 2);
    ASSERT_TRUE(window.savePdf(name));
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const auto pages = wordsOfPdf(file.readAll());
    ASSERT_EQ(pages.size(), 1U);
    EXPECT_TRUE(std::ranges::any_of(pages[0].words,
                                    [](const FoundWord& word) { return word.text == QLatin1String("Lisinopril"); }));
    EXPECT_FALSE(window.savePdf(folder.filePath(QStringLiteral("nowhere/list.pdf"))));
}

TEST_F(PreviewWindowTest, AsksWhereToAndSavesThere) {
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    const QTemporaryDir folder;
    PreviewWindow& window = open(6, 2);
    QString proposed;
    QTimer::singleShot(0, &window, [&] {
        auto* dialog = window.findChild<QFileDialog*>();
        ASSERT_NE(dialog, nullptr);
        auto* name = dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"));
        proposed = name->text();
        name->setText(folder.filePath(QStringLiteral("mine")));
        QTest::keyClick(name, Qt::Key_Return);
    });
    window.findChild<QAction*>(QStringLiteral("savePdfCommand"))->trigger();
    EXPECT_EQ(proposed, QStringLiteral("Drug List.pdf"));
    EXPECT_TRUE(QFile::exists(folder.filePath(QStringLiteral("mine.pdf"))));
}

TEST_F(PreviewWindowTest, PrintsThePagesAskedFor) {
    const QTemporaryDir folder;
    QPrinter printer;
    printer.setOutputFileName(folder.filePath(QStringLiteral("printed.pdf")));
    printer.setResolution(ReportPainter::unitsPerInch);
    printer.setPageLayout(QPageLayout(QPageSize(QPageSize::Letter), QPageLayout::Landscape, QMarginsF()));
    printer.setFullPage(true);
    printer.setFromTo(2, 3);
    ASSERT_TRUE(printReportOn(printer, exampleReport(3, 100)));
    QFile file(printer.outputFileName());
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const auto pages = wordsOfPdf(file.readAll());
    ASSERT_EQ(pages.size(), 2U);
    const auto number = std::ranges::find(pages[0].words, QStringLiteral("Page:"), &FoundWord::text);
    ASSERT_NE(number, pages[0].words.end());
    EXPECT_EQ((number + 1)->text, QStringLiteral("2"));
    EXPECT_NEAR(number->left, 690, 0.2);
    EXPECT_NEAR(612 - (number->top + ReportPainter::metrics(10).ascent), 565, 0.2);
}

TEST_F(PreviewWindowTest, EveryCommandHasAKeyAndAMenuPlace) {
    PreviewWindow& window = open(4, 1);
    for (const char* name :
         {"printCommand", "savePdfCommand", "closeCommand", "zoomInCommand", "zoomOutCommand", "fitWidthCommand"}) {
        SCOPED_TRACE(name);
        const auto* command = window.findChild<QAction*>(QLatin1String(name));
        ASSERT_NE(command, nullptr);
        EXPECT_FALSE(command->shortcut().isEmpty());
        EXPECT_TRUE(command->text().contains(QLatin1Char('&')));
    }
    EXPECT_FALSE(pagesOf(window).accessibleName().isEmpty());
}

}  // namespace
}  // namespace kpx::test

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
