// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/QrEncoder.h"

#include <QTest>

using core::QrCorrection;
using namespace Qt::StringLiterals;

class TestQrEncoder : public QObject
{
    Q_OBJECT

private slots:
    void howMuchFits_data();
    void howMuchFits();
    void partOfALongText();
    void encodesWhatIsBehindAZeroByte();
};

void TestQrEncoder::howMuchFits_data()
{
    QTest::addColumn<QString>("character");
    QTest::addColumn<QList<int>>("most"); // by correction, from the least
    QTest::newRow("digits") << u"7"_s << QList{7089, 5596, 3993, 3057};
    QTest::newRow("the code's own alphabet") << u":"_s << QList{4296, 3391, 2420, 1852};
    QTest::newRow("lower case") << u"a"_s << QList{2953, 2331, 1663, 1273};
    QTest::newRow("two bytes each") << u"\u00fc"_s << QList{1476, 1165, 831, 636};
    QTest::newRow("four bytes each") << u"\U0001f332"_s << QList{738, 582, 415, 318};
}

void TestQrEncoder::howMuchFits()
{
    QFETCH(QString, character);
    QFETCH(QList<int>, most);
    for (int level = 0; level < most.size(); ++level) {
        const auto correction = static_cast<QrCorrection>(level);
        const core::QrCode largest = core::encodeQr(character.repeated(most[level]), correction);
        QVERIFY(largest.matrix);
        QCOMPARE(largest.matrix->size(), 177);
        QCOMPARE(largest.tooLongBy, 0);
        const core::QrCode beyond = core::encodeQr(character.repeated(most[level] + 3), correction);
        QVERIFY(!beyond.matrix);
        QCOMPARE(beyond.tooLongBy, 3);
    }
}

// One letter at the end turns thousands of digits that fit into a text that does not.
void TestQrEncoder::partOfALongText()
{
    QCOMPARE(core::encodeQr(QString(7000, u'1') + u"ab"_s, QrCorrection::Low).tooLongBy, 2);
    QCOMPARE(core::encodeQr(QString(4000, u'A') + u"1a"_s, QrCorrection::Low).tooLongBy, 1);
    QVERIFY(!core::encodeQr({}, QrCorrection::Low).matrix);
}

void TestQrEncoder::encodesWhatIsBehindAZeroByte()
{
    const QString start = u"12"_s;
    const auto whole = core::encodeQr(start + QChar(0) + u"345"_s, QrCorrection::High).matrix;
    QVERIFY(whole);
    QVERIFY(whole != core::encodeQr(start, QrCorrection::High).matrix);
    QVERIFY(whole != core::encodeQr(start + QChar(0) + u"346"_s, QrCorrection::High).matrix);
}

QTEST_GUILESS_MAIN(TestQrEncoder)
#include "tst_qr_encoder.moc"
