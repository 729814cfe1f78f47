// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/FakeShell.h"
#include "widgets/CardGridLayout.h"
#include "widgets/ClickableLabel.h"
#include "widgets/ElidedLabel.h"
#include "widgets/FLTableView.h"
#include "widgets/FLTreeView.h"
#include "widgets/NoticeBar.h"
#include "widgets/OpenSeveral.h"
#include "widgets/PathBar.h"
#include "widgets/RowDelegate.h"
#include "widgets/ScanPage.h"
#include "widgets/WrappedLabel.h"

#include <QAccessible>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QProgressBar>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QStringListModel>
#include <QTest>
#include <QToolButton>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

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

const QStringList longPath{u"C:\\"_s, u"first folder"_s, u"second folder"_s, u"third folder"_s,
                           u"fourth & last"_s};

// Counts how often it is asked for a row.
class AskedModel : public QStringListModel
{
public:
    using QStringListModel::QStringListModel;
    QVariant data(const QModelIndex &index, int role) const override
    {
        ++asked;
        return QStringListModel::data(index, role);
    }
    mutable int asked = 0;
};

} // namespace

class WidgetsTest : public QObject
{
    Q_OBJECT

private slots:
    void cardsFillTheWidth();
    void hiddenCardsTakeNoPlace();
    void pathBarKeepsItsEndWhereThereIsNot();
    void pathBarReactsWhileItChanges();
    void labelsAreClickedByMouseAndKeyboard();
    void aLabelIsAButtonForAScreenReader();
    void elidedLabelsTellTheWholeText();
    void noticesBreakLongPaths();
    void wrappedTextKeepsItsWords();
    void scansTellTheirFigures();
    void theTaskbarShowsHowFarAScanIs();
    void numbersHaveNoSeparators();
    void oneColumnTakesWhatIsLeft();
    void anAsteriskExpandsNothing();
    void typingLooksForARowInShortListsOnly();
    void emptyTreesSaySo();
    void aSingleStepMovesNoBar();
    void noNeighbourIsOpened();
    void severalGroupsStartNoPrograms();
};

void WidgetsTest::cardsFillTheWidth()
{
    struct Case {
        int width, columns, cardWidth;
    };
    QWidget page;
    auto *grid = new CardGridLayout(100, 150, 10);
    page.setLayout(grid);
    QList<QWidget *> cards;
    for (int i = 0; i < 5; ++i) {
        cards.append(new QWidget(&page));
        cards.last()->setMinimumSize(10, 40);
        grid->addWidget(cards.last());
    }
    // Narrower than a card; one, as wide as it may be; exactly two; two that are stretched.
    for (const auto &[width, columns, cardWidth] :
         {Case{80, 1, 80}, {209, 1, 150}, {210, 2, 100}, {260, 2, 125}}) {
        grid->setGeometry({0, 0, width, 600});
        QCOMPARE(cards.first()->width(), cardWidth);
        for (int i = 1; i < 5; ++i) {
            QCOMPARE(cards.at(i)->y(), i / columns * 50);
            QVERIFY(i % columns == 0 ? cards.at(i)->x() == 0
                                     : cards.at(i)->x() > cards.at(i - 1)->geometry().right());
        }
        QCOMPARE(grid->heightForWidth(width), (4 / columns + 1) * 50 - 10);
    }
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
        if (part->accessibleName() == u"Folders above"_s)
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
    QCOMPARE(shownParts(bar).last()->text(), u"fourth && last"_s); // no mnemonic
    connect(&bar, &PathBar::partActivated, &bar, [&bar](int part) { bar.setPath(longPath.first(part + 1)); });
    QTest::mouseClick(shownParts(bar).at(2), Qt::LeftButton);
    QTest::mouseClick(shownParts(bar).at(0), Qt::LeftButton);
    QCOMPARE(shownParts(bar).size(), 1);
    bar.setPath({});
    QCOMPARE(shownParts(bar).size(), 0);
}

void WidgetsTest::labelsAreClickedByMouseAndKeyboard()
{
    ClickableLabel label(u"<b>Clear</b>"_s);
    label.resize(100, 30);
    label.show();
    QSignalSpy clicked(&label, &ClickableLabel::clicked);
    QTest::mouseClick(&label, Qt::LeftButton);
    QTest::keyClick(&label, Qt::Key_Return);
    QTest::keyClick(&label, Qt::Key_Space);
    QCOMPARE(clicked.count(), 3);
    QTest::mouseClick(&label, Qt::RightButton);
    QTest::keyClick(&label, Qt::Key_A);
    // A press that leaves the label is no click, nor is a release alone.
    QTest::mousePress(&label, Qt::LeftButton, {}, QPoint(5, 5));
    QTest::mouseRelease(&label, Qt::LeftButton, {}, QPoint(500, 5));
    QTest::mouseRelease(&label, Qt::LeftButton, {}, QPoint(5, 5));
    QCOMPARE(clicked.count(), 3);
    QCOMPARE(label.textFormat(), Qt::PlainText);
}

void WidgetsTest::aLabelIsAButtonForAScreenReader()
{
    ClickableLabel label(u"Clear"_s);
    QSignalSpy clicked(&label, &ClickableLabel::clicked);
    QAccessibleInterface *accessible = QAccessible::queryAccessibleInterface(&label);
    QVERIFY(accessible);
    QCOMPARE(accessible->role(), QAccessible::Button);
    QCOMPARE(accessible->text(QAccessible::Name), u"Clear"_s);
    label.setAccessibleName(u"Clear the list"_s);
    QCOMPARE(accessible->text(QAccessible::Name), u"Clear the list"_s);
    const QString press = QAccessibleActionInterface::pressAction();
    QVERIFY(accessible->actionInterface()->actionNames().contains(press));
    accessible->actionInterface()->doAction(press);
    QCOMPARE(clicked.count(), 1);
    label.setEnabled(false);
    accessible->actionInterface()->doAction(press);
    QCOMPARE(clicked.count(), 1);
}

void WidgetsTest::elidedLabelsTellTheWholeText()
{
    const QString path = u"C:\\a rather long folder\\with another one in it\\file.txt"_s;
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

void WidgetsTest::noticesBreakLongPaths()
{
    const QString path = (u"\\"_s + QString(99, u'm')).repeated(30);
    const QString text = u"C:%1 could not be opened."_s.arg(path);
    QWidget page;
    auto *layout = new QVBoxLayout(&page);
    auto *bar = new NoticeBar;
    layout->addWidget(bar);
    layout->addStretch();
    page.resize(500, 300);
    page.show();
    bar->showNotice(NoticeBar::Kind::Info, text);
    QVERIFY(page.minimumSizeHint().width() < 250);
    QVERIFY(page.minimumSizeHint().height() < 100);
    QVERIFY(page.sizeHint().width() < 700);
    QCoreApplication::processEvents();
    QCOMPARE(page.size(), QSize(500, 300));
    // Several lines, but not the dozens that it would take, and nothing added for anyone who reads it.
    const int line = bar->fontMetrics().lineSpacing();
    QVERIFY(bar->height() > 3 * line);
    QVERIFY(bar->height() < 10 * line);
    QCOMPARE(bar->accessibleName(), text);
    QCOMPARE(bar->text(), text);
    QTest::mouseClick(bar->findChild<QToolButton *>(), Qt::LeftButton);
    QVERIFY(!bar->isVisible());
}

void WidgetsTest::wrappedTextKeepsItsWords()
{
    WrappedLabel label;
    const int line = label.fontMetrics().lineSpacing();
    label.setText(u"Some words"_s);
    QCOMPARE(label.heightForWidth(1000), line);
    QCOMPARE(label.heightForWidth(label.fontMetrics().horizontalAdvance(u"Some wor"_s)), 2 * line);
    label.setText(u"two\nlines"_s);
    QCOMPARE(label.heightForWidth(1000), 2 * line);
    label.setText(QString());
    QVERIFY(label.heightForWidth(0) <= line);
}

void WidgetsTest::scansTellTheirFigures()
{
    ScanPage page;
    const auto label = [&page](const char *name) {
        return page.findChild<QLabel *>(QLatin1StringView(name));
    };
    page.begin(u"Scanning"_s, u"C:\\r"_s);
    QCOMPARE(label("rateLabel")->text(), u"-"_s); // of no time there is none
    page.setItems(50'000);
    QTest::qSleep(1100);
    const qint64 before = page.elapsed();
    page.complete();
    const qint64 after = page.elapsed();
    const qint64 rate = label("rateLabel")->text().toLongLong();
    QVERIFY(rate <= 50'000'000 / before && rate >= 50'000'000 / after);
    // A screen reader hears what the number is, and the number.
    QCOMPARE(label("itemsLabel")->accessibleName(), u"Items: 50000"_s);
    const auto time = [](qint64 ms) {
        return u"Elapsed time: 0:%1"_s.arg(ms / 1000, 2, 10, QLatin1Char('0'));
    };
    QVERIFY(QStringList({time(before), time(after)}).contains(label("timeLabel")->accessibleName()));
}

void WidgetsTest::theTaskbarShowsHowFarAScanIs()
{
    tests::FakeShell shell;
    QWidget window;
    auto *page = new ScanPage(&window);
    page->begin(u"Scanning"_s, u"C:\\r"_s);
    window.show();
    const QStringList &told = shell.taskbarProgress;
    QTRY_COMPARE(told.value(0), u"0/0"_s);
    page->setTotalSteps(10);
    page->setSteps(1);
    QTRY_COMPARE(told.last(), u"1/10"_s);
    window.showMinimized();
    page->setSteps(2);
    QTRY_COMPARE(told.last(), u"2/10"_s);
    page->hide(); // the user looks at another page
    page->setSteps(3);
    QTRY_COMPARE(told.last(), u"3/10"_s);
    page->complete();
    QCOMPARE(told.last(), u"-"_s);
    const qsizetype count = told.size();
    QTest::qWait(600); // two ticks
    QCOMPARE(told.size(), count);
}

void WidgetsTest::numbersHaveNoSeparators()
{
    const QLocale german(QLocale::German, QLocale::Germany); // 1.234.567 and 45,25
    const quint64 large = 18446744073709551615ULL;
    QCOMPARE(RowDelegate().displayText(large, german), u"18446744073709551615"_s);
    QCOMPARE(BarDelegate().displayText(large, german), u"18446744073709551615"_s);
    QCOMPARE(BarDelegate().displayText(45.25, german), u"45.3 %"_s);
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

void WidgetsTest::anAsteriskExpandsNothing()
{
    QStandardItemModel model;
    auto *root = new QStandardItem(u"root"_s);
    root->appendRow(new QStandardItem(u"child"_s));
    root->child(0)->appendRow(new QStandardItem(u"grandchild"_s));
    model.appendRow(root);
    FLTreeView view;
    view.setModel(&model);
    view.setCurrentIndex(root->index());
    view.show();
    QTest::keyClick(&view, Qt::Key_Asterisk, Qt::KeypadModifier);
    QVERIFY(!view.isExpanded(root->index()));
    QTest::keyClick(&view, Qt::Key_Right);
    QVERIFY(view.isExpanded(root->index()));
    QVERIFY(!view.isExpanded(root->child(0)->index()));
}

void WidgetsTest::typingLooksForARowInShortListsOnly()
{
    FLTableView table;
    FLTreeView tree;
    for (QAbstractItemView *view :
         {static_cast<QAbstractItemView *>(&table), static_cast<QAbstractItemView *>(&tree)}) {
        for (const int rows : {500, 100'000}) {
            QStringList texts(rows, u"a"_s);
            texts.last() = u"z"_s;
            AskedModel model(texts);
            view->setModel(&model);
            view->resize(300, 200);
            view->show();
            QVERIFY(QTest::qWaitForWindowExposed(view));
            view->setCurrentIndex(model.index(0));
            model.asked = 0;
            QTest::keyClick(view, Qt::Key_Z);
            QCOMPARE(view->currentIndex().row(), rows == 500 ? rows - 1 : 0);
            QVERIFY(model.asked < 20'000);
        }
    }
}

void WidgetsTest::emptyTreesSaySo()
{
    QStringListModel model({u"row"_s});
    FLTreeView view;
    view.setModel(&model);
    view.setHeaderHidden(true);
    view.resize(300, 200);
    view.show();
    const auto look = [&view](const QString &placeholder) {
        view.setPlaceholder(placeholder);
        return view.viewport()->grab().toImage();
    };
    QCOMPARE(look(u"Nothing."_s), look({}));
    model.setStringList({});
    QVERIFY(look(u"Nothing."_s) != look({}));
}

// What Windows would take for another file.
void WidgetsTest::noNeighbourIsOpened()
{
    tests::FakeShell shell;
    const QString odd = u"C:\\x\\a.exe."_s;
    for (const OpenedSeveral &opened : {openFiles({odd, u"C:\\x\\b"_s}), revealFiles({odd})}) {
        QVERIFY(opened.failed);
        QVERIFY2(opened.notice.startsWith(odd), qPrintable(opened.notice));
    }
    QCOMPARE(shell.opened, QStringList{u"C:\\x\\b"_s});
    QVERIFY(shell.revealed.isEmpty());
}

void WidgetsTest::severalGroupsStartNoPrograms()
{
    tests::FakeShell shell;
    QString notice;
    const auto open = [&](const QStringList &firsts) {
        QMenu menu;
        addOpenFirsts(&menu, firsts, [&](const OpenedSeveral &opened) { notice = opened.notice; });
        menu.actions().first()->trigger();
        return std::exchange(shell.opened, {});
    };
    const QString text = u"C:\\x.exe\\a.txt"_s;
    const QString program = u"C:\\x\\setup.EXE"_s;
    QCOMPARE(open({program, text, u"C:\\x\\run.ps1"_s, u"C:\\x\\exe"_s}),
             (QStringList{text, u"C:\\x\\exe"_s}));
    QCOMPARE(notice, u"Programs were not opened."_s);
    QCOMPARE(open({text, text}), (QStringList{text, text}));
    QVERIFY(notice.isEmpty());
    QCOMPARE(open({program}), QStringList{program}); // which the entry means alone
}

// A folder of thousands of files and no subfolder is one step.
void WidgetsTest::aSingleStepMovesNoBar()
{
    ScanPage page;
    const auto *bar = page.findChild<QProgressBar *>();
    page.begin(u"Scanning"_s, u"C:\\r"_s);
    page.setTotalSteps(1);
    QCOMPARE(bar->maximum(), 0); // goes back and forth
    page.complete();
    QVERIFY(bar->maximum() > 0 && bar->value() == bar->maximum());
    page.begin(u"Scanning"_s, u"C:\\r"_s);
    page.setTotalSteps(2);
    QCOMPARE(bar->maximum(), 2);
}

QTEST_MAIN(WidgetsTest)
#include "tst_widgets.moc"
