// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExtractIcon/engine/Bytes.h"
#include "ExtractIcon/engine/ExportNames.h"
#include "ExtractIcon/engine/IconListing.h"

#include <QMap>
#include <QTest>

using namespace icons;

namespace
{

ImageFacts facts(int width, int depth = 32)
{
    return {.width = width, .height = width / 2, .depth = depth};
}

// Resources in memory: groups by number, images by number.
struct MemorySource final : IconSource {
    QMap<quint32, QByteArray> groups;
    QMap<quint32, QByteArray> images;

    QList<quint32> iconIds() override { return groups.keys(); }
    std::optional<IconDirectory> directory(quint32 id) override { return parseGroup(groups.value(id)); }
    std::optional<QByteArrayView> image(const DirectoryEntry &entry) override
    {
        const auto found = images.constFind(entry.place);
        return found == images.constEnd() ? std::nullopt : std::optional(QByteArrayView(*found));
    }
};

// "0000 0100 count", then 12 bytes an entry and the number of its image.
QByteArray group(const char *entries)
{
    return QByteArray::fromHex(entries);
}

// An icon file of one image of four bytes, behind its directory.
QByteArray smallFile()
{
    return QByteArray::fromHex("0000 0100 0100 1010000001002000 04000000 16000000 aabbccdd");
}

} // namespace

class tst_icon_directory : public QObject
{
    Q_OBJECT

private slots:
    void refusesFiles_data();
    void refusesFiles();
    void representatives_data();
    void representatives();
    void exportsAsStored();
    void leavesOutWhatIsMissing();
    void namesOfPngFiles();
    void namesThatAreUsable();
};

void tst_icon_directory::refusesFiles_data()
{
    QTest::addColumn<int>("at");
    QTest::addColumn<quint32>("value");
    QTest::addColumn<int>("icons");
    QTest::newRow("as it is") << 0 << 0x00010000U << 1;
    QTest::newRow("cursor") << 0 << 0x00020000U << 0;
    QTest::newRow("reserved is not 0") << 0 << 0x00010001U << 0;
    QTest::newRow("no image") << 4 << 0x10100000U << 0;
    QTest::newRow("65535 images") << 4 << 0x1010ffffU << 0;
    QTest::newRow("no bytes") << 14 << 0U << 0;
    QTest::newRow("one byte too many") << 14 << 5U << 0;
    QTest::newRow("size and offset wrap") << 14 << 0xffffffeeU << 0;
    QTest::newRow("offset behind the end") << 18 << 27U << 0;
    QTest::newRow("offset as far as can be") << 18 << 0xffffffffU << 0;
}

void tst_icon_directory::refusesFiles()
{
    QFETCH(int, at);
    QFETCH(quint32, value);
    QFETCH(int, icons);
    QByteArray file = smallFile();
    qToLittleEndian(value, file.data() + at);
    core::CancelFlag cancel;
    IconFileSource source(file);
    QCOMPARE(listIcons(source, cancel).size(), icons);
    for (qsizetype size = 0; size < file.size(); ++size) {
        IconFileSource cut(file.first(size));
        QVERIFY(listIcons(cut, cancel).isEmpty());
    }
}

void tst_icon_directory::representatives_data()
{
    QTest::addColumn<QList<int>>("widths");
    QTest::addColumn<int>("chosen");
    QTest::newRow("none") << QList<int>{} << -1;
    QTest::newRow("last is largest") << QList<int>{16, 48} << 1;
    QTest::newRow("first of the largest") << QList<int>{16, 48, 48} << 1;
    QTest::newRow("unknown ends the search") << QList<int>{16, 0, 48} << 1;
}

void tst_icon_directory::representatives()
{
    QFETCH(QList<int>, widths);
    QList<ImageFacts> images;
    for (const int width : widths)
        images.append(facts(width));
    QTEST(representative(images), "chosen");
}

void tst_icon_directory::exportsAsStored()
{
    MemorySource source;
    // Sizes that lie: what counts is how large the resources are.
    source.groups[7] = group("0000 0100 0200 1011020301000400 ff000000 0500 0000000001002000 00000000 0600");
    source.images = {{5, "abc"}, {6, "defgh"}};
    const std::optional<StoredIcon> icon = readIcon(source, 7);
    QVERIFY(icon);
    QCOMPARE(iconFile(icon->directory, icon->bytes).toHex(' '),
             QByteArray::fromHex("0000 0100 0200"
                                 "1011020301000400 03000000 26000000"
                                 "0000000001002000 05000000 29000000"
                                 "616263 6465666768")
                 .toHex(' '));

    IconFileSource file(smallFile());
    const std::optional<StoredIcon> fromFile = readIcon(file, IconFileSource::onlyId);
    QCOMPARE(iconFile(fromFile->directory, fromFile->bytes), smallFile());
}

void tst_icon_directory::leavesOutWhatIsMissing()
{
    MemorySource source;
    source.groups[1] = group("0000 0100 0200 1010000001002000 03000000 0500 2020000001002000 03000000 0600");
    source.groups[2] = group("0000 0100 0100 1010000001002000 03000000 0900"); // its only image is missing
    source.groups[3] = group("0000 0100");                                     // no header
    source.groups[4] = group("0000 0100 0900 1010000001002000 03000000 0600 2020"); // ends early
    source.images = {{6, "xyz"}};
    core::CancelFlag cancel;
    const QList<IconRecord> records = listIcons(source, cancel);
    QCOMPARE(records.size(), 2);
    QCOMPARE(records[0].id, 1U);
    QCOMPARE(records[0].images.size(), 1);
    QCOMPARE(records[0].images[0].width, 32);
    QCOMPARE(records[1].id, 4U);

    const std::optional<StoredIcon> icon = readIcon(source, 1);
    QCOMPARE(number<quint16>(iconFile(icon->directory, icon->bytes), 4), 1); // the true count
    QVERIFY(!readIcon(source, 2));
    cancel.set();
    QVERIFY(listIcons(source, cancel).isEmpty());
}

void tst_icon_directory::namesOfPngFiles()
{
    // The height is never part of it; "%1" in a name is no place to fill.
    QCOMPARE(pngNames(QStringLiteral("a%1"), {facts(48), facts(48, 8), facts(48), facts(48)}).join(u' '),
             QStringLiteral("a%1_48x48_32bits.png a%1_48x48_8bits.png a%1_48x48_32bits (2).png "
                            "a%1_48x48_32bits (3).png"));
    QCOMPARE(iconName(QStringLiteral("%1"), 16), QStringLiteral("%1_16.ico"));
    QCOMPARE(iconName(QStringLiteral("app"), IconFileSource::onlyId), QStringLiteral("app.ico"));
}

void tst_icon_directory::namesThatAreUsable()
{
    for (const char *good : {"shell32", "a b", ".x", "CON"})
        QVERIFY2(isUsableName(QString::fromLatin1(good)), good);
    for (const char *bad : {"", "  ", "a/b", "a\\b", "a:b", "..\\a", "a*", "a\tb"})
        QVERIFY2(!isUsableName(QString::fromLatin1(bad)), bad);
    QVERIFY(!isUsableName(QString(201, u'a')));
}

QTEST_GUILESS_MAIN(tst_icon_directory)
#include "tst_icon_directory.moc"
