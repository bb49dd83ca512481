#include "tests/ui/Dragging.h"
#include "tests/ui/MadeHousehold.h"
#include "tests/ui/MadeReceipts.h"
#include "tests/ui/OpenedFiles.h"
#include "tests/ui/Waiting.h"
#include "ui/Application.h"
#include "ui/ports/QtClipboard.h"
#include "ui/views/AlertBox.h"
#include "ui/views/DropButton.h"
#include "ui/views/PopoverFrame.h"
#include "ui/views/ReceiptPages.h"
#include "ui/views/ReceiptView.h"

#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QLabel>
#include <QMimeData>
#include <QScrollBar>
#include <QTest>
#include <QTextLayout>
#include <QTextOption>
#include <QTimer>
#include <QUrl>

#include <memory>

using namespace kpx;
using namespace kpx::test;

namespace {

QString address(const QString& file) { return QUrl::fromLocalFile(file).toString(QUrl::FullyEncoded); }

}  // namespace

/// Receipts dragged out of another program, and their display.
class ReceiptTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() {
        writeSmallHousehold();
        m_program = startWithoutSplash();
        QVERIFY(m_program);
        QVERIFY(moveWindow(m_program->window(), {100, 100}));
    }
    void cleanup() {
        m_program->window().close();
        m_program.reset();
    }

    void theButtonHasRoomForWhatIsWrong() {
        for (const QString& name : {QStringLiteral("slip.heic"), QStringLiteral("of the pharmacy ").repeated(20),
                                    QString(300, QLatin1Char('w')), QStringLiteral("إيصال ").repeated(40)}) {
            const QString words = name + QStringLiteral(": cannot be shown");
            dropButton().setProblem(DropButton::Problem::CannotBeShown, words);
            const QString shown = dropButton().shownWords();
            QVERIFY(name.size() > 20 || shown == words);
            QVERIFY(shown.endsWith(QStringLiteral("shown")));
            const QRect area = dropButton().textArea();
            QTextLayout text(shown, dropButton().font());
            QTextOption option;
            option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
            text.setTextOption(option);
            text.beginLayout();
            double height = 0;
            for (QTextLine line = text.createLine(); line.isValid(); line = text.createLine()) {
                line.setLineWidth(area.width());
                height += line.height();
            }
            QVERIFY2(height <= area.height(), qPrintable(shown));
        }
    }

    void theClipboardGivesTheFirstAddress() {
        const struct {
            QString kind;
            QByteArray bytes;
            std::string address;
        } rows[] = {
            {QStringLiteral("text/uri-list"), "file:///a/slip.png\r\nfile:///b.png\r\n", "file:///a/slip.png"},
            {QStringLiteral("text/uri-list"), "# copied\r\nfile:///a/slip.png\r\n", "file:///a/slip.png"},
            {QStringLiteral("text/plain"), "\n /a/slip 1.png \nmore", "/a/slip 1.png"},
            {QStringLiteral("text/plain"), " \n", ""},
        };
        for (const auto& row : rows) {
            auto* data = new QMimeData;
            data->setData(row.kind, row.bytes);
            QGuiApplication::clipboard()->setMimeData(data);
            QCOMPARE(QtClipboard().address(), row.address);
        }
    }

    void takesPicturesAndDocumentsOnTheButton() {
        const struct {
            QString file;
            KPXReceiptView::Content content;
        } rows[] = {
            {writePicture(QStringLiteral("till receipt.png"), {300, 500}, 0xff205080), KPXReceiptView::Content::Image},
            {writePicture(QStringLiteral("fax.tiff"), {300, 500}, 0xff205080), KPXReceiptView::Content::Image},
            {writePicture(QStringLiteral("sent by phone.webp"), {300, 500}, 0xff205080),
             KPXReceiptView::Content::Image},
            {writePhotoOnItsSide(QStringLiteral("photo.jpg"), {400, 200}), KPXReceiptView::Content::Image},
            {writeBytes(QStringLiteral("Quittung für Zoë.svg"),
                        "<svg xmlns='http://www.w3.org/2000/svg' width='20' height='40'>"
                        "<rect width='20' height='40' fill='#208050'/></svg>"),
             KPXReceiptView::Content::Image},
            {writeDocument(QStringLiteral("invoice.pdf"), 3), KPXReceiptView::Content::PDF},
        };
        for (const auto& row : rows) {
            Drag drag({address(row.file)});
            QVERIFY(!button().dragInside());
            QVERIFY(drag.over(&dropButton()));
            QTRY_VERIFY2(button().dragInside(), qPrintable(row.file));
            QVERIFY(!popover().isVisible());
            QCOMPARE(drag.drop(), linked());
            QTRY_VERIFY2(popover().isVisible(), qPrintable(row.file));
            QVERIFY(!button().dragInside());
            QCOMPARE(control().content(), row.content);
            QCOMPARE(QString::fromStdString(control().file()), row.file);
            QTRY_VERIFY2(!dropButton().picture().isNull(), qPrintable(row.file));
            if (row.content == KPXReceiptView::Content::PDF) {
                QTRY_VERIFY(view().pages());
                QCOMPARE(view().pages()->pageCount(), 3);
                QVERIFY(view().image().isNull());
            } else {
                QTRY_VERIFY2(!view().image().isNull(), qPrintable(row.file));
                QVERIFY(!view().pages());
            }
            QVERIFY(view().accessibleName().endsWith(QFileInfo(row.file).fileName()));
            QTest::keyClick(&popover(), Qt::Key_Escape);
            QTRY_VERIFY(!popover().isVisible());
        }
    }

    void showsWhatWasScannedAnewUnderTheSameName() {
        const auto dropped = [this](const QString& file, QRgb colour) {
            Drag drag({address(file)});
            return drag.over(&dropButton()) && QTest::qWaitFor([this] { return button().dragInside(); }) &&
                   drag.drop() == linked() && QTest::qWaitFor([&] {
                       const QImage picture = dropButton().picture();
                       return !picture.isNull() && picture.pixel(picture.rect().center()) == colour;
                   });
        };
        constexpr QRgb blue = 0xff205080;
        constexpr QRgb red = 0xff802020;
        const QString file = writePicture(QStringLiteral("scan.png"), {300, 500}, blue);
        QVERIFY(dropped(file, blue));
        QCOMPARE(writePicture(QStringLiteral("scan.png"), {300, 500}, red), file);
        QVERIFY(dropped(file, red));
    }

    void refusesOtherThingsAtTheEdge() {
        const QString text = writeBytes(QStringLiteral("notes.txt"), "bread, milk");
        const QString disguised = writeBytes(QStringLiteral("notes"), "bread, milk");
        const QString picture = writePicture(QStringLiteral("picture.png"), {30, 50}, 0xff205080);
        const QString folder = QFileInfo(picture).path();
        const struct {
            QStringList addresses;
            QString actions;
        } rows[] = {{{address(text)}, QStringLiteral("copy,move,link")},
                    {{address(disguised)}, QStringLiteral("copy,move,link")},
                    {{address(folder)}, QStringLiteral("copy,move,link")},
                    {{address(folder + QStringLiteral("/gone.png"))}, QStringLiteral("copy,move,link")},
                    {{QStringLiteral("https://pharmacy.example/receipt.png")}, QStringLiteral("copy,link")},
                    // The first counts.
                    {{address(text), address(picture)}, QStringLiteral("copy,move,link")},
                    // After a move the other program may delete its file.
                    {{address(picture)}, QStringLiteral("move")}};
        for (const auto& row : rows) {
            Drag drag(row.addresses, row.actions);
            QVERIFY(drag.over(&dropButton()));
            QVERIFY2(!button().dragInside(), qPrintable(row.addresses.join(QLatin1Char(' '))));
            QCOMPARE(drag.drop(), QStringLiteral("none"));
            QVERIFY2(!popover().isVisible(), qPrintable(row.addresses.join(QLatin1Char(' '))));
            QVERIFY(button().image().empty());
        }
    }

    void theHighlightEndsWhenTheDragLeaves() {
        const QString picture = writePicture(QStringLiteral("picture.png"), {30, 50}, 0xff205080);
        Drag drag({address(picture), QStringLiteral("https://pharmacy.example/")}, QStringLiteral("copy"));
        QVERIFY(drag.over(&dropButton()));
        QTRY_VERIFY(button().dragInside());
        const QColor ring = dropButton().palette().color(QPalette::Highlight);
        QTRY_COMPARE(dropButton().grab().toImage().pixelColor(dropButton().width() / 2, 4), ring);
        QVERIFY(drag.over(nullptr));
        QTRY_VERIFY(!button().dragInside());
        QTRY_VERIFY(dropButton().grab().toImage().pixelColor(dropButton().width() / 2, 4) != ring);
        QVERIFY(drag.over(&dropButton()));
        QTRY_VERIFY(button().dragInside());
        QCOMPARE(drag.drop(), QStringLiteral("copy"));
        QTRY_VERIFY(popover().isVisible());
    }

    void theOpenPopoverTakesDropsOnTopOfWhatItShows() {
        attach(writeDocument(QStringLiteral("invoice.pdf"), 2));
        openPopover();
        QTRY_VERIFY(view().pages());
        const QString second = writePicture(QStringLiteral("second.png"), {60, 50}, 0xffa05020);
        Drag drag({address(second)});
        QVERIFY(drag.over(view().pages()->viewport()));
        QVERIFY(popover().isVisible());
        QCOMPARE(drag.drop(), linked());
        QTRY_COMPARE(QString::fromStdString(control().file()), second);
        QTRY_VERIFY(!view().image().isNull());
        QVERIFY(!view().pages());
        QCOMPARE(view().findChildren<ReceiptPages*>().size(), 0);
        QVERIFY(popover().isVisible());
    }

    void aFileElsewhereBringsTheReasonAndKeepsTheReceipt() {
        const QString kept = writePicture(QStringLiteral("kept.png"), {30, 50}, 0xff205080);
        attach(kept);
        const QString elsewhere = QDir::homePath() + QStringLiteral("/elsewhere.png");
        QVERIFY(QFile::copy(kept, elsewhere));
        Drag drag({address(elsewhere)});
        QVERIFY(drag.over(&dropButton()));
        QTRY_VERIFY(button().dragInside());
        QCOMPARE(drag.drop(), linked());
        AlertBox* box = waitForAlert();
        QVERIFY(box);
        QVERIFY(box->text().startsWith(QStringLiteral("Receipt file is NOT stored in KPX's data folder")));
        QVERIFY(popover().isVisible());
        QCOMPARE(QString::fromStdString(control().file()), kept);
        QTRY_COMPARE(QApplication::activeWindow(), box);
        QTest::keyClick(box, Qt::Key_Escape);
        QTRY_VERIFY(noAlertShows());
    }

    void escapeClosesThePopoverAlsoFromTheWindowBeneath() {
        openPopover();
        QTest::keyClick(m_program->window().findChild<QWidget*>(QStringLiteral("scriptNoteTab1")), Qt::Key_Escape);
        QTRY_VERIFY(!popover().isVisible());
    }

    void aPhotoStandsUpright() {
        attach(writePhotoOnItsSide(QStringLiteral("photo.jpg"), {2000, 1000}));
        openPopover();
        QTRY_VERIFY(!view().image().isNull());
        const QImage& image = view().image();
        QVERIFY(image.height() > image.width());
        QVERIFY(image.height() <= view().height());
        QVERIFY(image.pixelColor(image.width() / 2, image.height() / 4).red() > 200);
        QVERIFY(image.pixelColor(image.width() / 2, image.height() * 3 / 4).blue() > 200);
        QTRY_VERIFY(dropButton().picture().height() > dropButton().picture().width());
    }

    void theContentTellsTheKindAndNotTheName() {
        const QString files[] = {
            writePicture(QStringLiteral("really a portable network graphic.png"), {30, 50}, 0xff205080),
            writePicture(QStringLiteral("really from the web.webp"), {30, 50}, 0xff205080),
            writePicture(QStringLiteral("really a photo.jpg"), {30, 50}, 0xff205080),
            writeDocument(QStringLiteral("really a document.pdf"), 1)};
        for (const QString& file : files) {
            for (const char* ending : {"png", "jpg", "webp", "tiff", "pdf"}) {
                const QFileInfo info(file);
                const QString renamed = info.path() + QStringLiteral("/renamed.") + QLatin1String(ending);
                QVERIFY(QFile::copy(file, renamed));
                attach(renamed);
                QTRY_VERIFY2(!dropButton().picture().isNull(), qPrintable(info.fileName() + QLatin1String(ending)));
                QVERIFY(QFile::remove(renamed));
                QTRY_VERIFY(dropButton().picture().isNull());
            }
        }
    }

    void whatCannotBeReadShowsNothing() {
        QFile whole(writeDocument(QStringLiteral("whole.pdf"), 1));
        QVERIFY(whole.open(QIODevice::ReadOnly));
        const QString files[] = {writeBytes(QStringLiteral("broken.png"), "\x89PNG\r\n\x1a\n and then nothing"),
                                 writeBytes(QStringLiteral("broken.pdf"), whole.read(whole.size() / 3)),
                                 writeBytes(QStringLiteral("broken.svg"), "<svg xmlns='http://www.w3.org/2000/svg'><g"),
                                 writeBytes(QStringLiteral("broken.jpg"), "\xff\xd8\xff\xe0")};
        for (const QString& file : files) {
            attach(file);
            openPopover();
            QTRY_VERIFY2(view().result() == DecodingResult::CannotBeShown, qPrintable(file));
            QVERIFY2(view().image().isNull() && !view().pages(), qPrintable(file));
            QVERIFY2(dropButton().picture().isNull(), qPrintable(file));
            closePopover();
        }
        const QString lost = writePicture(QStringLiteral("lost.png"), {30, 50}, 0xff205080);
        attach(lost);
        QVERIFY(QFile::remove(lost));
        openPopover();
        QTRY_VERIFY(view().accessibleDescription().contains(QStringLiteral("lost.png")));
        QVERIFY(view().image().isNull());
        QVERIFY(noAlertShows());
    }

    void aHundredMegapixelsDoNotHoldUpTheWindow() {
        const QString files[] = {writePicture(QStringLiteral("large.jpg"), {10000, 10000}, 0xff205080),
                                 writePicture(QStringLiteral("large.png"), {10000, 10000}, 0xff205080),
                                 // Of a kind that is only read whole.
                                 writePicture(QStringLiteral("photograph.tiff"), {8660, 5780}, 0xff205080)};
        for (const QString& file : files) {
            attach(file);
            openPopover();
            bool shown = false;
            const qint64 pause =
                longestPause([&] { return !view().image().isNull() && !dropButton().picture().isNull(); }, shown);
            QVERIFY2(shown, qPrintable(file));
            QVERIFY2(pause < 500, qPrintable(QString::number(pause)));
            QVERIFY(view().image().width() <= view().width() * view().devicePixelRatioF());
            closePopover();
        }
    }

    void twoThousandPagesDoNotHoldUpTheWindow() {
        const QString file = writeDocument(QStringLiteral("long.pdf"), 2000);
        attach(file);
        openPopover();
        QTRY_VERIFY(view().pages());
        QCOMPARE(view().pages()->pageCount(), 2000);
        bool drawn = false;
        const qint64 pause = longestPause(
            [&] {
                const QImage picture = view().pages()->viewport()->grab().toImage();
                return picture.pixelColor(picture.width() / 2, picture.height() / 12) == QColor(Qt::darkGreen);
            },
            drawn);
        QVERIFY(drawn);
        QVERIFY2(pause < 700, qPrintable(QString::number(pause)));
        view().pages()->verticalScrollBar()->setValue(view().pages()->verticalScrollBar()->maximum());
        QTRY_VERIFY(view().pages()->hasPicture(1999));
        QVERIFY(!view().pages()->hasPicture(0));
        QTest::keyClick(view().pages(), Qt::Key_Escape);
        QTRY_VERIFY(!popover().isVisible());
    }

    void thePictureChangesWithItsFile() {
        const auto shows = [this](QRgb colour) {
            const QImage picture = dropButton().picture();
            return !picture.isNull() && picture.pixel(picture.rect().center()) == colour && !view().image().isNull() &&
                   view().image().pixel(view().image().rect().center()) == colour;
        };
        constexpr QRgb blue = 0xff205080;
        constexpr QRgb red = 0xff802020;
        constexpr QRgb green = 0xff208020;
        const QString file = writePicture(QStringLiteral("scan.bmp"), {30, 50}, blue);
        const QFileInfo before(file);
        attach(file);
        openPopover();
        QTRY_VERIFY(shows(blue));
        // In place, of the same size, and dated back.
        QCOMPARE(writePicture(QStringLiteral("scan.bmp"), {30, 50}, red), file);
        QFile dated(file);
        QVERIFY(dated.open(QIODevice::ReadWrite));
        QVERIFY(dated.setFileTime(before.lastModified(), QFileDevice::FileModificationTime));
        dated.close();
        QCOMPARE(QFileInfo(file).size(), before.size());
        QTRY_VERIFY(shows(red));
        // By another file that takes its name.
        const QString other = writePicture(QStringLiteral("other.bmp"), {30, 50}, green);
        QCOMPARE(::rename(qPrintable(other), qPrintable(file)), 0);
        QTRY_VERIFY(shows(green));
        // Gone, and back.
        QVERIFY(QFile::remove(file));
        QTRY_VERIFY(view().result() == DecodingResult::NotFound && dropButton().picture().isNull());
        QTRY_COMPARE(button().state(), KPXDropButton::State::NotFound);
        writePicture(QStringLiteral("scan.bmp"), {30, 50}, blue);
        QTRY_VERIFY(shows(blue));
        QTRY_COMPARE(button().state(), KPXDropButton::State::Attached);
    }

    void theStartReadsNoReceipt() {
        cleanup();
        constexpr std::size_t fills = 10000;
        writeLargeHousehold(fills);
        writeReceiptForEveryFill();
        OpenedFiles opened((dataFolder() / "Receipts").string());
        m_program = startWithoutSplash();
        QVERIFY(m_program);
        QTRY_COMPARE(m_program->window().findChild<QLabel*>(QStringLiteral("contentCount"))->text(),
                     QStringLiteral("Display Count: 10000"));
        QCOMPARE(opened.count(), 0);
        // The watch sees what it should: a row's receipt is read when the row is loaded.
        clickRow(*m_program->window().findChild<QWidget*>(QStringLiteral("tableViewTab1")), 0, true);
        QTRY_VERIFY(!control().file().empty());
        QTRY_VERIFY(opened.count() > 0);
        QTRY_VERIFY(!dropButton().picture().isNull());
    }

    void clearingTheFormTakesTheReceiptAway() {
        attach(writeDocument(QStringLiteral("invoice.pdf"), 2));
        openPopover();
        QTRY_VERIFY(view().pages());
        QTRY_VERIFY(!dropButton().picture().isNull());
        m_program->delegate().removeAction();
        QVERIFY(!view().pages());
        QVERIFY(dropButton().picture().isNull());
        QCOMPARE(view().accessibleName(), QStringLiteral("No receipt"));
    }

    void thePopoverClosesWithAClickElsewhereAndOnItsButton() {
        openPopover();
        QVERIFY(clickMouse(*m_program->window().findChild<QWidget*>(QStringLiteral("scriptNoteTab1"))));
        QTRY_VERIFY(!popover().isVisible());
        QVERIFY(clickMouse(dropButton()));
        QTRY_VERIFY(popover().isVisible());
        // The two clicks are no double click, which would leave it open.
        QTest::qWait(QApplication::doubleClickInterval() + 50);
        QVERIFY(clickMouse(dropButton()));
        QTRY_VERIFY(!popover().isVisible());
        QTest::qWait(100);
        QVERIFY(!popover().isVisible());
        QVERIFY(clickMouse(dropButton()));
        QTRY_VERIFY(popover().isVisible());
        m_program->delegate().outlets.theTabView.selectTab(2);
        QTRY_VERIFY(!popover().isVisible());
        m_program->delegate().outlets.theTabView.selectTab(0);
    }

private:
    KPXDropButton& button() { return m_program->delegate().outlets.dropButton; }
    KPXReceiptView& control() { return m_program->delegate().outlets.dropView; }
    DropButton& dropButton() { return *m_program->window().findChild<DropButton*>(QStringLiteral("dropButton")); }
    PopoverFrame& popover() { return *m_program->window().findChild<PopoverFrame*>(QStringLiteral("receiptPopover")); }
    ReceiptView& view() { return *m_program->window().findChild<ReceiptView*>(QStringLiteral("dropView")); }

    void attach(const QString& file) {
        QVERIFY(!file.isEmpty());
        m_program->delegate().performDragOperation(button(), file.toStdString());
    }
    void openPopover() {
        QTest::mouseClick(&dropButton(), Qt::LeftButton);
        QTRY_VERIFY(popover().isVisible());
        QVERIFY(QTest::qWaitForWindowExposed(&popover()));
    }
    void closePopover() {
        popover().hide();
        QTRY_VERIFY(!popover().isVisible());
    }

    std::unique_ptr<Application> m_program;
};

QTEST_MAIN(ReceiptTest)
#include "ReceiptTest.moc"
