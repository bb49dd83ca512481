#include "tests/ui/MadeHousehold.h"
#include "tests/ui/MadeReceipts.h"
#include "tests/ui/Waiting.h"
#include "ui/Application.h"
#include "ui/views/DropButton.h"
#include "ui/views/ReceiptLoader.h"

#include <QDir>
#include <QFile>
#include <QTest>

#include <sys/stat.h>

#include <memory>
#include <optional>

using namespace kpx;
using namespace kpx::test;

namespace {

/// What the decoder says about a file, alone.
DecodingResult resultFor(const QString& file) {
    ReceiptLoader loader(nullptr);
    std::optional<DecodingResult> result;
    QObject::connect(&loader, &ReceiptLoader::finished, [&result](DecodingResult came) { result = came; });
    loader.load({.file = file.toStdString(), .room = {200, 200}});
    constexpr int patience = 100000;
    return QTest::qWaitFor([&result] { return result.has_value(); }, patience) ? *result : DecodingResult::Shown;
}

/// The processes that this one started and that still run.
QStringList runningDecoders() {
    QStringList running;
    const QDir processes(QStringLiteral("/proc"));
    for (const QString& process : processes.entryList({QStringLiteral("[0-9]*")}, QDir::Dirs)) {
        QFile status(processes.filePath(process) + QStringLiteral("/stat"));
        if (!status.open(QIODevice::ReadOnly)) {
            continue;
        }
        const QByteArray line = status.readAll();
        const QList<QByteArray> fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
        const bool isGone = fields.value(0) == "Z";
        if (line.contains("(velmora-decoder") && !isGone &&
            fields.value(1).toLongLong() == QCoreApplication::applicationPid()) {
            running << process;
        }
    }
    return running;
}

}  // namespace

/// Receipts that were made to do harm, and files that are none.
class HostileReceiptTest : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void eachKindCannotBeShown() {
        writeSmallHousehold();
        for (const QString& file : writeHostileReceipts()) {
            QVERIFY(!file.isEmpty());
            QVERIFY2(resultFor(file) == DecodingResult::CannotBeShown, qPrintable(file));
        }
    }

    void whatIsNoFileHoldsUpNobody() {
        writeSmallHousehold();
        const QString folder = QString::fromStdString(dataFolder().string());
        const QString pipe = folder + QStringLiteral("/pipe.png");
        QCOMPARE(::mkfifo(qPrintable(pipe), 0600), 0);
        const QString nowhere = folder + QStringLiteral("/nowhere.png");
        QVERIFY(QFile::link(folder + QStringLiteral("/missing.png"), nowhere));
        const struct {
            QString file;
            DecodingResult result;
        } rows[] = {{pipe, DecodingResult::CannotBeShown},
                    {folder, DecodingResult::CannotBeShown},
                    {QStringLiteral("/dev/zero"), DecodingResult::CannotBeShown},
                    {folder + QStringLiteral("/missing.png"), DecodingResult::NotFound},
                    {folder + QStringLiteral("/missing/receipt.png"), DecodingResult::NotFound},
                    {nowhere, DecodingResult::NotFound}};
        for (const auto& row : rows) {
            QVERIFY2(resultFor(row.file) == row.result, qPrintable(row.file));
        }
    }

    void cutAnywhereAFileIsShownOrNot() {
        writeSmallHousehold();
        QFile whole(writeDocument(QStringLiteral("whole.pdf"), 1));
        QVERIFY(whole.open(QIODevice::ReadOnly));
        const QByteArray bytes = whole.readAll();
        constexpr int cuts = 12;
        for (int cut = 1; cut < cuts; ++cut) {
            const QString file = writeBytes(QStringLiteral("cut.pdf"), bytes.left(bytes.size() * cut / cuts));
            QVERIFY(resultFor(file) != DecodingResult::NotFound);
        }
        QVERIFY(resultFor(whole.fileName()) == DecodingResult::Shown);
    }

    void theLastOfManyQuickOnesIsShown() {
        writeSmallHousehold();
        auto program = startWithoutSplash();
        QVERIFY(program);
        auto& button = *program->window().findChild<DropButton*>(QStringLiteral("dropButton"));
        const QStringList hostile = writeHostileReceipts();
        const QString last = writePicture(QStringLiteral("last.png"), {30, 50}, 0xff205080);
        constexpr int many = 60;
        for (int turn = 0; turn < many; ++turn) {
            const QString& file = turn == many - 1 ? last : hostile[turn % hostile.size()];
            program->delegate().performDragOperation(program->delegate().outlets.dropButton, file.toStdString());
            if (turn % 5 == 0) {
                QTRY_VERIFY(!runningDecoders().isEmpty());
            }
        }
        QTRY_COMPARE(button.picture().size(), QSize(30, 50));
        QTRY_VERIFY(runningDecoders().isEmpty());
        QCOMPARE(button.picture().pixel(5, 5), 0xff205080);
        QCOMPARE(program->delegate().outlets.dropButton.state(), KPXDropButton::State::Attached);
        program->window().close();
    }

    void theWindowIsNotHeldUpAndTheDecoderIsEnded() {
        writeSmallHousehold();
        auto program = startWithoutSplash();
        QVERIFY(program);
        auto& button = *program->window().findChild<DropButton*>(QStringLiteral("dropButton"));
        const QString spinning = writeHostileReceipts().constFirst();
        const auto attach = [&program](const QString& file) {
            program->delegate().performDragOperation(program->delegate().outlets.dropButton, file.toStdString());
        };
        attach(spinning);
        bool isRunning = false;
        qint64 pause = longestPause([] { return !runningDecoders().isEmpty(); }, isRunning);
        QVERIFY(isRunning);
        QVERIFY2(pause < 500, qPrintable(QString::number(pause)));
        QVERIFY(button.picture().isNull());

        // Another receipt comes through at once, and the first one's decoder goes.
        const QStringList first = runningDecoders();
        attach(writePicture(QStringLiteral("after.png"), {30, 50}, 0xff205080));
        bool isShown = false;
        pause = longestPause([&] { return !button.picture().isNull() && !runningDecoders().contains(first.value(0)); },
                             isShown);
        QVERIFY(isShown);
        QVERIFY2(pause < 500, qPrintable(QString::number(pause)));

        // So it does when the window closes in the midst of it.
        attach(spinning);
        QTRY_VERIFY(!runningDecoders().isEmpty());
        const OwnTimer closing;
        program->window().close();
        program.reset();
        QVERIFY2(closing.elapsed() < 1000, qPrintable(QString::number(closing.elapsed())));
        QTRY_VERIFY(runningDecoders().isEmpty());
    }
};

QTEST_MAIN(HostileReceiptTest)
#include "HostileReceiptTest.moc"
