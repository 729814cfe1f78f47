// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/FileTypes.h"

#include <QRandomGenerator>
#include <QTest>

using core::FileTypeCategory;
using core::FileTypeTable;

namespace
{

// The rule that the matcher has to answer like: every enabled category in table order, every extension in its
// order.
std::vector<int> plainMatch(const FileTypeTable &table, const QString &fileName)
{
    std::vector<int> found;
    const QString extension = core::completeExtension(fileName);
    for (std::size_t i = 0; i < table.size() && extension != u"."; ++i) {
        for (const QString &listed : table[i].extensions) {
            if (table[i].enabled && listed.compare(extension, Qt::CaseInsensitive) == 0) {
                found.push_back(int(i));
                break;
            }
        }
    }
    return found;
}

QString names(const FileTypeTable &table, const std::vector<int> &indexes)
{
    QStringList list;
    for (const int index : indexes)
        list.append(table[std::size_t(index)].name);
    return list.join(u'+');
}

} // namespace

class TestFileTypes : public QObject
{
    Q_OBJECT

private slots:
    void defaults();
    void stored_data();
    void stored();
    void excludedFolder_data();
    void excludedFolder();
    void typedExtension_data();
    void typedExtension();
    void match_data();
    void match();
    void matchesLikeThePlainRule();
};

void TestFileTypes::defaults()
{
    const FileTypeTable &table = core::defaultFileTypes();
    QStringList texts;
    for (const FileTypeCategory &category : table) {
        QVERIFY(category.enabled);
        texts.append(category.displayText());
    }
    QCOMPARE(texts.size(), 12);
    QVERIFY(std::is_sorted(texts.begin(), texts.end()));
    QCOMPARE(texts[0], QStringLiteral("3D Image Files (.3dm, .blend, .max)"));
    QCOMPARE(texts[3], QStringLiteral("Compressed Files (.7z, .gz, .rar, .tar.gz, .zip, .zipx)"));
    QCOMPARE(texts[7], QStringLiteral("Installer and Executable Files (.exe, .msi, .msix, .appx)"));
    QCOMPARE(texts[8],
             QStringLiteral("Raster Image Files (.avif, .bmp, .gif, .heif, .heic, .jpg, .jpeg, .jpe, "
                            ".jif, .jfif, .jfi, .jxl, .png, .psd, .pspimage, .tif, .tiff, .webp)"));
    QCOMPARE(core::fileTypeIcon(table[0].name), QStringLiteral(":/resources/images/3dImages16.png"));
    // Misplaced at first sight, and meant so.
    QCOMPARE(names(table, plainMatch(table, QStringLiteral("a.ogv"))), QStringLiteral("Audio Files"));
    QCOMPARE(names(table, plainMatch(table, QStringLiteral("a.srt"))), QStringLiteral("Video Files"));
    QCOMPARE(names(table, plainMatch(table, QStringLiteral("a.cer"))), QStringLiteral("Web Files"));
}

void TestFileTypes::stored_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("extensions"); // joined by "|"
    const auto row = [](const char *stored, bool enabled, const char *name, const char *extensions) {
        QTest::newRow(stored) << QString::fromLatin1(stored) << true << enabled << QString::fromLatin1(name)
                              << QString::fromLatin1(extensions);
    };
    row("0;Font Files (.fnt, .fon, .otf, .ttf)", false, "Font Files", ".fnt|.fon|.otf|.ttf");
    row("00;X (.a)", true, "X", ".a"); // only "0" disables
    row(" 0;X (.a)", true, "X", ".a");
    row("1;X (.a,.b) ", true, "X", ".a|.b");
    row("1;  X  (  .a ,\t.b)", true, "X", ".a|.b");
    row("1;X (.a, .b )", true, "X", ".a|.b "); // trimmed before the last character goes
    row("1;X (.a", true, "X", ".");            // the last character goes whatever it is
    row("1;X ()", true, "X", "");
    row("1;X (.a,,.b,)", true, "X", ".a|.b");
    row("1;X (.a) (.b)", true, "X", ".a) (.b");
    row("1;X", true, "X", "");
    row("1;", true, "", "");
    row("1;X;Y (.a;b)", true, "X;Y", ".a;b");
    for (const char *malformed : {"", ";", ";Font Files (.fnt)", "Font Files (.fnt)", "1"})
        QTest::newRow(*malformed ? malformed : "empty")
            << QString::fromLatin1(malformed) << false << false << QString() << QString();
}

void TestFileTypes::stored()
{
    QFETCH(QString, stored);
    QFETCH(bool, valid);
    const std::optional<FileTypeCategory> category = core::parseStoredFileType(stored);
    QCOMPARE(category.has_value(), valid);
    if (!category)
        return;
    QTEST(category->enabled, "enabled");
    QTEST(category->name, "name");
    QTEST(category->extensions.join(u'|'), "extensions");
}

void TestFileTypes::excludedFolder_data()
{
    QTest::addColumn<QString>("stored");
    QTest::addColumn<bool>("valid");
    QTest::addColumn<bool>("enabled");
    QTest::addColumn<QString>("path");
    const auto row = [](const char *stored, bool valid, bool enabled, const char *path) {
        QTest::newRow(*stored ? stored : "empty")
            << QString::fromLatin1(stored) << valid << enabled << QString::fromLatin1(path);
    };
    row("1;C:\\x", true, true, "C:\\x");
    row("0;C:\\x", true, false, "C:\\x");
    row("2;C:\\x", true, false, "C:\\x");
    row(";C:\\x", true, false, "C:\\x");
    row("99999999999999999999;C:\\x", true, false, "C:\\x");
    row("1;C:\\a;b;c", true, true, "C:\\a;b;c");
    row("1;", false, false, ""); // would leave out everything
    row("C:\\x", false, false, "");
    row("", false, false, "");
}

void TestFileTypes::excludedFolder()
{
    QFETCH(QString, stored);
    QFETCH(bool, valid);
    const std::optional<core::ExcludedFolder> folder = core::parseStoredExcludedFolder(stored);
    QCOMPARE(folder.has_value(), valid);
    if (!folder)
        return;
    QTEST(folder->enabled, "enabled");
    QTEST(folder->path, "path");
    QVERIFY(core::parseStoredExcludedFolder(folder->storedText()) == folder);
}

void TestFileTypes::typedExtension_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("stored");
    for (const char *good : {"pdf", ".pdf", "*.PDF", "  .Pdf ", "..pdf", "*pdf"})
        QTest::newRow(good) << QString::fromLatin1(good) << QStringLiteral(".pdf");
    QTest::newRow("double") << QStringLiteral("tar.GZ") << QStringLiteral(".tar.gz");
    QTest::newRow("umlaut") << QStringLiteral("\u00C4ND") << QStringLiteral(".\u00E4nd");
    for (const char *bad : {"",    ".",   "*.", "*",  "a,b", "a)",  "(a",  "a;b",  "a b",   "a\\b",
                            "a/b", "a:b", "a*", "a?", "a|b", "a<b", "a\"", "a\tb", "a\x01", "pdf."})
        QTest::newRow(*bad ? bad : "nothing") << QString::fromLatin1(bad) << QString();
}

void TestFileTypes::typedExtension()
{
    QFETCH(QString, typed);
    QTEST(core::normalisedExtension(typed), "stored");
}

void TestFileTypes::match_data()
{
    QTest::addColumn<QString>("file");
    QTest::addColumn<QString>("category");
    const auto row = [](const char *file, const char *category) {
        QTest::newRow(file) << QString::fromLatin1(file) << QString::fromLatin1(category);
    };
    row("Archive.ZIP", "Compressed Files");
    row("backup.tar.gz", "Compressed Files");
    row(".zip", "Compressed Files");
    row("photo.2024.jpg", "");
    row("name", "");
    row("name.", "");
    row("a..zip", "");
}

void TestFileTypes::match()
{
    QFETCH(QString, file);
    const FileTypeTable &table = core::defaultFileTypes();
    QTEST(names(table, core::FileTypeMatcher(table).match(file)), "category");
}

// Random tables over a small alphabet with letters whose case is not a matter of one bit: sharp s, the Kelvin
// sign, final sigma, dotless i, a letter beyond 16 bits, and half of such a letter.
void TestFileTypes::matchesLikeThePlainRule()
{
    const QStringList letters{
        QStringLiteral("a"),          QStringLiteral("A"),          QStringLiteral("."),
        QStringLiteral("k"),          QStringLiteral("\u212A"),     QStringLiteral("\u00DF"),
        QStringLiteral("\u1E9E"),     QStringLiteral("ss"),         QStringLiteral("\u03C3"),
        QStringLiteral("\u03C2"),     QStringLiteral("\u0130"),     QStringLiteral("i"),
        QStringLiteral("\U00010400"), QStringLiteral("\U00010428"), QString(QChar(0xD801)),
        QString(QChar(0xDC28))};
    QRandomGenerator random(4);
    const auto word = [&](int longest) {
        QString text;
        for (int i = random.bounded(longest + 1); i > 0; --i)
            text += letters[random.bounded(int(letters.size()))];
        return text;
    };
    int hits = 0;
    for (int round = 0; round < 2000; ++round) {
        FileTypeTable table;
        for (int i = random.bounded(5); i >= 0; --i) {
            FileTypeCategory category{QString::number(i), {}, random.bounded(4) > 0};
            for (int k = random.bounded(8); k > 0; --k)
                category.extensions.append((random.bounded(8) > 0 ? QStringLiteral(".") : QString()) +
                                           word(2));
            table.push_back(category);
        }
        const core::FileTypeMatcher matcher(table);
        for (int file = 0; file < 30; ++file) {
            const QString name = word(2) + QLatin1Char('.') + word(3);
            const std::vector<int> expected = plainMatch(table, name);
            hits += expected.empty() ? 0 : 1;
            QVERIFY2(matcher.match(name) == expected, qPrintable(name));
        }
    }
    QVERIFY2(hits > 1000, qPrintable(QString::number(hits)));
}

QTEST_GUILESS_MAIN(TestFileTypes)
#include "tst_file_types.moc"
