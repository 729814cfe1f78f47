// SPDX-License-Identifier: GPL-3.0-or-later
#include "core/SizeText.h"

#include <QLocale>
#include <QTest>

#include <limits>

class TestSizeText : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QLocale::setDefault(QLocale(QLocale::German)); } // with its decimal comma
    void sizes_data();
    void sizes();
};

void TestSizeText::sizes_data()
{
    constexpr quint64 kilo = 1024, mega = kilo * kilo, giga = mega * kilo;
    QTest::addColumn<quint64>("bytes");
    QTest::addColumn<QString>("text");
    const auto row = [](quint64 bytes, const char *text) {
        QTest::newRow(text) << bytes << QString::fromLatin1(text);
    };
    row(0, "0.00 KB");
    row(300, "0.29 KB");
    row(128, "0.13 KB"); // exact ties go up: 0.125
    row(640, "0.63 KB"); // 0.625
    row(kilo, "1.00 KB");
    row(mega - 1, "1024.00 KB");
    row(mega, "1.00 MB");
    row(giga - 1, "1024.00 MB");
    row(giga, "1.00 GB");
    row(3 * kilo * giga, "3072.00 GB");
    row(std::numeric_limits<quint64>::max(), "17179869184.00 GB");
}

void TestSizeText::sizes()
{
    QFETCH(quint64, bytes);
    QTEST(core::sizeText(bytes), "text");
}

QTEST_GUILESS_MAIN(TestSizeText)
#include "tst_size_text.moc"
