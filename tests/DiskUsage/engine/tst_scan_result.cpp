// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/engine/Merge.h"
#include "tests/DiskUsage/engine/ScanRecorder.h"

#include <QRandomGenerator>
#include <QTest>

#include <limits>
#include <map>

using namespace Qt::StringLiterals;
using diskusage::FileTypeResult;
using diskusage::LargestChildren;
using diskusage::ScanResult;
using tests::MemoryEnumerator;

namespace
{

using Files = std::map<QString, quint64>; // sizes by path

ScanResult scanned(const Files &files, const QString &root)
{
    MemoryEnumerator disk;
    for (const auto &[path, size] : files)
        disk.addFile(path, size);
    diskusage::ScanOptions options;
    options.fileTypes = core::defaultFileTypes();
    return scan(disk, root, options);
}

// Everything but the running numbers and the children's names, in an order of its own.
QStringList described(const ScanResult &result)
{
    QStringList lines;
    for (std::size_t i = 0; i < result.folders.size(); ++i) {
        const diskusage::Folder &folder = result.folders[i];
        lines.append(u"%1: %2 %3 %4 %5"_s.arg(result.path(int(i)))
                         .arg(folder.bytes)
                         .arg(folder.files)
                         .arg(folder.folders)
                         .arg(folder.depth));
        if (findFolder(result, result.path(int(i))) != int(i))
            lines.append(u"not found"_s);
    }
    const auto describe = [&](const FileTypeResult &type) {
        lines.append(u"%1: %2"_s.arg(type.category.name).arg(type.total));
        for (const diskusage::FileRecord &file : type.files)
            lines.append(u"%1 %2\\%3 %4"_s.arg(type.category.name, result.path(file.folder), file.name)
                             .arg(file.size));
    };
    for (const FileTypeResult &type : result.fileTypes)
        describe(type);
    describe(result.others);
    lines.sort();
    return lines;
}

Files randomFiles(QRandomGenerator &random, const QString &root, int count)
{
    Files files;
    const QStringList suffixes{u".txt"_s, u".jpg"_s, u".tar.gz"_s, u".x"_s};
    for (int i = 0; i < count; ++i) {
        QString path = root;
        for (int depth = random.bounded(4); depth > 0; --depth)
            path += u"\\d%1"_s.arg(random.bounded(3));
        files[path + u"\\f%1"_s.arg(random.bounded(20)) + suffixes.at(random.bounded(4))] =
            random.bounded(1000U);
    }
    return files;
}

} // namespace

class ScanResultTest : public QObject
{
    Q_OBJECT

private slots:
    void isWhatAScanOfEverythingFinds();
    void findsOnlyWhatIsThere();
    void childrenAreReadBack();
    void childrenEndAtWhatIsNotOfTheForm();
};

// Folders one after the other are changed and scanned again, at the end the first of them once more.
void ScanResultTest::isWhatAScanOfEverythingFinds()
{
    QRandomGenerator random(7);
    for (int round = 0; round < 15; ++round) {
        Files files = randomFiles(random, u"C:\\r"_s, 40);
        auto whole = std::make_shared<ScanResult>(scanned(files, u"C:\\r"_s));
        for (const QString &name : {u"d0"_s, u"d1"_s, u"d2"_s, u"d0\\d1"_s, u"d0"_s}) {
            const QString path = u"C:\\r\\"_s + name;
            const int folder = findFolder(*whole, path);
            if (folder < 0)
                continue;
            std::erase_if(files, [&](const auto &file) { return file.first.startsWith(path + u'\\'); });
            files.merge(randomFiles(random, path, random.bounded(1, 15)));
            files[path + u"\\kept.txt"_s] = 1; // so that the folder is there
            whole = merged(*whole, folder, scanned(files, path), {});
            QVERIFY(whole);
            QCOMPARE(described(*whole), described(scanned(files, u"C:\\r"_s)));
        }
    }
}

void ScanResultTest::findsOnlyWhatIsThere()
{
    const ScanResult result =
        scanned({{u"C:\\a\\b\\x"_s, 1}, {u"C:\\a\\bb\\x"_s, 1}, {u"C:\\c\\b\\x"_s, 1}}, u"C:"_s);
    QCOMPARE(findFolder(result, u"C:\\"_s), 0);
    QCOMPARE(result.path(findFolder(result, u"C:\\a\\bb"_s)), u"C:\\a\\bb"_s);
    QCOMPARE(result.path(findFolder(result, u"C:\\c\\b"_s)), u"C:\\c\\b"_s);
    for (const QString &path : {u"C:\\a\\bbb"_s, u"C:\\b"_s, u"C:\\a\\b\\c"_s, u"D:\\a"_s, QString()})
        QCOMPARE(findFolder(result, path), -1);
    core::CancelFlag cancel;
    cancel.set();
    QVERIFY(!merged(result, 1, result, cancel));
}

void ScanResultTest::childrenAreReadBack()
{
    for (const QString &name : {u"x;y.txt;"_s, u"5;0;"_s, u"\U0001F600.png"_s,
                                QString(QChar(0xDC00)) + QChar(0xD800), QString(30'000, u'n')}) {
        LargestChildren largest;
        largest.offer(name, 12, LargestChildren::SubFolder);
        largest.offer(name, std::numeric_limits<qint64>::max(), LargestChildren::File);
        largest.offer(name, 0, LargestChildren::File);
        QVERIFY2(LargestChildren::parse(largest.serialised()) == largest.children(), qPrintable(name));
    }
}

void ScanResultTest::childrenEndAtWhatIsNotOfTheForm()
{
    const std::vector<LargestChildren::Child> expected{{u"a"_s, 1, LargestChildren::File}};
    for (const char *text :
         {"b", "b:", "b:5", "b:5:", "b:5:0", "b::0;", "b:-5:0;", "b:+5:0;", "b: 5:0;", "b:5.0:0;", "b:5:2;",
          "b:5:00;", "b:5:;", "b:9223372036854775808:0;", "b:x:0;", "b:5:0:c:6:0;"}) {
        QVERIFY2(LargestChildren::parse(QString::fromLatin1(text)).empty(), text);
        QVERIFY2(LargestChildren::parse(u"a:1:0;"_s + QString::fromLatin1(text)) == expected, text);
    }
}

QTEST_APPLESS_MAIN(ScanResultTest)
#include "tst_scan_result.moc"
