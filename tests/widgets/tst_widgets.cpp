// SPDX-License-Identifier: GPL-3.0-or-later
#include "widgets/CardGridLayout.h"
#include "widgets/ClickableLabel.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FLCardButton.h"
#include "widgets/FLTreeView.h"
#include "widgets/NoticeBar.h"
#include "widgets/PathBar.h"
#include "widgets/RowDelegate.h"

#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QTest>
#include <QToolButton>

namespace
{

QList<QToolButton *> shownParts(const PathBar &bar)
{
    QList<QToolButton *> shown;
    for (QToolButton *button : bar.findChildren<QToolButton *>())
        if (button->isVisible())
            shown.append(button);
    return shown;
}

const QStringList longPath{QStringLiteral("C:\\"), QStringLiteral("first folder"),
                           QStringLiteral("second folder"), QStringLiteral("third folder"),
                           QStringLiteral("fourth & last")};

} // namespace

class WidgetsTest : public QObject
{
    Q_OBJECT

private slots:
    void cardsFillTheWidth_data();
    void cardsFillTheWidth();
    void hiddenCardsTakeNoPlace();
    void pathBarShowsAllPartsWhereThereIsRoom();
    void pathBarKeepsItsEndWhereThereIsNot();
    void pathBarReactsWhileItChanges();
    void labelsAreClickedByMouseAndKeyboard();
    void aLabelIsNotClickedByAPressThatLeavesIt();
    void elidedLabelsTellTheWholeText();
    void cardsSayWhatTheyAre();
    void noticesComeAndGo();
    void numbersHaveNoSeparators_data();
    void numbersHaveNoSeparators();
    void oneColumnTakesWhatIsLeft();
};

void WidgetsTest::cardsFillTheWidth_data()
{
    QTest::addColumn<int>("width");
    QTest::addColumn<int>("columns");
    QTest::addColumn<int>("cardWidth");
    QTest::newRow("narrower than a card") << 80 << 1 << 80;
    QTest::newRow("one") << 209 << 1 << 150; // at most 150 wide
    QTest::newRow("exactly two") << 210 << 2 << 100;
    QTest::newRow("two, stretched") << 260 << 2 << 125;
    QTest::newRow("five") << 540 << 5 << 100;
}

void WidgetsTest::cardsFillTheWidth()
{
    QFETCH(int, width);
    QFETCH(int, columns);
    QWidget page;
    auto *grid = new CardGridLayout(100, 150, 10);
    page.setLayout(grid);
    QList<QWidget *> cards;
    for (int i = 0; i < 5; ++i) {
        cards.append(new QWidget(&page));
        cards.last()->setMinimumSize(10, 40);
        grid->addWidget(cards.last());
    }
    grid->setGeometry({0, 0, width, 600});
    QTEST(cards.first()->width(), "cardWidth");
    for (int i = 1; i < 5; ++i) {
        QCOMPARE(cards.at(i)->y(), i / columns * 50);
        QVERIFY(i % columns == 0 ? cards.at(i)->x() == 0
                                 : cards.at(i)->x() > cards.at(i - 1)->geometry().right());
    }
    QCOMPARE(grid->heightForWidth(width), (4 / columns + 1) * 50 - 10);
}

void WidgetsTest::hiddenCardsTakeNoPlace()
{
    QWidget page;
    auto *grid = new CardGridLayout(100, 100, 10);
    page.setLayout(grid);
    auto *first = new QWidget(&page);
    auto *second = new QWidget(&page);
    grid->addWidget(first);
    grid->addWidget(second);
    page.show();
    first->hide();
    grid->setGeometry({0, 0, 300, 100});
    QCOMPARE(second->x(), 0);
    delete first; // as a drive that is pulled out
    QCOMPARE(grid->count(), 1);
}

void WidgetsTest::pathBarShowsAllPartsWhereThereIsRoom()
{
    PathBar bar;
    bar.setPath(longPath);
    bar.resize(1500, bar.sizeHint().height());
    bar.show();
    const QList<QToolButton *> parts = shownParts(bar);
    QCOMPARE(parts.size(), 5);
    QCOMPARE(parts.last()->text(), QStringLiteral("fourth && last")); // no mnemonic
    QCOMPARE(parts.last()->accessibleName(), longPath.last());
    QSignalSpy activated(&bar, &PathBar::partActivated);
    QTest::mouseClick(parts.at(1), Qt::LeftButton);
    QCOMPARE(activated.takeFirst().first().toInt(), 1);
}

void WidgetsTest::pathBarKeepsItsEndWhereThereIsNot()
{
    PathBar bar;
    bar.setPath(longPath);
    bar.resize(260, bar.sizeHint().height());
    bar.show();
    const QList<QToolButton *> parts = shownParts(bar);
    QVERIFY(parts.size() >= 2 && parts.size() < 5);
    QVERIFY(std::any_of(parts.begin(), parts.end(),
                        [](const QToolButton *part) { return part->accessibleName() == longPath.last(); }));
    for (const QToolButton *part : parts)
        QVERIFY(bar.rect().contains(part->geometry()));
    // The rest is in a menu.
    QToolButton *more = parts.front();
    for (QToolButton *part : parts)
        if (part->accessibleName() == QStringLiteral("Folders above"))
            more = part;
    QSignalSpy activated(&bar, &PathBar::partActivated);
    QTest::mouseClick(more, Qt::LeftButton);
    auto *menu = bar.findChild<QMenu *>();
    QVERIFY(menu);
    QCOMPARE(menu->actions().size(), 5 - (parts.size() - 1));
    menu->actions().first()->trigger();
    QCOMPARE(activated.takeFirst().first().toInt(), 0);
    menu->close();
}

void WidgetsTest::pathBarReactsWhileItChanges()
{
    PathBar bar;
    bar.resize(1500, bar.sizeHint().height());
    bar.show();
    bar.setPath(longPath);
    connect(&bar, &PathBar::partActivated, &bar, [&bar](int part) { bar.setPath(longPath.first(part + 1)); });
    QTest::mouseClick(shownParts(bar).at(2), Qt::LeftButton);
    QTest::mouseClick(shownParts(bar).at(0), Qt::LeftButton);
    QCOMPARE(shownParts(bar).size(), 1);
    bar.setPath({});
    QCOMPARE(shownParts(bar).size(), 0);
}

void WidgetsTest::labelsAreClickedByMouseAndKeyboard()
{
    ClickableLabel label(QStringLiteral("<b>Clear</b>"));
    label.resize(100, 30);
    label.show();
    QSignalSpy clicked(&label, &ClickableLabel::clicked);
    QTest::mouseClick(&label, Qt::LeftButton);
    QTest::keyClick(&label, Qt::Key_Return);
    QTest::keyClick(&label, Qt::Key_Space);
    QCOMPARE(clicked.count(), 3);
    QTest::mouseClick(&label, Qt::RightButton);
    QTest::keyClick(&label, Qt::Key_A);
    QCOMPARE(clicked.count(), 3);
    QCOMPARE(label.textFormat(), Qt::PlainText);
}

void WidgetsTest::aLabelIsNotClickedByAPressThatLeavesIt()
{
    ClickableLabel label(QStringLiteral("Clear"));
    label.resize(100, 30);
    label.show();
    QSignalSpy clicked(&label, &ClickableLabel::clicked);
    QTest::mousePress(&label, Qt::LeftButton, {}, QPoint(5, 5));
    QTest::mouseRelease(&label, Qt::LeftButton, {}, QPoint(500, 5));
    QTest::mouseRelease(&label, Qt::LeftButton, {}, QPoint(5, 5)); // a release alone is no click
    QCOMPARE(clicked.count(), 0);
}

void WidgetsTest::elidedLabelsTellTheWholeText()
{
    const QString path = QStringLiteral("C:\\a rather long folder\\with another one in it\\file.txt");
    ElidedLabel label(nullptr, Qt::ElideMiddle);
    label.setText(path);
    label.resize(label.sizeHint().width() + 10, 20);
    label.show();
    QVERIFY(label.toolTip().isEmpty());
    label.resize(100, 20);
    QCOMPARE(label.toolTip(), path);
    QCOMPARE(label.accessibleName(), path);
    QVERIFY(label.minimumSizeHint().width() < 100); // a long text must not widen the window
}

void WidgetsTest::cardsSayWhatTheyAre()
{
    FLCardButton card;
    card.setText(QStringLiteral("Local Disk (C:)"));
    card.setCaption(QStringLiteral("NTFS, half full"));
    const int height = card.sizeHint().height();
    card.setShare(0.5);
    QVERIFY(card.sizeHint().height() >= height);
    QCOMPARE(card.accessibleDescription(), card.caption());
    card.resize(300, card.sizeHint().height());
    card.show();
    QSignalSpy clicked(&card, &QAbstractButton::clicked);
    QTest::keyClick(&card, Qt::Key_Space);
    QTest::mouseClick(&card, Qt::LeftButton);
    QCOMPARE(clicked.count(), 2);
    const QImage half = card.grab().toImage();
    card.setShare(0.95); // nearly full is shown in another colour and length
    QVERIFY(card.grab().toImage() != half);
}

void WidgetsTest::noticesComeAndGo()
{
    QWidget page;
    NoticeBar bar(&page);
    page.resize(400, 60);
    bar.resize(400, 60);
    page.show();
    QVERIFY(!bar.isVisible());
    bar.showNotice({}, QStringLiteral("<i>Saved</i>"));
    QVERIFY(bar.isVisible());
    QCOMPARE(bar.text(), QStringLiteral("<i>Saved</i>"));
    QTest::mouseClick(bar.findChild<QToolButton *>(), Qt::LeftButton);
    QVERIFY(!bar.isVisible());
    QCOMPARE(bar.text(), QString());
}

void WidgetsTest::numbersHaveNoSeparators_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::addColumn<QString>("row");
    QTest::addColumn<QString>("bar");
    QTest::newRow("int") << QVariant(1234567) << QStringLiteral("1234567") << QStringLiteral("1234567");
    QTest::newRow("64 bit") << QVariant(18446744073709551615ULL) << QStringLiteral("18446744073709551615")
                            << QStringLiteral("18446744073709551615");
    QTest::newRow("text") << QVariant(QStringLiteral("a")) << QStringLiteral("a") << QStringLiteral("a");
    QTest::newRow("share") << QVariant(45.25) << QString() << QStringLiteral("45.3 %");
}

void WidgetsTest::numbersHaveNoSeparators()
{
    QFETCH(QVariant, value);
    QFETCH(QString, row);
    const QLocale german(QLocale::German, QLocale::Germany); // 1.234.567 and 45,25
    if (!row.isEmpty())
        QCOMPARE(RowDelegate().displayText(value, german), row);
    QTEST(BarDelegate().displayText(value, german), "bar");
}

void WidgetsTest::oneColumnTakesWhatIsLeft()
{
    QStandardItemModel model(1, 3);
    FLTreeView view;
    view.setModel(&model);
    view.header()->resizeSection(1, 80);
    view.header()->resizeSection(2, 80);
    view.setStretchColumn(0, 120);
    view.resize(600, 200);
    view.show();
    QCOMPARE(view.header()->length(), view.viewport()->width());
    view.resize(200, 200);
    QCOMPARE(view.header()->sectionSize(0), 120); // and the rest is scrolled to
    view.header()->resizeSection(0, 150);         // from now on it is the user's
    view.resize(700, 200);
    QCOMPARE(view.header()->sectionSize(0), 150);
}

QTEST_MAIN(WidgetsTest)
#include "tst_widgets.moc"
