// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/engine/CustomFileType.h"

#include <QTest>

#include <random>

using namespace duplicates;
using namespace Qt::StringLiterals;

class CustomFileTypeTest : public QObject
{
    Q_OBJECT

private slots:
    void storedForm_data();
    void storedForm();
    void malformedIsAbsent();
    void readsBackExactly();
};

void CustomFileTypeTest::storedForm_data()
{
    QTest::addColumn<CustomFileType>("type");
    QTest::addColumn<QString>("stored");
    QTest::newRow("plain") << CustomFileType{u"Notes"_s, {u".note"_s, u".memo"_s}} << u"Notes;.note;.memo"_s;
    QTest::newRow("what separates, in a name")
        << CustomFileType{u"a;b \\ (c), d"_s, {u".x"_s}} << u"a\\;b \\\\ (c), d;.x"_s;
    QTest::newRow("and in an extension") << CustomFileType{u"n"_s, {u".;"_s, u".\\"_s}} << u"n;.\\;;.\\\\"_s;
    QTest::newRow("NUL, which a registry text cannot hold")
        << CustomFileType{QString(QChar(u'\0')), {u".0"_s}} << u"\\0;.0"_s;
}

void CustomFileTypeTest::storedForm()
{
    QFETCH(CustomFileType, type);
    QFETCH(QString, stored);
    QVERIFY(type.isValid());
    QCOMPARE(type.storedText(), stored);
    QVERIFY(parseStoredCustomFileType(stored) == type);
}

void CustomFileTypeTest::malformedIsAbsent()
{
    const QString bareNul = u"n;.a"_s + QChar(u'\0');
    for (const QString &stored :
         {u""_s, u"no extension"_s, u";.no name"_s, u"empty extension;.a;"_s, u"dot alone;."_s, u"no dot;a"_s,
          u"ends within an escape;.a\\"_s, u"unknown escape;.a\\n"_s, bareNul})
        QVERIFY2(!parseStoredCustomFileType(stored), qPrintable(stored));
}

void CustomFileTypeTest::readsBackExactly()
{
    const QString alphabet = u";\\.0 ,()aZ\u00e9\u4e2d"_s + QChar(u'\0') + QChar(0xd800);
    std::mt19937 random(7);
    const auto text = [&](qsizetype longest) {
        QString result;
        for (qsizetype length = static_cast<qsizetype>(random()) % longest + 1; length > 0; --length)
            result += alphabet[static_cast<qsizetype>(random()) % alphabet.size()];
        return result;
    };
    for (int round = 0; round < 2000; ++round) {
        CustomFileType type{text(8), {}};
        for (quint32 count = random() % 4 + 1; count > 0; --count)
            type.extensions.append(u'.' + text(5));
        QVERIFY2(parseStoredCustomFileType(type.storedText()) == type, qPrintable(type.storedText()));
    }
}

QTEST_APPLESS_MAIN(CustomFileTypeTest)
#include "tst_custom_file_type.moc"
