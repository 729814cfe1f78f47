// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/SizeText.h"

#include <QLocale>
#include <QTest>

#include <limits>

using namespace Qt::StringLiterals;

class TestSizeText : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German)); } // with its decimal comma
    void sizes();
};

void TestSizeText::sizes()
{
    constexpr quint64 kilo = 1024, mega = kilo * kilo, giga = mega * kilo;
    QCOMPARE(core::sizeText(0), u"0.00 KB"_s);
    QCOMPARE(core::sizeText(300), u"0.29 KB"_s);
    QCOMPARE(core::sizeText(128), u"0.13 KB"_s); // exact ties go up: 0.125
    QCOMPARE(core::sizeText(640), u"0.63 KB"_s); // 0.625
    QCOMPARE(core::sizeText(kilo), u"1.00 KB"_s);
    QCOMPARE(core::sizeText(mega - 1), u"1024.00 KB"_s);
    QCOMPARE(core::sizeText(mega), u"1.00 MB"_s);
    QCOMPARE(core::sizeText(giga - 1), u"1024.00 MB"_s);
    QCOMPARE(core::sizeText(giga), u"1.00 GB"_s);
    QCOMPARE(core::sizeText(3 * kilo * giga), u"3072.00 GB"_s);
    QCOMPARE(core::sizeText(std::numeric_limits<quint64>::max()), u"17179869184.00 GB"_s);
}

QTEST_GUILESS_MAIN(TestSizeText)
#include "tst_size_text.moc"
