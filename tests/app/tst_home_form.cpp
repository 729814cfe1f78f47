// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/HomeForm.h"
#include "app/ModuleCard.h"
#include "app/Resources.h"
#include "app/StarredModules.h"
#include "settings/Keys.h"
#include "settings/Settings.h"
#include "tests/app/LogCapture.h"
#include "tests/support/TestPrefix.h"

#include <QApplication>
#include <QFile>
#include <QLineEdit>
#include <QScrollArea>
#include <QSignalSpy>
#include <QTest>

#include <algorithm>

using namespace Qt::StringLiterals;

class tst_HomeForm : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void cardsOpenAndStarsStarByMouseAndKeyboard();
    void remembersTheStars();
    void reflowsWithTheWidth();
    void laysOutOnlyWhenItMust();
    void movesWithTheArrowsAndTheTabKey();
    void searches();
    void cutsNoDescription();
    void starsAreReadAndWritten();
    void tracesTheSplit();

private:
    // A shown page on what is stored.
    void open(QSize size = {986, 600});
    QList<int> placed() const; // ids, row by row
    int columns() const { return m_log->numbers(u"columnCount:"_s).last(); }
    QWidget *contents() const { return m_form->findChild<QScrollArea *>()->widget(); }
    ModuleCard *focused() const { return qobject_cast<ModuleCard *>(QApplication::focusWidget()); }
    static QString stored();

    std::optional<tests::LogCapture> m_log;
    std::optional<tests::RegistryGuard> m_registry;
    std::optional<HomeForm> m_form;
};

void tst_HomeForm::initTestCase()
{
    initResources();
    QApplication::setStyle(u"Fusion"_s);
}

void tst_HomeForm::init()
{
    m_log.emplace();
    m_registry.emplace();
}

void tst_HomeForm::cleanup()
{
    m_form.reset();
    m_registry.reset();
    m_log.reset();
}

void tst_HomeForm::open(QSize size)
{
    m_form.emplace();
    m_form->resize(size);
    m_form->show();
    m_form->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&*m_form));
}

QString tst_HomeForm::stored()
{
    QString text;
    settings::readString(settings::keys::root, u"StarredWidget", text);
    return text;
}

// Read from where the cards stand on the page, not from the layout's own account.
QList<int> tst_HomeForm::placed() const
{
    QList<ModuleCard *> cards = contents()->findChildren<ModuleCard *>();
    cards.removeIf([](const ModuleCard *card) { return !card->isVisible(); });
    std::ranges::sort(cards, [](const ModuleCard *a, const ModuleCard *b) {
        return a->y() != b->y() ? a->y() < b->y() : a->x() < b->x();
    });
    QList<int> ids;
    for (const ModuleCard *card : cards)
        ids.append(card->moduleId());
    return ids;
}

void tst_HomeForm::cardsOpenAndStarsStarByMouseAndKeyboard()
{
    open({986, 2000});
    QSignalSpy opened(&*m_form, &HomeForm::openModule);
    const auto shows = [](const ModuleCard *card, const char *image) {
        return card->starButton()->icon().pixmap(16).toImage() ==
               QPixmap(u":/resources/images/"_s + QLatin1StringView(image)).toImage();
    };
    QVERIFY(shows(m_form->card(9), "star16.png"));
    QVERIFY(shows(m_form->card(6), "starBlack16.png"));
    // Automation knows the slots.
    const auto invoke = [this](const char *name) {
        return QMetaObject::invokeMethod(&*m_form, QByteArray("on_") + name + "_clicked");
    };
    QList<int> expected;
    for (const Module &row : moduleTable().rows()) {
        ModuleCard *card = m_form->card(row.id);
        QVERIFY2(QFile::exists(row.iconPath()), row.cardTitle);
        QVERIFY(!card->starButton()->accessibleName().isEmpty());
        QTest::mouseClick(card, Qt::LeftButton);
        QTest::keyClick(card, Qt::Key_Return);
        QTest::keyClick(card, Qt::Key_Space);
        QVERIFY(invoke(row.cardName));
        expected += {row.id, row.id, row.id, row.id};

        const char *before = shows(card, "star16.png") ? "star16.png" : "starBlack16.png";
        QTest::mouseClick(card->starButton(), Qt::LeftButton);
        QVERIFY2(!shows(card, before), row.starName);
        QTest::keyClick(card->starButton(), Qt::Key_Return);
        QVERIFY2(shows(card, before), row.starName);
        QTest::keyClick(card, Qt::Key_S);
        QVERIFY2(!shows(card, before), row.starName);
        QVERIFY(invoke(row.starName));
        QVERIFY2(shows(card, before), row.starName);
    }
    QTest::mouseClick(m_form->card(2), Qt::LeftButton, {}, QPoint(1, 1)); // the gap between cards
    QList<int> got;
    for (const QList<QVariant> &arguments : opened)
        got.append(arguments.first().toInt());
    QCOMPARE(got, expected);
}

void tst_HomeForm::remembersTheStars()
{
    open();
    QCOMPARE(m_log->values(u"loadStarredWidgetList:"_s), tests::strings({"9,2,5"}));
    QList<int> expected{9, 2, 5};
    for (const int id : moduleTable().catalogue()) {
        if (!expected.contains(id))
            expected.append(id);
    }
    QCOMPARE(placed(), expected);
    QVERIFY(!settings::valueExists(settings::keys::root, u"StarredWidget"));
    m_form->on_TrackCleanerStarButton_clicked();
    m_form->on_AutoDarkModeStarButton_clicked();
    QCOMPARE(stored(), u"9,2,5,6,0"_s);
    m_form->on_FolderSizeAnalyzerStarButton_clicked();
    QCOMPARE(stored(), u"9,5,6,0"_s);
    open();
    QCOMPARE(m_log->values(u"loadStarredWidgetList:"_s).last(), u"9,5,6,0"_s);
    QCOMPARE(placed().first(4), (QList<int>{9, 5, 6, 0}));

    settings::writeString(settings::keys::root, u"StarredWidget", u"99,7");
    open();
    m_form->on_MyTrayIconStarButton_clicked();
    QCOMPARE(stored(), u"99,7,12"_s);

    // The last star goes from the page and stays stored.
    settings::writeString(settings::keys::root, u"StarredWidget", u"9");
    open();
    QVERIFY(m_form->card(9)->starButton()->toolTip().contains(u"back at the next start"_s));
    m_form->on_LarkspurSettingsStarButton_clicked();
    QCOMPARE(placed().first(), 0);
    QCOMPARE(stored(), u"9"_s);
}

void tst_HomeForm::reflowsWithTheWidth()
{
    open({700, 500});
    QSet<int> seen;
    for (int width = 700; width < 1800; width += 37) {
        m_form->resize(width, 500);
        QTest::qWait(5);
        const int count = contents()->width() / ModuleCard::narrowest(m_form->font());
        QCOMPARE(columns(), count);
        seen.insert(count);
        const QList<int> ids = placed();
        QCOMPARE(ids.size(), 21);
        for (int i = 0; i < ids.size(); ++i) {
            const QRect place = m_form->card(ids[i])->geometry();
            QCOMPARE(place.y() == m_form->card(ids[0])->y(), i < count);
            QVERIFY(place.left() >= 0 && place.right() < contents()->width());
            QCOMPARE(contents()->width() / place.width(), count); // as wide as may be, and no wider
        }
    }
    QVERIFY(seen.size() >= 4);

    m_form->findChild<QScrollArea *>()->setFixedWidth(200); // narrower than a card
    QTRY_COMPARE(columns(), 0);
    QCOMPARE(placed().size(), 21);
    QVERIFY(m_form->card(5)->y() > m_form->card(2)->y());
}

void tst_HomeForm::laysOutOnlyWhenItMust()
{
    open({986, 600});
    const auto lines = [this] { return m_log->values(u"columnCount:"_s).size(); };
    QTRY_COMPARE(lines(), 1); // the showing
    m_form->resize(990, 610);
    QTest::qWait(50);
    QCOMPARE(lines(), 1);
    m_form->resize(1500, 610);
    QTRY_COMPARE(lines(), 2);
    m_form->hide();
    m_form->show();
    QTRY_COMPARE(lines(), 3);
    m_form->on_HotkeyStarButton_clicked();
    QCOMPARE(lines(), 4);
}

void tst_HomeForm::movesWithTheArrowsAndTheTabKey()
{
    open({986, 600});
    const int count = columns();
    const QList<int> ids = placed();
    QVERIFY(count > 1 && ids.size() % count != 1);
    const auto press = [this](Qt::Key key) {
        QTest::keyClick(QApplication::focusWidget(), key);
        return focused() ? focused()->moduleId() : -1;
    };
    m_form->card(ids[0])->setFocus();
    QCOMPARE(press(Qt::Key_Left), ids[0]);
    QCOMPARE(press(Qt::Key_Right), ids[1]);
    QCOMPARE(press(Qt::Key_Down), ids[1 + count]);
    QCOMPARE(press(Qt::Key_Left), ids[count]);
    QCOMPARE(press(Qt::Key_Left), ids[count - 1]); // to the end of the row above
    QCOMPARE(press(Qt::Key_End), ids.last());
    QVERIFY(m_form->rect().contains(m_form->card(ids.last())->mapTo(&*m_form, QPoint(20, 20))));
    QCOMPARE(press(Qt::Key_Right), ids.last());
    QCOMPARE(press(Qt::Key_Up), ids[ids.size() - 1 - count]);
    QCOMPARE(press(Qt::Key_Home), ids[0]);
    QCOMPARE(press(Qt::Key_Up), -1);
    QVERIFY(m_form->findChild<QLineEdit *>()->hasFocus());
    QCOMPARE(press(Qt::Key_Down), ids[0]);

    // A starred card takes the focus with it.
    m_form->card(7)->setFocus();
    QCOMPARE(press(Qt::Key_S), 7);
    QCOMPARE(placed().indexOf(7), 3);
    // From the star the arrows go on to other cards.
    m_form->card(7)->starButton()->setFocus();
    QCOMPARE(press(Qt::Key_Left), placed()[2]);

    // The tab key stops at the cards once.
    m_form->card(5)->setFocus();
    QTest::keyClick(&*m_form, Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), m_form->card(5)->starButton());
    QTest::keyClick(&*m_form, Qt::Key_Tab);
    QCOMPARE(QApplication::focusWidget(), m_form->findChild<QLineEdit *>());
    QTest::keyClick(&*m_form, Qt::Key_Tab);
    QCOMPARE(focused(), m_form->card(5));
}

void tst_HomeForm::searches()
{
    open({986, 600});
    auto *search = m_form->findChild<QLineEdit *>();
    QSignalSpy opened(&*m_form, &HomeForm::openModule);
    m_form->card(2)->setFocus();
    QTest::keyClick(&*m_form, Qt::Key_F, Qt::ControlModifier);
    QVERIFY(search->hasFocus());
    QTest::keyClicks(search, u"DUPLICATE  image"_s);
    QCOMPARE(placed(), QList<int>{20});
    QTest::keyClick(search, Qt::Key_Return);
    QCOMPARE(opened.size(), 1);
    QCOMPARE(opened.first().first().toInt(), 20);

    search->setText(u"zebra"_s);
    QVERIFY(placed().isEmpty());
    QTest::keyClick(search, Qt::Key_Return);
    QTest::keyClick(search, Qt::Key_Down);
    QCOMPARE(opened.size(), 1);
    QTest::keyClick(search, Qt::Key_Escape);
    QVERIFY(search->text().isEmpty());
    QCOMPARE(placed().size(), 21);
}

// Paints each card as it stands and again with room to spare below: nothing may appear there, and the last
// rows of the card as it stands are free of ink.
void tst_HomeForm::cutsNoDescription()
{
    for (const double points : {9.0, 20.0}) { // Windows' default and its largest
        QFont font = QApplication::font();
        font.setPointSizeF(points);
        m_form.emplace();
        m_form->setFont(font);
        m_form->resize(1100, 800);
        m_form->show();
        QVERIFY(QTest::qWaitForWindowExposed(&*m_form));
        for (const Module &row : moduleTable().rows()) {
            ModuleCard *card = m_form->card(row.id);
            QVERIFY2(card->height() >= card->heightForWidth(card->width()), row.cardTitle);
            const auto inkBelow = [card](int top) {
                const QImage image =
                    card->grab(QRect(20, top, card->width() - 40, card->height() - 8 - top)).toImage();
                for (int y = 0; y < image.height(); ++y) {
                    for (int x = 0; x < image.width(); ++x) {
                        if (image.pixel(x, y) != image.pixel(0, image.height() - 1))
                            return true;
                    }
                }
                return false;
            };
            QVERIFY(inkBelow(20));
            QVERIFY2(!inkBelow(card->heightForWidth(card->width()) - 16), row.cardTitle);
        }
    }
}

void tst_HomeForm::starsAreReadAndWritten()
{
    struct Case {
        QString text;
        QList<int> starred;
        QString written;
        QList<int> arranged;
    };
    for (const Case &c : {Case{u""_s, {}, u""_s, {1, 2, 4, 5}},
                          {u" 9, 2"_s, {2, 9}, u"9,2"_s, {2, 1, 4, 5}},
                          {u"x,,3,1.5,0x4,"_s, {3}, u"3"_s, {1, 2, 4, 5}},
                          {u"4294967298,4"_s, {4}, u"4"_s, {4, 1, 2, 5}},
                          {u"99,-1,8"_s, {-1, 8, 99}, u"99,-1,8"_s, {1, 2, 4, 5}}, // of another version
                          {u"5,2,5"_s, {2, 5}, u"5,2,5"_s, {5, 2, 1, 4}}}) {
        const StarredModules modules(c.text);
        QList<int> found;
        for (int id = -3; id < 120; ++id) {
            if (modules.contains(id))
                found.append(id);
        }
        QCOMPARE(found, c.starred);
        QCOMPARE(modules.text(), c.written);
        QCOMPARE(modules.arranged({1, 2, 4, 5}), c.arranged);
    }
    // An id that stands twice is unstarred at once.
    StarredModules twice(u"5,2,5"_s);
    twice.toggle(5);
    QCOMPARE(twice.text(), u"2,5"_s);
    QCOMPARE(twice.arranged({1, 2, 4, 5}), (QList<int>{2, 1, 4, 5}));
}

void tst_HomeForm::tracesTheSplit()
{
    StarredModules(u"10,2,5"_s);
    QCOMPARE(m_log->values(u"index:"_s), (tests::strings({"2", "1"})));
    QCOMPARE(m_log->values(u"moduleIndexStr:"_s), (tests::strings({"10", "2"})));
    QCOMPARE(m_log->values(u"dataStr:"_s), (tests::strings({"2,5", "5"})));
    // Of a damaged value only the beginning is read: each step logs all that is left.
    QVERIFY(StarredModules(u"10,2,"_s.repeated(7200)).text().size() < 1000);
    QVERIFY(m_log->values(u"dataStr:"_s).size() < 1000);
    QVERIFY(StarredModules(QString(30'000, u'1')).text().isEmpty());
}

QTEST_MAIN(tst_HomeForm)

#include "tst_home_form.moc"
