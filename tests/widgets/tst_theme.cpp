// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/FlatStyle.h"
#include "widgets/Theme.h"

#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

namespace
{

QPalette palette(QRgb window, QRgb text, QRgb highlight)
{
    QPalette result;
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        result.setColor(group, QPalette::Window, window);
        result.setColor(group, QPalette::WindowText, text);
        result.setColor(group, QPalette::Highlight, highlight);
    }
    return result;
}

} // namespace

class ThemeTest : public QObject
{
    Q_OBJECT

private slots:
    void textsAreReadableOnEveryPalette_data();
    void textsAreReadableOnEveryPalette();
    void onlyASelectionThatIsNotSeenIsReplaced();
    void theFocusIsSeenOnEveryControl();
};

void ThemeTest::textsAreReadableOnEveryPalette_data()
{
    QTest::addColumn<QPalette>("colors");
    QTest::addColumn<bool>("dark");
    QTest::newRow("light") << palette(0xf3f3f3, 0x1a1a1a, 0x0067c0) << false;
    QTest::newRow("dark") << palette(0x1e1e1e, 0xffffff, 0x0078d4) << true;
    QTest::newRow("pale accent") << palette(0xffffff, 0x000000, 0xffe680) << false;
    QTest::newRow("no accent at all") << palette(0x1e1e1e, 0xffffff, 0x000000) << true;
    QTest::newRow("high contrast") << palette(0x000000, 0xffff00, 0x00ff00) << true;
    QTest::newRow("grey") << palette(0x808080, 0x000000, 0x303030) << false;
}

void ThemeTest::textsAreReadableOnEveryPalette()
{
    QFETCH(QPalette, colors);
    QFETCH(bool, dark);
    QCOMPARE(theme::isDark(colors), dark);
    const theme::Colors c = theme::colors(colors);
    for (const QColor &background : {c.card, c.cardHover})
        QVERIFY(theme::contrast(c.text, background) >= 4.5);
    QVERIFY(theme::contrast(c.textMuted, c.card) >= 4.5);
    QVERIFY(theme::contrast(c.accent, c.card) >= 4.5);
    QVERIFY(theme::contrast(c.accentText, c.accent) >= 4.5);
    QVERIFY(theme::contrast(c.danger, c.card) >= 3);
    QVERIFY(c.accent.hsvSaturation() > 0); // never a grey among greys
}

void ThemeTest::onlyASelectionThatIsNotSeenIsReplaced()
{
    const auto selection = [](QRgb base, QRgb highlight) {
        QPalette system = palette(base, 0, highlight);
        system.setColor(QPalette::Base, base);
        return theme::visibleSelection(system);
    };
    const auto isSet = [](const QPalette &own) {
        return own.isBrushSet(QPalette::Active, QPalette::Highlight);
    };
    QVERIFY(!isSet(selection(0xffffff, 0x3399ff)));
    QVERIFY(!isSet(selection(0xffffff, 0xffe680))); // pale, but chosen
    QVERIFY(!isSet(selection(0xffffff, 0x000000))); // high contrast
    const QPalette own = selection(0x2d2d2d, 0x000000);
    const QColor highlight = own.color(QPalette::Inactive, QPalette::Highlight);
    QVERIFY(theme::contrast(highlight, QColor(0x2d, 0x2d, 0x2d)) >= 2);
    QVERIFY(theme::contrast(highlight, own.color(QPalette::HighlightedText)) >= 4.5);
    QVERIFY(!own.isBrushSet(QPalette::Active, QPalette::Window));
}

void ThemeTest::theFocusIsSeenOnEveryControl()
{
    QApplication::setStyle(new FlatStyle);
    QWidget page;
    auto *quiet = new QToolButton; // as in the head of a page
    quiet->setAutoRaise(true);
    QVBoxLayout layout(&page);
    for (QWidget *control : std::initializer_list<QWidget *>{
             new QPushButton, quiet, new QToolButton, new QCheckBox(QStringLiteral("x")),
             new QRadioButton(QStringLiteral("x")), new QLineEdit, new QSpinBox, new QComboBox,
             new QSlider(Qt::Horizontal)}) {
        control->setFocusPolicy(Qt::StrongFocus);
        layout.addWidget(control);
    }
    page.show();
    QVERIFY(QTest::qWaitForWindowActive(&page));
    page.setAttribute(Qt::WA_KeyboardFocusChange); // as after the first Tab
    for (int index = 0; index < layout.count(); ++index) {
        QWidget *control = layout.itemAt(index)->widget();
        control->clearFocus();
        const QImage without = control->grab().toImage();
        control->setFocus(Qt::TabFocusReason);
        QVERIFY2(control->grab().toImage() != without,
                 qPrintable(QLatin1String(control->metaObject()->className()) + QString::number(index)));
    }
}

QTEST_MAIN(ThemeTest)
#include "tst_theme.moc"
