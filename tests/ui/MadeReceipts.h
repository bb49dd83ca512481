#pragma once

#include <QSize>
#include <QString>
#include <QStringList>

namespace kpx::test {

// Each writes one file into the folder "Receipts" of the data folder, and answers its full path.

/// A picture of one colour, of the kind that the name's ending says.
QString writePicture(const QString& name, const QSize& size, unsigned color);
/// A photo as a camera held upright stores it: the pixels lie on their side, and a mark says so. `stored` is
/// the size as stored; shown, its upper half is red and its lower half blue.
QString writePhotoOnItsSide(const QString& name, const QSize& stored);
/// A document of that many pages, each with a dark bar at its top.
QString writeDocument(const QString& name, int pages);
/// A document of one page: the receipt of a pharmacy's till, on a slip of paper.
QString writeTillReceipt(const QString& name);
QString writeBytes(const QString& name, const QByteArray& bytes);

/// Files that are made to keep a reader busy, or to fill its memory, or both.
QStringList writeHostileReceipts();

/// Gives every record of the history in the data folder a receipt, one of a few pictures.
void writeReceiptForEveryFill();

}  // namespace kpx::test
