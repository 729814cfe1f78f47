// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/FakeDialogs.h"
#include "tests/support/TestFolder.h"
#include "widgets/EmptyState.h"
#include "widgets/FLTableView.h"
#include "widgets/FLTreeView.h"
#include "widgets/PageHeader.h"
#include "widgets/ResultView.h"
#include "widgets/SearchLine.h"
#include "widgets/StartPage.h"

#include <QClipboard>
#include <QContextMenuEvent>
#include <QFile>
#include <QHeaderView>
#include <QLabel>
#include <QMenu>
#include <QMimeData>
#include <QPushButton>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QStringListModel>
#include <QTest>
#include <QToolButton>
#include <QUrl>
#include <QVBoxLayout>

using namespace Qt::StringLiterals;

namespace
{

void append(QStandardItem *parent, const QStringList &texts)
{
    QList<QStandardItem *> row;
    for (const QString &text : texts)
        row.append(new QStandardItem(text));
    parent->appendRow(row);
}

// Name and size of three files.
void fill(QStandardItemModel &model)
{
    model.setHorizontalHeaderLabels({u"Name"_s, u"Size"_s, u"Path"_s});
    append(model.invisibleRootItem(), {u"alpha"_s, u"1"_s, u"C:\\a"_s});
    append(model.invisibleRootItem(), {u"beta"_s, u"2"_s, u"C:\\b\tx\ny"_s});
    append(model.invisibleRootItem(), {u"gamma"_s, u"3"_s, u"D:\\c"_s});
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : "(none)"_ba;
}

// Exports what the view shows; the kind of the notice at its end.
NoticeBar::Kind exported(ResultView &view, tests::FakeDialogs &dialogs, const QString &file,
                         const std::function<void()> &meanwhile = {})
{
    std::optional<NoticeBar::Kind> end;
    const auto connection =
        QObject::connect(view.exporter(), &CsvExporter::ended, [&](NoticeBar::Kind kind) { end = kind; });
    dialogs.nextFileToSave.enqueue(file);
    view.exportRows();
    if (meanwhile)
        meanwhile();
    (void)QTest::qWaitFor([&] { return end.has_value(); }, 30'000);
    QObject::disconnect(connection);
    return end.value_or(NoticeBar::Kind::Warning);
}

} // namespace

class PageKitTest : public QObject
{
    Q_OBJECT

private slots:
    void copiesWhatIsShownOfTheSelectedRows();
    void tooManyRowsAreNotCopied();
    void exportsWhatIsShown();
    void aTableThatChangesIsNotExportedHalf();
    void searchingKeepsIndexesRight();
    void emptyListsSayWhy();
    void theTabKeyGoesThroughAList();
    void theMenuKeyShowsOwnActionsFirst();
    void oneColumnAlwaysStays();
    void factsAreExpandedAndExportedWithTheirWay();
    void altLeftGoesBackFromAnywhereOnThePage();
    void theFirstButtonIsTheMainOne();
    void aNarrowHeaderShowsItsWholeDescription();
    void anythingCanBeDropped();
};

void PageKitTest::copiesWhatIsShownOfTheSelectedRows()
{
    QStandardItemModel model;
    fill(model);
    ResultTable list(u"t"_s, u"Files"_s);
    list.setModel(&model);
    list.table()->horizontalHeader()->moveSection(2, 0);
    list.table()->setColumnHidden(1, true);
    list.show();
    QVERIFY(QTest::qWaitForWindowActive(&list));
    list.table()->selectRow(1);
    list.table()->selectionModel()->select(model.index(0, 0),
                                           QItemSelectionModel::Select | QItemSelectionModel::Rows);
    QCOMPARE(list.selected().size(), 2);
    QTest::keyClick(list.table(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), u"C:\\a\talpha\nC:\\b x y\tbeta"_s);
}

void PageKitTest::tooManyRowsAreNotCopied()
{
    QStringListModel model(QStringList(20'001, u"x"_s));
    ResultTable list(u"t"_s, u"Files"_s);
    list.setModel(&model);
    list.show();
    QVERIFY(QTest::qWaitForWindowActive(&list));
    QGuiApplication::clipboard()->setText(u"before"_s);
    QSignalSpy told(&list, &ResultView::told);
    list.table()->selectAll();
    QTest::keyClick(list.table(), Qt::Key_C, Qt::ControlModifier);
    QCOMPARE(QGuiApplication::clipboard()->text(), u"before"_s);
    QCOMPARE(told.size(), 1);
}

void PageKitTest::exportsWhatIsShown()
{
    const tests::TestFolder folder;
    tests::FakeDialogs dialogs;
    QStandardItemModel model;
    fill(model);
    ResultTable list(u"t"_s, u"Files"_s);
    list.setModel(&model);
    list.table()->setColumnHidden(2, true);
    const QString file = folder.path(u"out.csv"_s);
    QCOMPARE(exported(list, dialogs, file), NoticeBar::Kind::Success);
    QCOMPARE(dialogs.fileDialogs.constLast().text, u"Files.csv"_s);
    QCOMPARE(contents(file), "\xEF\xBB\xBFName,Size\r\nalpha,1\r\nbeta,2\r\ngamma,3\r\n"_ba);
    // More rows than wait between the two threads at once.
    QStringListModel many(QStringList(30'000, u"x"_s));
    list.setModel(&many);
    QCOMPARE(exported(list, dialogs, file), NoticeBar::Kind::Success);
    QCOMPARE(contents(file).count('\n'), 30'001);
}

void PageKitTest::aTableThatChangesIsNotExportedHalf()
{
    const tests::TestFolder folder;
    tests::FakeDialogs dialogs;
    QStringListModel model(QStringList(30'000, u"x"_s));
    ResultTable list(u"t"_s, u"Files"_s);
    list.setModel(&model);
    const QString file = folder.makeFile(u"out.csv"_s, "before"_ba);
    QCOMPARE(exported(list, dialogs, file, [&] { model.removeRow(0); }), NoticeBar::Kind::Error);
    QCOMPARE(exported(list, dialogs, file, [&] { list.exporter()->requestStop(); }), NoticeBar::Kind::Info);
    QCOMPARE(contents(file), "before"_ba);
    // A page that goes, or another model, in the middle of it: ends, and nothing is written.
    dialogs.nextFileToSave.enqueue(file);
    list.exportRows();
    list.setModel(nullptr);
    QVERIFY(!list.exporter()->isRunning());
    QCOMPARE(contents(file), "before"_ba);
}

void PageKitTest::searchingKeepsIndexesRight()
{
    QStandardItemModel model;
    fill(model);
    ResultTable list(u"t"_s, u"Files"_s);
    list.setSearch(ResultView::Search::Filter);
    list.setModel(&model);
    list.show();
    QTest::keyClick(list.table(), Qt::Key_F, Qt::ControlModifier);
    QTest::keyClicks(list.searchLine(), u"D: GAM"_s);
    QTRY_COMPARE(list.table()->model()->rowCount(), 1);
    list.table()->selectRow(0);
    QCOMPARE(list.current(), model.index(2, 0));
    QCOMPARE(list.selected(), QModelIndexList{model.index(2, 0)});
    // Sorting is the model's own.
    list.table()->sortByColumn(0, Qt::DescendingOrder);
    QCOMPARE(model.item(0)->text(), u"gamma"_s);
    QCOMPARE(list.current(), model.index(0, 0));
    QTest::keyClick(list.searchLine(), Qt::Key_Escape);
    QTRY_COMPARE(list.table()->model()->rowCount(), 3);
}

void PageKitTest::emptyListsSayWhy()
{
    QStandardItemModel model;
    ResultTable list(u"t"_s, u"Files"_s);
    list.setSearch(ResultView::Search::Filter);
    list.setEmpty({}, u"Nothing was removed"_s);
    list.setModel(&model);
    list.show();
    const auto title = [&list] {
        const auto *empty = list.findChild<EmptyState *>();
        return empty->isVisible() ? empty->findChildren<QLabel *>().at(1)->text() : QString();
    };
    QCOMPARE(title(), u"Nothing was removed"_s);
    fill(model);
    QCOMPARE(title(), QString());
    list.searchLine()->setText(u"no such file"_s);
    QTRY_COMPARE(title(), u"Nothing found"_s);
}

// Past an empty one, whose view is hidden, and by its search into one that has rows.
void PageKitTest::theTabKeyGoesThroughAList()
{
    QWidget page;
    QVBoxLayout layout(&page);
    QPushButton before, after;
    ResultTable list(u"t"_s, u"Files"_s, &page);
    for (QWidget *widget : std::initializer_list<QWidget *>{&before, &list, &after})
        layout.addWidget(widget);
    QWidget::setTabOrder(&before, list.view());
    QWidget::setTabOrder(list.view(), &after);
    QStandardItemModel model;
    list.setModel(&model);
    list.setSearch(ResultView::Search::Filter);
    list.searchLine()->setEnabled(false);
    page.show();
    QVERIFY(QTest::qWaitForWindowActive(&page));
    const auto next = [&](QWidget *from) {
        QTest::keyClick(from, Qt::Key_Tab);
        return page.focusWidget();
    };
    before.setFocus();
    QCOMPARE(next(&before), &after);
    list.setFocus();
    fill(model);
    list.searchLine()->setEnabled(true);
    QCOMPARE(page.focusWidget(), list.view()); // which came later
    before.setFocus();
    QCOMPARE(next(&before), list.searchLine());
    QCOMPARE(next(list.searchLine()), list.view());
    QCOMPARE(list.selected().size(), 1);
}

void PageKitTest::theMenuKeyShowsOwnActionsFirst()
{
    QStandardItemModel model;
    fill(model);
    ResultTable list(u"t"_s, u"Files"_s);
    list.setModel(&model);
    list.addAction(new QAction(u"Restore"_s, &list));
    list.show();
    list.table()->selectRow(1);
    QContextMenuEvent event(QContextMenuEvent::Keyboard, {}, {});
    QCoreApplication::sendEvent(list.table(), &event);
    const auto *menu = list.findChild<QMenu *>(u"resultMenu"_s);
    QVERIFY(menu && menu->isVisible());
    QCOMPARE(menu->actions().constFirst()->text(), u"Restore"_s);
    const QRect row = list.table()->visualRect(model.index(1, 0));
    QVERIFY(QRect(list.table()->viewport()->mapToGlobal(row.topLeft()), row.size()).contains(menu->pos()));
}

void PageKitTest::oneColumnAlwaysStays()
{
    QStandardItemModel model;
    fill(model);
    ResultTable list(u"t"_s, u"Files"_s);
    list.setModel(&model);
    list.show();
    for (const bool last : {false, true}) {
        emit list.table()->horizontalHeader()->customContextMenuRequested({});
        auto *menu = list.findChildren<QMenu *>(u"columnMenu"_s).constLast();
        const QList<QAction *> toggles = menu->actions();
        QCOMPARE(toggles.at(2)->isEnabled(), !last);
        toggles.at(0)->setChecked(false);
        toggles.at(1)->setChecked(false);
    }
}

void PageKitTest::factsAreExpandedAndExportedWithTheirWay()
{
    const tests::TestFolder folder;
    tests::FakeDialogs dialogs;
    QStandardItemModel model;
    model.setHorizontalHeaderLabels({u"Field"_s, u"Value"_s});
    append(model.invisibleRootItem(), {u"Memory"_s, {}});
    append(model.item(0), {u"Slot 1"_s, {}});
    append(model.item(0)->child(0), {u"Size"_s, u"8 GB"_s});
    FieldValueTree tree(u"memoryTreeView"_s, u"Memory"_s);
    tree.showFacts(&model);
    tree.show();
    QVERIFY(tree.tree()->isExpanded(model.item(0)->child(0)->index()));
    const QString file = folder.path(u"out.csv"_s);
    QCOMPARE(exported(tree, dialogs, file), NoticeBar::Kind::Success);
    QCOMPARE(contents(file),
             "\xEF\xBB\xBF"
             "Field,Value\r\nMemory,\r\nMemory > Slot 1,\r\nMemory > Slot 1 > Size,8 GB\r\n"_ba);
}

void PageKitTest::altLeftGoesBackFromAnywhereOnThePage()
{
    QWidget page;
    auto *header = new PageHeader(PageHeader::Kind::Result, &page);
    header->showBack(u"Back to the start page"_s);
    auto *field = new QLineEdit(&page);
    page.show();
    field->setFocus();
    QVERIFY(QTest::qWaitForWindowActive(&page));
    QSignalSpy back(header, &PageHeader::back);
    QTest::keyClick(field, Qt::Key_Left, Qt::AltModifier);
    QCOMPARE(back.size(), 1);
    QCOMPARE(header->backButton()->toolTip(), u"Back to the start page (Alt+Left)"_s);
}

void PageKitTest::theFirstButtonIsTheMainOne()
{
    StartPage page({u"Tool"_s, u"What it does."_s, u"Drop"_s, u"Drop here"_s});
    int first = 0;
    QPushButton *files = page.addSelect({"filesButton", "", u"Files"_s}, [&first] { ++first; });
    page.addSelect({"foldersButton", "", u"Folders"_s}, [] {});
    page.setRecent(u"Recent"_s, {u"C:\\x\\one"_s, u"C:\\"_s});
    page.show();
    QVERIFY(QTest::qWaitForWindowActive(&page));
    QVERIFY(files->hasFocus());
    QTest::keyClick(&page, Qt::Key_O, Qt::ControlModifier);
    QTRY_COMPARE(first, 1);
    QSignalSpy chosen(&page, &StartPage::recentChosen);
    const auto cards = page.findChildren<QAbstractButton *>(u"recentCard"_s);
    QCOMPARE(cards.at(0)->text(), u"one"_s);
    QCOMPARE(cards.at(1)->text(), u"C:\\"_s);
    cards.at(0)->click();
    QCOMPARE(chosen.constLast().constFirst().toString(), u"C:\\x\\one"_s);
}

// Beside its buttons there is little room for the description, and still all its lines are there.
void PageKitTest::aNarrowHeaderShowsItsWholeDescription()
{
    QWidget page;
    QVBoxLayout layout(&page);
    auto *header = new PageHeader(PageHeader::Kind::Start);
    header->setTitle(u"Tool"_s);
    header->setText(u"Completely and thoroughly does what it is there for, wherever that is"_s);
    header->addButton({"", "", u"A button"_s});
    layout.addWidget(header);
    layout.addWidget(new QWidget, 1);
    page.resize(600, 400);
    page.show();
    QVERIFY(QTest::qWaitForWindowActive(&page));
    const int wide = header->height();
    page.resize(250, 400);
    QTRY_VERIFY(header->height() > wide);
    QTRY_VERIFY(header->height() >= header->heightForWidth(header->width()));
    page.resize(600, 400);
    QTRY_COMPARE(header->height(), wide);
}

void PageKitTest::anythingCanBeDropped()
{
    StartPage page({u"Tool"_s, u"What it does."_s, u"Drop"_s, u"Drop here"_s});
    page.setAccepts(DropFrame::Accepts::Anything);
    QSignalSpy dropped(&page, &DropFrame::pathsDropped);
    QMimeData data;
    const auto drop = [&](const QList<QUrl> &urls) {
        data.setUrls(urls);
        QDragEnterEvent enter({}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(&page, &enter);
        if (enter.isAccepted()) {
            QDropEvent event({}, Qt::CopyAction, &data, Qt::LeftButton, {});
            QCoreApplication::sendEvent(&page, &event);
        }
        return enter.isAccepted();
    };
    QVERIFY(!drop({QUrl(u"https://example.org/x.txt"_s)}));
    QVERIFY(drop({QUrl::fromLocalFile(u"C:/a b.txt"_s), QUrl::fromLocalFile(u"D:/folder"_s)}));
    QCOMPARE(dropped.size(), 1);
    QCOMPARE(dropped.constFirst().constFirst().toStringList(),
             (QStringList{u"C:\\a b.txt"_s, u"D:\\folder"_s}));
}

QTEST_MAIN(PageKitTest)
#include "tst_page_kit.moc"
