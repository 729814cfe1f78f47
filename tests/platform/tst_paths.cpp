// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/HeldFile.h"
#include "platform/Paths.h"
#include "tests/support/TestFolder.h"
#include "tests/support/TestPrefix.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace platform;

class TestPaths : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { tests::requireTestPrefix(); }
    void apiForm_data();
    void apiForm();
    void shownForm();
    void driveRoots();
    void finalPathResolvesLinks();
    void insideMeansWithoutLinks();
    void insideTakesNamesLiterally();
    void identityIsThatOfTheObject();
};

void TestPaths::apiForm_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("api");
    const auto row = [](const char *name, const char16_t *path, const char16_t *api) {
        QTest::newRow(name) << QString::fromUtf16(path) << QString::fromUtf16(api);
    };
    row("plain", u"C:\\a\\b", u"\\\\?\\C:\\a\\b");
    row("slashes", u"c:/a/b/", u"\\\\?\\c:\\a\\b");
    row("drive root", u"C:\\", u"\\\\?\\C:\\");
    row("drive", u"C:", u"\\\\?\\C:\\");
    row("doubled separators", u"C:\\\\Users\\\\x", u"\\\\?\\C:\\Users\\x");
    row("dots", u"C:\\a\\.\\b\\..\\c", u"\\\\?\\C:\\a\\c");
    row("above the root", u"C:\\..\\..\\a", u"\\\\?\\C:\\a");
    row("names of dots and spaces", u"C:\\a.\\b \\...\\c. .", u"\\\\?\\C:\\a.\\b \\...\\c. .");
    row("device name", u"C:\\nul\\con.txt", u"\\\\?\\C:\\nul\\con.txt");
    row("server", u"\\\\server\\share\\x", u"\\\\?\\UNC\\server\\share\\x");
    row("share root", u"//server/share/", u"\\\\?\\UNC\\server\\share\\");
    row("above a share", u"\\\\server\\share\\..\\..\\x", u"\\\\?\\UNC\\server\\share\\x");
    row("already verbatim", u"\\\\?\\C:\\a.", u"\\\\?\\C:\\a.");
    row("verbatim drive, not the volume", u"\\\\?\\C:", u"\\\\?\\C:\\");
    row("device", u"\\\\.\\PhysicalDrive0", u"\\\\.\\PhysicalDrive0");
    row("relative", u"a/b", u"a\\b");
    row("relative to a drive", u"C:a", u"C:a");
    row("root of the current drive", u"\\a", u"\\a");
    row("empty", u"", u"");
    QTest::newRow("unpaired surrogate") << u"C:\\"_s + QChar(0xd83d) << u"\\\\?\\C:\\"_s + QChar(0xd83d);
}

void TestPaths::apiForm()
{
    QFETCH(QString, path);
    QTEST(QString::fromStdWString(apiPath(path)), "api");
    // What is in the form stays as it is.
    QTEST(QString::fromStdWString(apiPath(QString::fromStdWString(apiPath(path)))), "api");
}

void TestPaths::shownForm()
{
    const auto shown = [](const char16_t *path) { return shownPath(QString::fromUtf16(path)); };
    QCOMPARE(shown(u"C:/a\\b. "), u"C:\\a\\b. "_s);
    QCOMPARE(shown(u"\\\\?\\C:\\a"), u"C:\\a"_s);
    QCOMPARE(shown(u"\\\\?\\UNC\\server\\share\\x"), u"\\\\server\\share\\x"_s);
    QCOMPARE(shown(u"\\\\?\\Volume{1}\\x"), u"\\\\?\\Volume{1}\\x"_s); // has no letter
}

void TestPaths::driveRoots()
{
    for (const char16_t *path : {u"C:", u"C:\\", u"c:/", u"C:\\.\\", u"C:\\x\\..", u"\\\\?\\C:\\",
                                 u"\\\\server\\share", u"//server/share/", u"\\\\?\\UNC\\server\\share"})
        QVERIFY2(isDriveRoot(QString::fromUtf16(path)), qPrintable(QString::fromUtf16(path)));
    for (const char16_t *path :
         {u"C:\\x", u"C:x", u"", u"x", u"\\\\server\\share\\x", u"\\\\?\\UNC\\server\\share\\x"})
        QVERIFY2(!isDriveRoot(QString::fromUtf16(path)), qPrintable(QString::fromUtf16(path)));
}

void TestPaths::finalPathResolvesLinks()
{
    tests::TestFolder folder;
    const QString file = folder.makeFile(u"real\\Name.txt"_s);
    const QString link = folder.makeLink(u"link"_s, u"real"_s);
    const QString fileLink = folder.makeLink(u"other.txt"_s, u"real\\Name.txt"_s);

    QCOMPARE(finalPath(file), finalPath(folder.path()) + u"\\real\\Name.txt"_s);
    QCOMPARE(finalPath(folder.path(u"REAL\\name.TXT"_s)), finalPath(file));
    QCOMPARE(finalPath(link + u"\\Name.txt"_s), finalPath(file));
    QCOMPARE(finalPath(fileLink), finalPath(file));
    QVERIFY(finalPath(folder.path(u"nothing"_s)).isEmpty());
    for (const auto form : {HeldFile::Form::Device, HeldFile::Form::DeviceAsOpened})
        QCOMPARE(HeldFile(link + u"\\Name.txt"_s).finalPath(form),
                 HeldFile(folder.path()).finalPath(form) + u"\\real\\Name.txt"_s);

    const QString deep = folder.makeFile((QString(200, u'd') + u'\\').repeated(5) + u"file"_s);
    QVERIFY(deep.size() > 1000);
    QVERIFY(fileExists(deep));
    QVERIFY(fileFacts(deep));
    // Wine keeps 260 characters for its answer and has none for a longer path; then nothing is told.
    const QString expected = finalPath(folder.path()) + deep.mid(folder.path().size());
    QCOMPARE(finalPath(deep), tests::isWine() ? QString() : expected);
}

void TestPaths::insideMeansWithoutLinks()
{
    tests::TestFolder folder;
    const QString root = folder.makeFolder(u"root"_s);
    const QString inside = folder.makeFile(u"root\\sub\\a.txt"_s);
    folder.makeFile(u"outside\\a.txt"_s);
    folder.makeFile(u"rooted\\a.txt"_s);
    folder.makeLink(u"root\\out"_s, u"outside"_s);
    folder.makeLink(u"root\\back"_s, u"root\\sub"_s);
    folder.makeLink(u"root\\out.txt"_s, u"outside\\a.txt"_s);
    const QString rootLink = folder.makeLink(u"path"_s, u"root"_s);

    QVERIFY(isInside(root, inside));
    QVERIFY(isInside(root + u'\\', inside));
    QVERIFY(isInside(root.toUpper(), inside.toLower()));
    // The user may have chosen the root through a link; what counts is what lies between it and the item.
    QVERIFY(isInside(rootLink, rootLink + u"\\sub\\a.txt"_s));

    QVERIFY(!isInside(root, root));
    QVERIFY(!isInside(root, folder.path()));
    QVERIFY(!isInside(root, folder.path(u"rooted\\a.txt"_s)));
    QVERIFY(!isInside(root, root + u"\\..\\outside\\a.txt"_s));
    QVERIFY(!isInside(root, root + u"\\nothing"_s));
    QVERIFY(!isInside(root, root + u"\\out"_s));
    QVERIFY(!isInside(root, root + u"\\out\\a.txt"_s));
    QVERIFY(!isInside(root, root + u"\\out.txt"_s));
    // Inside, but by a way that is a link: still another place than its name says.
    QVERIFY(!isInside(root, root + u"\\back\\a.txt"_s));
    QVERIFY(!isInside(rootLink, inside));
}

void TestPaths::insideTakesNamesLiterally()
{
    tests::TestFolder folder;
    const QString dotted = folder.makeFile(u"name.txt."_s);
    const QString spaced = folder.makeFile(u"name.txt "_s);
    QVERIFY(fileExists(dotted));
    QVERIFY(fileExists(spaced));
    // Wine leaves out the last character in the final path, so that such a file counts as doubtful there.
    QCOMPARE(isInside(folder.path(), dotted), !tests::isWine());
    QCOMPARE(isInside(folder.path(), spaced), !tests::isWine());
    QVERIFY(!fileExists(folder.path(u"name.txt"_s)));
    QVERIFY(!isInside(folder.path(), folder.path(u"name.txt"_s)));
}

void TestPaths::identityIsThatOfTheObject()
{
    tests::TestFolder folder;
    const QString file = folder.makeFile(u"d\\a.txt"_s, "12345");
    const QString twin = folder.makeFile(u"d\\b.txt"_s, "12345");
    const QString hard = folder.makeHardLink(u"hard.txt"_s, u"d\\a.txt"_s);
    folder.makeLink(u"link"_s, u"d"_s);
    constexpr quint64 time = 0x01DA'0000'0000'0001;
    folder.setTimes(u"d\\a.txt"_s, time, time);

    const std::optional<FileFacts> facts = fileFacts(file);
    QVERIFY(facts);
    QCOMPARE(facts->size, 5u);
    QCOMPARE(facts->linkCount, 2u);
    QCOMPARE(facts->lastWriteTime, time);
    for (const QString &same : {hard, folder.path(u"link\\a.txt"_s), folder.path(u"D\\A.TXT"_s)})
        QVERIFY2(fileFacts(same)->identity == facts->identity, qPrintable(same));
    QVERIFY(fileFacts(twin)->identity != facts->identity);
    QVERIFY(fileFacts(folder.path())->identity != facts->identity);
    QVERIFY(!fileFacts(folder.path(u"nothing"_s)));
}

QTEST_GUILESS_MAIN(TestPaths)

#include "tst_paths.moc"
