#include "tests/pdf/ExampleReports.h"
#include "tests/pdf/PdfReading.h"
#include "ui/Conversions.h"
#include "ui/ReportOutput.h"
#include "ui/ports/QtPrintPreview.h"
#include "ui/preview/PagesToPrint.h"
#include "ui/preview/PagesView.h"
#include "ui/preview/PreviewWindow.h"

#include <gmock/gmock.h>

#include <QAbstractButton>
#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QFile>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMenuBar>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPageRanges>
#include <QPrintDialog>
#include <QPrinter>
#include <QScreen>
#include <QScrollBar>
#include <QTabBar>
#include <QTabWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <algorithm>
#include <set>

namespace kpx::test {
namespace {

class PreviewWindowTest : public testing::Test {
protected:
    /// As the last document of an action.
    PreviewWindow& open(int type, std::size_t records) {
        preview.open(exampleReport(type, records));
        PreviewWindow& window = *preview.windows().back();
        QTest::qWait(0);
        return window;
    }
    static PagesView& pagesOf(PreviewWindow& window) { return window.pages(); }
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

TEST_F(PreviewWindowTest, TheDocumentsOfOneActionShareAWindow) {
    for (int type = 1; type <= 7; ++type) {
        preview.open(exampleReport(type, 3));
    }
    ASSERT_EQ(preview.windows().size(), 1U);
    PreviewWindow& window = *preview.windows()[0];
    EXPECT_TRUE(window.isVisible());
    EXPECT_EQ(window.allPages().size(), 7U);
    EXPECT_EQ(window.document().type, 1);
    auto* tabs = window.findChild<QTabWidget*>();
    EXPECT_EQ(tabs->tabText(3), QStringLiteral("Patient List"));
    for (int index = 0; index < tabs->count(); ++index) {
        // Enough of a title to tell it from the others.
        EXPECT_GT(tabs->tabBar()->tabRect(index).width(), 60) << index;
    }
    tabs->setCurrentIndex(3);
    EXPECT_EQ(window.windowTitle(), QStringLiteral("Patient List – Print Preview"));
    // Each has a view of its own.
    window.pages().setZoom(2);
    EXPECT_NE(window.allPages()[0]->zoom(), 2);
}

TEST_F(PreviewWindowTest, FurtherActionsHaveWindowsOfTheirOwnAndNoneHidesAnother) {
    std::set<std::pair<int, int>> places;
    for (int type = 1; type <= 3; ++type) {
        const PreviewWindow& window = open(type, 3);
        EXPECT_TRUE(window.screen()->availableGeometry().contains(window.geometry()));
        places.emplace(window.x(), window.y());
    }
    EXPECT_EQ(preview.windows().size(), 3U);
    EXPECT_EQ(places.size(), 3U);
}

TEST_F(PreviewWindowTest, ClosesByKeyAndIsGone) {
    bool last = false;
    preview.lastClosed = [&] { last = true; };
    preview.open(exampleReport(4, 1));
    PreviewWindow& first = open(5, 1);
    PreviewWindow& second = open(6, 1);
    press(first, Qt::Key_W, Qt::ControlModifier);
    EXPECT_TRUE(first.isVisible());
    EXPECT_EQ(first.allPages().size(), 1U);
    EXPECT_EQ(first.document().type, 5);
    press(first, Qt::Key_W, Qt::ControlModifier);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    ASSERT_EQ(preview.windows().size(), 1U);
    EXPECT_EQ(preview.windows()[0]->document().type, 6);
    EXPECT_FALSE(last);
    press(second, Qt::Key_Escape);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    EXPECT_TRUE(last);
}

TEST_F(PreviewWindowTest, ClosesWhatIsKeptOnly) {
    const QTemporaryDir folder;
    preview.open(exampleReport(4, 1));
    PreviewWindow& window = open(5, 1);
    ASSERT_TRUE(window.savePdf(folder.filePath(QStringLiteral("one.pdf"))));
    EXPECT_FALSE(window.isAllKept());
    preview.closeKept();
    EXPECT_TRUE(window.isVisible());
    window.findChild<QTabWidget*>()->setCurrentIndex(1);
    ASSERT_TRUE(window.savePdf(folder.filePath(QStringLiteral("two.pdf"))));
    EXPECT_TRUE(window.isAllKept());
    preview.closeKept();
    EXPECT_FALSE(window.isVisible());
}

TEST_F(PreviewWindowTest, SavesAllIntoAFolderAndAsksBeforeItReplaces) {
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    const QTemporaryDir folder;
    preview.open(exampleReport(6, 2));
    preview.open(exampleReport(6, 1));
    PreviewWindow& window = open(4, 1);
    EXPECT_EQ(window.proposedNames(), (QStringList{"Drug List.pdf", "Drug List 2.pdf", "Patient List.pdf"}));
    QFile there(folder.filePath(QStringLiteral("Drug List 2.pdf")));
    ASSERT_TRUE(there.open(QIODevice::WriteOnly));
    there.write("mine");
    there.close();
    const auto saveAll = [&](QMessageBox::ButtonRole answer) {
        QString asked;
        QTimer::singleShot(0, &window, [&] {
            auto* dialog = window.findChild<QFileDialog*>();
            ASSERT_NE(dialog, nullptr);
            dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(folder.path());
            QTimer::singleShot(0, &window, [&] {
                auto* question = window.findChild<QMessageBox*>();
                ASSERT_NE(question, nullptr);
                asked = question->text();
                for (QAbstractButton* button : question->buttons()) {
                    if (question->buttonRole(button) == answer) {
                        button->click();
                        return;
                    }
                }
            });
            static_cast<QDialog*>(dialog)->accept();
        });
        window.findChild<QAction*>(QStringLiteral("saveAllCommand"))->trigger();
        return asked;
    };
    EXPECT_TRUE(saveAll(QMessageBox::RejectRole).contains(QStringLiteral("Drug List 2.pdf")));
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{"Drug List 2.pdf"});
    EXPECT_EQ(there.size(), 4);
    EXPECT_FALSE(window.isAllKept());
    saveAll(QMessageBox::DestructiveRole);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files).size(), 3);
    EXPECT_GT(there.size(), 1000);
    EXPECT_TRUE(window.isAllKept());
}

TEST_F(PreviewWindowTest, SaysWhichOfAllCouldNotBeSaved) {
    QApplication::setAttribute(Qt::AA_DontUseNativeDialogs);
    const QTemporaryDir folder;
    preview.open(exampleReport(6, 2));
    PreviewWindow& window = open(4, 1);
    ASSERT_TRUE(QDir(folder.path()).mkdir(QStringLiteral("Drug List.pdf")));  // where no file can be put
    QString told;
    Qt::TextFormat format = Qt::AutoText;
    QTimer answers;  // to each dialog once it is there
    QObject::connect(&answers, &QTimer::timeout, &window, [&] {
        if (auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget())) {
            dialog->findChild<QLineEdit*>(QStringLiteral("fileNameEdit"))->setText(folder.path());
            static_cast<QDialog*>(dialog)->accept();
            return;
        }
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box) {
            return;
        }
        for (QAbstractButton* button : box->buttons()) {
            if (box->buttonRole(button) == QMessageBox::DestructiveRole) {
                button->click();
                return;
            }
        }
        told = box->text();
        format = box->textFormat();
        box->accept();
    });
    answers.start(5);
    window.findChild<QAction*>(QStringLiteral("saveAllCommand"))->trigger();
    EXPECT_TRUE(told.contains(QStringLiteral("Drug List.pdf")));
    EXPECT_FALSE(told.contains(QStringLiteral("Patient List.pdf")));
    EXPECT_EQ(format, Qt::PlainText);
    EXPECT_EQ(QDir(folder.path()).entryList(QDir::Files), QStringList{"Patient List.pdf"});
    EXPECT_FALSE(window.isAllKept());
}

TEST_F(PreviewWindowTest, PrintsAllIntoOneFile) {
    const QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("all.pdf"));
    preview.open(exampleReport(6, 46));
    PreviewWindow& window = open(4, 1);
    QTimer::singleShot(0, &window, [&] {
        auto* dialog = window.findChild<QPrintDialog*>();
        ASSERT_NE(dialog, nullptr);
        // Pages are counted within a document, so a range of them would say nothing.
        EXPECT_FALSE(dialog->testOption(QAbstractPrintDialog::PrintPageRange));
        dialog->printer()->setOutputFormat(QPrinter::PdfFormat);
        dialog->printer()->setOutputFileName(name);
        dialog->done(QDialog::Accepted);
    });
    window.findChild<QAction*>(QStringLiteral("printAllCommand"))->trigger();
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    EXPECT_EQ(wordsOfPdf(file.readAll()).size(), 3U);
    EXPECT_TRUE(window.isAllKept());
}

TEST_F(PreviewWindowTest, SavesTheLanguageOfTheTexts) {
    const QTemporaryDir folder;
    preview.language = QStringLiteral("sv");
    ASSERT_TRUE(open(4, 1).savePdf(folder.filePath(QStringLiteral("report.pdf"))));
    QFile saved(folder.filePath(QStringLiteral("report.pdf")));
    ASSERT_TRUE(saved.open(QIODevice::ReadOnly));
    EXPECT_TRUE(saved.readAll().contains("/Lang (sv)"));
}

TEST_F(PreviewWindowTest, FindsWordsAndCopiesThem) {
    PreviewWindow& window = open(6, 100);
    PagesView& pages = pagesOf(window);
    press(window, Qt::Key_F, Qt::ControlModifier);
    auto* words = window.findChild<QLineEdit*>(QStringLiteral("wordsToFind"));
    ASSERT_NE(words, nullptr);
    EXPECT_TRUE(words->hasFocus());
    QTest::keyClicks(words, QStringLiteral("lisinopril 97"));
    EXPECT_EQ(pages.selectedText(), QStringLiteral("Lisinopril 97"));
    EXPECT_EQ(pages.text().count(QStringLiteral("Lisinopril")), 25);
    const QRect place = pages.seenPlace(pages.anchor(), pages.cursor());
    EXPECT_TRUE(pages.viewport()->rect().contains(place));
    EXPECT_GT(place.width(), 20);
    // The whole line of the paper: its columns with a tab between them.
    EXPECT_TRUE(pages.text().contains(QStringLiteral("\nLisinopril 97\twhite, oval, with a groove\n")));
    words->clear();
    pages.select(0, 0);
    QTest::keyClicks(words, QStringLiteral("Lisinopril"));
    const int first = pages.anchor();
    QTest::keyClick(words, Qt::Key_Return);
    EXPECT_GT(pages.anchor(), first);
    QTest::keyClick(words, Qt::Key_Return, Qt::ShiftModifier);
    EXPECT_EQ(pages.anchor(), first);
    QTest::keyClicks(words, QStringLiteral("x"));
    EXPECT_EQ(pages.selectedText(), QStringLiteral("Lisinopril"));
    QTest::keyClick(words, Qt::Key_Escape);
    EXPECT_TRUE(window.isVisible());
    EXPECT_FALSE(words->isVisible());
    press(window, Qt::Key_C, Qt::ControlModifier);
    EXPECT_EQ(QGuiApplication::clipboard()->text(), QStringLiteral("Lisinopril"));
}

TEST_F(PreviewWindowTest, StaysAtAMatchWhileItIsTypedOn) {
    PreviewWindow& window = open(6, 100);
    PagesView& pages = pagesOf(window);
    press(window, Qt::Key_F3);
    auto* words = window.findChild<QLineEdit*>(QStringLiteral("wordsToFind"));
    ASSERT_TRUE(words->isVisible());  // nothing to find yet, so it is asked for
    QTest::keyClicks(words, QStringLiteral("Lisinop"));
    const auto first = static_cast<int>(pages.text().indexOf(QStringLiteral("Lisinopril")));
    EXPECT_EQ(pages.anchor(), first);
    QTest::keyClick(words, Qt::Key_Return);
    const int second = pages.anchor();
    EXPECT_GT(second, first);
    QTest::keyClicks(words, QStringLiteral("ril"));
    EXPECT_EQ(pages.anchor(), second);
    EXPECT_EQ(pages.selectedText(), QStringLiteral("Lisinopril"));
}

TEST_F(PreviewWindowTest, SelectsWhatIsWrittenFromTheRight) {
    struct Row {
        const char* what;
        std::string text;
        double room;
    };
    const QString hebrew = QString::fromUtf8("\u05D0\u05D1\u05D2\u05D3");
    const std::string mixed = utf8(hebrew + QStringLiteral(" 12 mg ") + hebrew);
    for (const Row& row : std::vector<Row>{
             {"as it comes", mixed, 0}, {"narrowed", mixed, 40}, {"cut off", mixed + std::string(300, 'x'), 90}}) {
        SCOPED_TRACE(row.what);
        Document document{4, "Places", {Page()}};
        document.pages[0].operations.emplace_back(DrawText{row.text, "LucidaGrande", 8, false, 100, 500, row.room});
        preview.open(document);
        PreviewWindow& window = *preview.windows().back();
        QTest::qWait(0);
        PagesView& pages = window.pages();
        const QRect whole = pages.seenPlace(0, static_cast<int>(pages.text().size()));
        // The first letters of a line that is read from the right are its rightmost.
        const QRect first = pages.seenPlace(0, 2);
        EXPECT_GE(first.right(), whole.right() - 2);
        EXPECT_LT(first.width(), whole.width() / 2);
        // Numbers and Latin words among them are read from the left.
        if (row.room == 0) {
            EXPECT_LT(pages.seenPlace(5, 6).left(), pages.seenPlace(6, 7).left());
            EXPECT_LT(pages.seenPlace(8, 9).left(), pages.seenPlace(9, 10).left());
        }
        pages.setZoom(4);
        for (const int position : {0, 1, 2, 3}) {
            const QRect place = pages.seenPlace(position, position + 1);
            EXPECT_EQ(pages.positionAt({place.right() - 2, place.center().y()}), position);
            EXPECT_EQ(pages.positionAt({place.left() + 1, place.center().y()}), position + 1);
        }
    }
}

TEST_F(PreviewWindowTest, SelectsTheLettersThatAreSeenOfALongText) {
    Document document{4, "Places", {Page()}};
    document.pages[0].operations.emplace_back(DrawText{std::string(400, 'a'), "LucidaGrande", 8, false, 100, 500, 100});
    preview.open(document);
    PagesView& pages = preview.windows().back()->pages();
    QTest::qWait(0);
    const int whole = pages.seenPlace(0, 400).width();
    // At the narrowest some fifty letters are seen.
    EXPECT_GT(pages.seenPlace(0, 25).width(), whole * 0.4);
    EXPECT_LT(pages.seenPlace(0, 25).width(), whole * 0.6);
    EXPECT_LE(pages.seenPlace(0, 300).right(), pages.seenPlace(0, 400).right());
}

TEST_F(PreviewWindowTest, SelectsWithTheMouse) {
    PreviewWindow& window = open(6, 3);
    PagesView& pages = pagesOf(window);
    const auto place = [&](const char* words) {
        const auto at = static_cast<int>(pages.text().indexOf(QLatin1String(words)));
        return pages.seenPlace(at, at + static_cast<int>(qstrlen(words)));
    };
    const QRect name = place("Lisinopril 1");
    QTest::mousePress(pages.viewport(), Qt::LeftButton, {}, {name.left() - 3, name.center().y()});
    QTest::mouseMove(pages.viewport(), {name.right() + 3, name.center().y()});
    QMouseEvent move(QEvent::MouseMove, QPointF(name.right() + 3, name.center().y()),
                     pages.viewport()->mapToGlobal(QPointF(name.right() + 3, name.center().y())), Qt::NoButton,
                     Qt::LeftButton, {});
    QCoreApplication::sendEvent(pages.viewport(), &move);
    EXPECT_EQ(pages.selectedText(), QStringLiteral("Lisinopril 1"));
    QTest::mouseDClick(pages.viewport(), Qt::LeftButton, {}, place("groove").center());
    EXPECT_EQ(pages.selectedText(), QStringLiteral("groove"));
    press(window, Qt::Key_A, Qt::ControlModifier);
    EXPECT_EQ(pages.selectedText(), pages.text());
}

TEST_F(PreviewWindowTest, IsATextToThoseWhoHaveItReadToThem) {
    PreviewWindow& window = open(6, 2);
    QAccessibleInterface* pages = QAccessible::queryAccessibleInterface(&pagesOf(window));
    ASSERT_NE(pages, nullptr);
    QAccessibleTextInterface* text = pages->textInterface();
    ASSERT_NE(text, nullptr);
    EXPECT_EQ(text->characterCount(), pagesOf(window).text().size());
    int start = 0;
    int end = 0;
    const QString line = text->textAtOffset(static_cast<int>(pagesOf(window).text().indexOf(QLatin1String("oval"))),
                                            QAccessible::LineBoundary, &start, &end);
    EXPECT_EQ(line.trimmed(), QStringLiteral("Amoxicillin 500 mg 0\twhite, oval, with a groove"));
    EXPECT_FALSE(text->characterRect(start).isEmpty());
    EXPECT_EQ(text->offsetAtPoint(text->characterRect(start + 2).center()) - start, 2);
    text->setSelection(0, start, start + 4);
    EXPECT_EQ(pagesOf(window).selectedText(), QStringLiteral("Amox"));
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

TEST_F(PreviewWindowTest, APrintedPdfSaysTheLanguageToo) {
    const QTemporaryDir folder;
    const QString name = folder.filePath(QStringLiteral("printed.pdf"));
    preview.language = QStringLiteral("sv");
    PreviewWindow& window = open(4, 1);
    QTimer::singleShot(0, &window, [&] {
        auto* dialog = window.findChild<QPrintDialog*>();
        ASSERT_NE(dialog, nullptr);
        dialog->printer()->setOutputFormat(QPrinter::PdfFormat);
        dialog->printer()->setOutputFileName(name);
        dialog->done(QDialog::Accepted);
    });
    window.findChild<QAction*>(QStringLiteral("printCommand"))->trigger();
    QFile file(name);
    ASSERT_TRUE(file.open(QIODevice::ReadOnly));
    const QByteArray pdf = file.readAll();
    EXPECT_TRUE(pdf.contains("/Lang (sv)"));
    EXPECT_EQ(wordsOfPdf(pdf).size(), 1U);
    EXPECT_TRUE(window.isAllKept());
}

TEST_F(PreviewWindowTest, PrintsRangesInTheOrderAskedFor) {
    struct Row {
        const char* ranges;
        QPrinter::PageOrder order;
        int copies;
        QStringList numbers;
    };
    const std::vector<Row> rows = {{"1-2,5", QPrinter::FirstPageFirst, 1, {"1", "2", "5"}},
                                   {"4-9", QPrinter::FirstPageFirst, 1, {"4", "5"}},
                                   {"1-2,5", QPrinter::LastPageFirst, 1, {"5", "2", "1"}},
                                   {"", QPrinter::LastPageFirst, 1, {"5", "4", "3", "2", "1"}},
                                   {"2-3", QPrinter::FirstPageFirst, 2, {"2", "3", "2", "3"}}};
    for (const Row& row : rows) {
        SCOPED_TRACE(row.ranges);
        const QTemporaryDir folder;
        QPrinter printer;
        printer.setOutputFileName(folder.filePath(QStringLiteral("printed.pdf")));
        printer.setResolution(ReportPainter::unitsPerInch);
        printer.setPageLayout(QPageLayout(QPageSize(QPageSize::A5), QPageLayout::Portrait, QMarginsF()));
        printer.setFullPage(true);
        printer.setPageRanges(QPageRanges::fromString(QLatin1String(row.ranges)));
        printer.setPageOrder(row.order);
        printer.setCopyCount(row.copies);
        ASSERT_TRUE(printReportOn(printer, exampleReport(3, 200)));
        QFile file(printer.outputFileName());
        ASSERT_TRUE(file.open(QIODevice::ReadOnly));
        QStringList numbers;
        for (const FoundPage& page : wordsOfPdf(file.readAll())) {
            const auto label = std::ranges::find(page.words, QStringLiteral("Page:"), &FoundWord::text);
            ASSERT_NE(label, page.words.end());
            numbers.append((label + 1)->text);
        }
        EXPECT_EQ(numbers, row.numbers);
    }
}

TEST_F(PreviewWindowTest, PagesComeOutOnceInTheOrderAskedFor) {
    struct Row {
        PrintRequest request;
        std::vector<int> pages;
    };
    const std::vector<Row> rows = {
        {{}, {0, 1, 2, 3, 4}},
        {{.ranges = {{1, 2}, {5, 5}}}, {0, 1, 4}},
        {{.ranges = {{1, 3}, {2, 4}}}, {0, 1, 2, 3}},
        {{.ranges = {{4, 99}}}, {3, 4}},
        {{.ranges = {{6, 9}}}, {}},
        {{.ranges = {}, .lastFirst = true}, {4, 3, 2, 1, 0}},
        {{.ranges = {{2, 3}}, .copies = 2}, {1, 2, 1, 2}},
        {{.ranges = {{2, 3}}, .copies = 2, .collated = false}, {1, 1, 2, 2}},
        {{.ranges = {{2, 3}}, .lastFirst = true, .copies = 2, .collated = false}, {2, 2, 1, 1}},
    };
    for (const Row& row : rows) {
        EXPECT_EQ(pagesToPrint(row.request, 5), row.pages);
    }
}

TEST_F(PreviewWindowTest, EveryCommandHasAKeyAndAMenuPlace) {
    PreviewWindow& window = open(4, 1);
    for (const char* name : {"printCommand", "printAllCommand", "savePdfCommand", "saveAllCommand", "closeTabCommand",
                             "closeCommand", "copyCommand", "selectAllCommand", "findCommand", "findNextCommand",
                             "findPreviousCommand", "zoomInCommand", "zoomOutCommand", "fitWidthCommand"}) {
        SCOPED_TRACE(name);
        const auto* command = window.findChild<QAction*>(QLatin1String(name));
        ASSERT_NE(command, nullptr);
        EXPECT_FALSE(command->shortcut().isEmpty());
        EXPECT_TRUE(command->text().contains(QLatin1Char('&')));
    }
    EXPECT_FALSE(pagesOf(window).accessibleName().isEmpty());
    QMenu* first = window.menuBar()->actions().constFirst()->menu();
    press(window, Qt::Key_F10);
    EXPECT_TRUE(first->isVisible());
    first->close();
}

}  // namespace
}  // namespace kpx::test

int main(int argc, char** argv) {
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
