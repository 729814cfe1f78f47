// SPDX-License-Identifier: GPL-3.0-or-later
#include "SecureDelete/engine/FreeSpace.h"
#include "SecureDelete/engine/RecycleIndex.h"

#include <QTest>
#include <QtEndian>

using namespace Qt::StringLiterals;
using namespace securedelete;

namespace
{

template <class Number>
QByteArray bytesOf(Number value)
{
    value = qToLittleEndian(value);
    return {reinterpret_cast<const char *>(&value), sizeof value};
}

QByteArray index(quint64 version, const QString &path, qsizetype units, bool withCount)
{
    QByteArray bytes = bytesOf(version) + bytesOf(quint64{1234}) + bytesOf(quint64{99});
    if (withCount)
        bytes += bytesOf(static_cast<quint32>(units));
    QByteArray text(reinterpret_cast<const char *>(path.utf16()), path.size() * 2);
    text.resize(units * 2, '\0');
    return bytes + text;
}

} // namespace

class TestRecycleIndex : public QObject
{
    Q_OBJECT

private slots:
    void parses_data();
    void parses();
    void pairsItemsWithTheirIndex();
    void freeSpaceIsFilledAndFreed_data();
    void freeSpaceIsFilledAndFreed();
};

void TestRecycleIndex::parses_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<QString>("path"); // empty: refused
    const QString path = u"C:\\Users\\me\\a.txt"_s;
    const QByteArray second = index(2, path, path.size() + 1, true);
    QTest::newRow("version 1") << index(1, path, 260, false) << path;
    QTest::newRow("version 2") << second << path;
    QTest::newRow("version 2, without an end") << index(2, path, path.size(), true) << path;
    QTest::newRow("a line break in the name") << index(2, u"C:\\a\nb"_s, 7, true) << u"C:\\a b"_s;
    QTest::newRow("version 1, cut off") << index(1, path, 259, false) << QString();
    QTest::newRow("version 2, cut off") << second.chopped(1) << QString();
    QTest::newRow("version 2, a count beyond the end")
        << index(2, path, 40'000, true).first(200) << QString();
    QTest::newRow("no path") << index(2, QString(), 1, true) << QString();
    QTest::newRow("version 3") << index(3, path, 260, true) << QString();
    QTest::newRow("nothing") << QByteArray() << QString();
    QTest::newRow("header only") << second.first(24) << QString();
}

void TestRecycleIndex::parses()
{
    QFETCH(const QByteArray, bytes);
    QFETCH(const QString, path);
    const auto expected = path.isEmpty() ? std::nullopt : std::optional(RemovedItem{path, 1234, 99});
    QVERIFY(parseRecycleIndex(bytes) == expected);
}

void TestRecycleIndex::pairsItemsWithTheirIndex()
{
    core::DirectoryListing listing;
    const auto add = [&](QStringView name, quint32 attributes, quint64 size) {
        core::DirectoryEntry entry;
        entry.name = name;
        entry.attributes = attributes;
        entry.size = size;
        listing.add(entry);
    };
    add(u"$IABC.txt", 0, 60);
    add(u"Desktop.INI", 6, 129);
    add(u"$Rfolder", core::AttributeDirectory, 0);
    add(u"$RABC.txt", 0, 500);
    add(u"$Ialone", 0, 60);
    add(u"other.tmp", 0, 7);
    const auto items = binItems(listing, [](const QString &name) {
        return name == u"$IABC.txt" ? index(2, u"C:\\a.txt"_s, 9, true) : QByteArray("damaged");
    });
    QStringList shown;
    for (const BinItem &item : items)
        shown.append(item.contentName + u'|' + item.indexName + u'|' + QString::number(item.size()));
    QCOMPARE(shown, (QStringList{u"$RABC.txt|$IABC.txt|1234"_s, u"$Rfolder||0"_s, u"|$Ialone|0"_s,
                                 u"other.tmp||7"_s}));
    QVERIFY(items[1].isFolder());
}

namespace
{

class FakeVolume : public FreeSpaceFolder, private Target, public FreeSpaceListener
{
public:
    quint64 freeBytes() override { return free; }
    Target *newFile(int number) override
    {
        files = number;
        return number > maxFiles ? nullptr : this;
    }
    bool removeAll() override
    {
        free += used;
        used = 0;
        return true;
    }
    void spaceFilled(quint64 bytes, quint64 whole) override
    {
        total = whole;
        if (bytes >= cancelAt)
            cancel.set();
    }

    quint64 free = quint64{3} << 20, used = 0, total = 0, quota = ~quint64{0}, cancelAt = ~quint64{0};
    int files = 0, maxFiles = 99;
    core::CancelFlag cancel;

private:
    bool moveTo(quint64) override { return false; }
    bool moveBack(quint64) override { return false; }
    quint64 write(const char *, quint64 bytes) override
    {
        bytes = std::min({bytes, free, quota - used});
        free -= bytes;
        used += bytes;
        return bytes;
    }
};

} // namespace

void TestRecycleIndex::freeSpaceIsFilledAndFreed_data()
{
    QTest::addColumn<std::function<void(FakeVolume &)>>("prepare");
    QTest::addColumn<quint64>("written");
    QTest::addColumn<bool>("filled");
    QTest::addColumn<int>("files");
    using Prepare = std::function<void(FakeVolume &)>;
    constexpr quint64 megabyte = 1 << 20;
    constexpr quint64 spared = 1000;
    QTest::newRow("to the end") << Prepare([](FakeVolume &) {}) << 3 * megabyte - spared << true << 3;
    QTest::newRow("quota") << Prepare([](FakeVolume &v) { v.quota = 5000; }) << quint64{5000} << true << 1;
    QTest::newRow("full before") << Prepare([](FakeVolume &v) { v.free = spared; }) << quint64{0} << true
                                 << 0;
    QTest::newRow("cancelled") << Prepare([](FakeVolume &v) { v.cancelAt = 1; }) << quint64{1 << 20} << false
                               << 1;
    QTest::newRow("no rights") << Prepare([](FakeVolume &v) { v.maxFiles = 0; }) << quint64{0} << false << 1;
}

void TestRecycleIndex::freeSpaceIsFilledAndFreed()
{
    QFETCH(const std::function<void(FakeVolume &)>, prepare);
    QFETCH(const quint64, written);
    FakeVolume volume;
    prepare(volume);
    const quint64 before = volume.free;
    const FreeSpaceResult result =
        wipeFreeSpace(volume, {.spared = 1000, .maxFileSize = 1 << 20}, volume, volume.cancel);
    QCOMPARE(result.bytesWritten, written);
    QTEST(result.filled, "filled");
    QTEST(volume.files, "files");
    QVERIFY(result.removed);
    QCOMPARE(volume.free, before);
    QVERIFY(written == 0 || volume.total == before - 1000);
}

QTEST_APPLESS_MAIN(TestRecycleIndex)

#include "tst_recycle_index.moc"
