// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/FileTypes.h"

#include <QRandomGenerator>
#include <QTest>

using namespace Qt::StringLiterals;
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
    void stored();
    void excludedFolder();
    void typedExtension();
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
    QCOMPARE(texts[7], u"Installer and Executable Files (.exe, .msi, .msix, .appx)"_s);
    QCOMPARE(
        texts[8],
        u"Raster Image Files (.avif, .bmp, .gif, .heif, .heic, .jpg, .jpeg, .jpe, .jif, .jfif, .jfi, .jxl, .png, .psd, .pspimage, .tif, .tiff, .webp)"_s);
    QCOMPARE(core::fileTypeIcon(table[0].name), u":/resources/images/3dImages16.png"_s);
    // Misplaced at first sight, and meant so.
    QCOMPARE(names(table, plainMatch(table, u"a.ogv"_s)), u"Audio Files"_s);
    QCOMPARE(names(table, plainMatch(table, u"a.srt"_s)), u"Video Files"_s);
    QCOMPARE(names(table, plainMatch(table, u"a.cer"_s)), u"Web Files"_s);
}

void TestFileTypes::stored()
{
    struct Case {
        QString stored;
        FileTypeCategory category;
    };
    for (const Case &c :
         {Case{u"0;Font Files (.fnt, .fon, .otf, .ttf)"_s,
               {u"Font Files"_s, {u".fnt"_s, u".fon"_s, u".otf"_s, u".ttf"_s}, false}},
          {u"00;X (.a)"_s, {u"X"_s, {u".a"_s}, true}}, // only "0" disables
          {u" 0;X (.a)"_s, {u"X"_s, {u".a"_s}, true}},
          {u"1;X (.a,.b) "_s, {u"X"_s, {u".a"_s, u".b"_s}, true}},
          {u"1;  X  (  .a ,\t.b)"_s, {u"X"_s, {u".a"_s, u".b"_s}, true}},
          {u"1;X (.a, .b )"_s, {u"X"_s, {u".a"_s, u".b "_s}, true}}, // trimmed before the last character goes
          {u"1;X (.a"_s, {u"X"_s, {u"."_s}, true}},                  // which goes whatever it is
          {u"1;X ()"_s, {u"X"_s, {}, true}},
          {u"1;X (.a,,.b,)"_s, {u"X"_s, {u".a"_s, u".b"_s}, true}},
          {u"1;X (.a) (.b)"_s, {u"X"_s, {u".a) (.b"_s}, true}},
          {u"1;X"_s, {u"X"_s, {}, true}},
          {u"1;"_s, {u""_s, {}, true}},
          {u"1;X;Y (.a;b)"_s, {u"X;Y"_s, {u".a;b"_s}, true}}})
        QVERIFY2(core::parseStoredFileType(c.stored) == c.category, qPrintable(c.stored));
    for (const char *malformed : {"", ";", ";Font Files (.fnt)", "Font Files (.fnt)", "1"})
        QVERIFY2(!core::parseStoredFileType(QString::fromLatin1(malformed)), malformed);
}

void TestFileTypes::excludedFolder()
{
    struct Case {
        QString stored;
        core::ExcludedFolder folder;
    };
    const QString x = u"C:\\x"_s;
    for (const Case &c : {Case{u"1;C:\\x"_s, {true, x}},
                          {u"0;C:\\x"_s, {false, x}},
                          {u"2;C:\\x"_s, {false, x}},
                          {u";C:\\x"_s, {false, x}},
                          {u"99999999999999999999;C:\\x"_s, {false, x}},
                          {u"1;C:\\a;b;c"_s, {true, u"C:\\a;b;c"_s}}}) {
        const std::optional<core::ExcludedFolder> folder = core::parseStoredExcludedFolder(c.stored);
        QVERIFY2(folder == c.folder, qPrintable(c.stored));
        QVERIFY(core::parseStoredExcludedFolder(folder->storedText()) == folder);
    }
    // No path would leave out everything.
    for (const char *malformed : {"1;", "C:\\x", ""})
        QVERIFY2(!core::parseStoredExcludedFolder(QString::fromLatin1(malformed)), malformed);
}

void TestFileTypes::typedExtension()
{
    for (const char *good : {"pdf", ".pdf", "*.PDF", "  .Pdf ", "..pdf", "*pdf"})
        QCOMPARE(core::normalisedExtension(QString::fromLatin1(good)), u".pdf"_s);
    QCOMPARE(core::normalisedExtension(u"tar.GZ"_s), u".tar.gz"_s);
    QCOMPARE(core::normalisedExtension(u"\u00C4ND"_s), u".\u00E4nd"_s);
    for (const char *bad : {"",    ".",   "*.", "*",  "a,b", "a)",  "(a",  "a;b",  "a b",   "a\\b",
                            "a/b", "a:b", "a*", "a?", "a|b", "a<b", "a\"", "a\tb", "a\x01", "pdf."})
        QVERIFY2(core::normalisedExtension(QString::fromLatin1(bad)).isEmpty(), bad);
}

void TestFileTypes::match()
{
    const FileTypeTable &table = core::defaultFileTypes();
    const core::FileTypeMatcher matcher(table);
    const auto category = [&](const char *file) {
        return names(table, matcher.match(QString::fromLatin1(file)));
    };
    for (const char *archive : {"Archive.ZIP", "backup.tar.gz", ".zip"})
        QCOMPARE(category(archive), u"Compressed Files"_s);
    for (const char *other : {"photo.2024.jpg", "name", "name.", "a..zip"})
        QCOMPARE(category(other), QString());
}

// Random tables over a small alphabet with letters whose case is not a matter of one bit: sharp s, the Kelvin
// sign, final sigma, dotless i, a letter beyond 16 bits, and half of such a letter.
void TestFileTypes::matchesLikeThePlainRule()
{
    const QStringList letters{u"a"_s,
                              u"A"_s,
                              u"."_s,
                              u"k"_s,
                              u"\u212A"_s,
                              u"\u00DF"_s,
                              u"\u1E9E"_s,
                              u"ss"_s,
                              u"\u03C3"_s,
                              u"\u03C2"_s,
                              u"\u0130"_s,
                              u"i"_s,
                              u"\U00010400"_s,
                              u"\U00010428"_s,
                              QString(QChar(0xD801)),
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
                category.extensions.append((random.bounded(8) > 0 ? u"."_s : QString()) + word(2));
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
