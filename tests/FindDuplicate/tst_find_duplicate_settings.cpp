// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/CustomFileTypeDialog.h"
#include "FindDuplicate/FindDuplicateOptionsDialog.h"
#include "FindDuplicate/Settings.h"
#include "core/FileTypes.h"
#include "platform/Handle.h"
#include "settings/FileTypeStore.h"
#include "settings/Settings.h"
#include "tests/support/RegistryTest.h"

#include <QCheckBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTest>
#include <QTreeWidget>

using namespace Qt::StringLiterals;
using duplicates::CustomFileType;
using duplicates::defaultFinderSettings;
using duplicates::FinderSettings;

namespace
{

constexpr QStringView key = u"Software\\Fernlight\\Folder Size Analyzer\\Find Duplicate";

FinderSettings loaded()
{
    FinderSettings settings = defaultFinderSettings();
    duplicates::reloadFinderSettings(settings);
    return settings;
}

QString stored(const QString &name)
{
    QString text;
    settings::readString(key, name, text);
    return text;
}

std::optional<quint32> storedNumber(const QString &name)
{
    quint32 number = 0;
    return settings::readDword(key, name, number) ? std::optional(number) : std::nullopt;
}

// The indexes of what is selected.
QList<int> selected(const FinderSettings &settings)
{
    QList<int> indexes;
    for (std::size_t i = 0; i < settings.categories.size(); ++i)
        if (settings.categories[i].selected)
            indexes.append(static_cast<int>(i));
    return indexes;
}

class Options
{
public:
    Options() : dialog(loaded()) { dialog.show(); }

    QTreeWidget *list() { return dialog.findChild<QTreeWidget *>(u"fileTypesTreeWidget"_s); }
    QTreeWidgetItem *row(int index) { return list()->topLevelItem(index); }
    void click(const char *button) { dialog.findChild<QPushButton *>(QLatin1String(button))->click(); }
    QSpinBox *size() { return dialog.findChild<QSpinBox *>(u"smallFileSizeSpinBox"_s); }
    QCheckBox *ignore() { return dialog.findChild<QCheckBox *>(u"ignoreSmallFileCheckBox"_s); }
    // Fills in the dialog that "Add" and "Edit" open, and accepts it.
    void enter(const QString &name, const QString &extensions)
    {
        auto *asked = dialog.findChild<CustomFileTypeDialog *>();
        asked->findChild<QLineEdit *>(u"nameLineEdit"_s)->setText(name);
        asked->findChild<QLineEdit *>(u"extensionsLineEdit"_s)->setText(extensions);
        asked->findChild<QPushButton *>(u"OKButton"_s)->click();
        QTRY_VERIFY(!dialog.findChild<CustomFileTypeDialog *>());
    }

    FindDuplicateOptionsDialog dialog;
};

} // namespace

class FindDuplicateSettingsTest : public tests::RegistryTest
{
    Q_OBJECT

private slots:
    void readsTheStoredFormat();
    void keepsWhatItHeldWithoutTheKey();
    void sharesTheExtensionsOfTheFileTypes();
    void optionsStoreWhatWasChosenAndAccepted();
    void customTypesAreAddedEditedAndRemoved();
    void customTypeDialogTakesOnlyWhatWorks_data();
    void customTypeDialogTakesOnlyWhatWorks();
    void optionsThatAreNotStoredStayOpen();
};

void FindDuplicateSettingsTest::readsTheStoredFormat()
{
    settings::writeDword(key, u"ignoreSmallFile", 0);
    settings::writeDword(key, u"smallFileSize", 0xFFFFFFFF);
    settings::writeDword(key, u"0", 0);
    settings::writeDword(key, u"1", 1);
    settings::writeDword(key, u"2", 2);     // anything but 1
    settings::writeString(key, u"3", u"0"); // another type is absent, and absent is selected
    // Damaged custom types are absent ones.
    settings::writeDword(key, u"CustomFileTypeCount", 0xFFFFFFFF);
    settings::writeString(key, u"CustomFileType0", u"no extension");
    settings::writeString(key, u"CustomFileType2", u"Notes;.note;.n\\;1");
    settings::writeString(key, u"CustomFileType3", u"Logs;.log");
    settings::writeDword(key, u"12", 5);
    settings::writeDword(key, u"15", 5); // of the last one, by the index that it is stored under
    const FinderSettings settings = loaded();
    QCOMPARE(settings.ignoreSmallFile, false);
    QCOMPARE(settings.smallFileSize, -1);
    QCOMPARE(settings.categories.size(), 14u);
    QCOMPARE(selected(settings), (QList<int>{1, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}));
    QCOMPARE(settings.categories[12].name, u"Notes"_s);
    QCOMPARE(settings.categories[12].extensions, (QStringList{u".note"_s, u".n;1"_s}));
}

void FindDuplicateSettingsTest::keepsWhatItHeldWithoutTheKey()
{
    FinderSettings held = defaultFinderSettings();
    QCOMPARE(held.smallFileSize, 20);
    QVERIFY(held.ignoreSmallFile);
    held.smallFileSize = 7;
    held.ignoreSmallFile = false;
    held.categories[4].selected = false;
    duplicates::reloadFinderSettings(held);
    QCOMPARE(held.smallFileSize, 7);
    QCOMPARE(held.ignoreSmallFile, false);
    QVERIFY(!held.categories[4].selected);
    // With the key, what is absent in it is the default.
    settings::writeDword(key, u"11", 0);
    duplicates::reloadFinderSettings(held);
    QCOMPARE(held.smallFileSize, 20);
    QCOMPARE(selected(held), (QList<int>{0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10}));
}

void FindDuplicateSettingsTest::sharesTheExtensionsOfTheFileTypes()
{
    const FinderSettings before = defaultFinderSettings();
    core::FileTypeTable edited = core::defaultFileTypes();
    std::swap(edited[1], edited[5]);
    edited[5].extensions = QStringList{u".mine"_s};
    edited[0].enabled = false; // is not counted by the analyzer, and compared here all the same
    edited.erase(edited.begin() + 3);
    edited.push_back({u"Another"_s, {u".another"_s}, true});
    settings::saveFileTypes(edited);
    for (const bool stored : {false, true}) {
        if (stored)
            settings::writeDword(key, u"11", 0);
        FinderSettings held = before;
        duplicates::reloadFinderSettings(held);
        QCOMPARE(held.categories.size(), 12u);
        for (std::size_t i = 0; i < 12; ++i) {
            QCOMPARE(held.categories[i].name, before.categories[i].name);
            QCOMPARE(held.categories[i].extensions,
                     i == 1 ? QStringList{u".mine"_s} : before.categories[i].extensions);
            QCOMPARE(held.categories[i].selected, !stored || i != 11);
        }
    }
}

void FindDuplicateSettingsTest::optionsStoreWhatWasChosenAndAccepted()
{
    for (const char *button : {"CancelButton", "OKButton"}) {
        QVERIFY(!settings::keyExists(key));
        Options options;
        QCOMPARE(options.list()->topLevelItemCount(), 12);
        QCOMPARE(options.row(5)->text(0), core::defaultFileTypes()[5].displayText());
        QVERIFY(options.ignore()->isChecked());
        QCOMPARE(options.size()->value(), 20);
        options.click("selectNoneButton");
        QVERIFY(selected(options.dialog.edited()).isEmpty());
        options.click("selectAllButton");
        QCOMPARE(selected(options.dialog.edited()).size(), 12);
        options.row(5)->setCheckState(0, Qt::Unchecked);
        options.ignore()->setChecked(false);
        options.size()->setValue(20'000);
        options.click(button);
    }
    QCOMPARE(storedNumber(u"5"_s), std::optional(quint32{0}));
    QCOMPARE(storedNumber(u"11"_s), std::optional(quint32{1}));
    QCOMPARE(storedNumber(u"smallFileSize"_s), std::optional(quint32{10240})); // the most that is accepted
    QCOMPARE(storedNumber(u"ignoreSmallFile"_s), std::optional(quint32{0}));
    QCOMPARE(selected(loaded()), (QList<int>{0, 1, 2, 3, 4, 6, 7, 8, 9, 10, 11}));
    // A number beyond what the box offers survives.
    settings::writeDword(key, u"smallFileSize", 50'000);
    Options beyond;
    QCOMPARE(beyond.size()->value(), 50'000);
    beyond.click("OKButton");
    QCOMPARE(loaded().smallFileSize, 50'000);
}

void FindDuplicateSettingsTest::customTypesAreAddedEditedAndRemoved()
{
    {
        Options options;
        options.click("addButton");
        options.enter(u"Notes"_s, u"note, *.TXT2"_s);
        options.click("addButton");
        options.enter(u"a;b\\c"_s, u".log"_s);
        options.row(12)->setCheckState(0, Qt::Unchecked);
        options.click("OKButton");
    }
    QCOMPARE(stored(u"CustomFileType0"_s), u"Notes;.note;.txt2"_s);
    QCOMPARE(loaded().customTypes[1].name, u"a;b\\c"_s);
    QVERIFY(!loaded().categories[12].selected);
    {
        Options options;
        options.list()->setCurrentItem(options.row(13));
        options.click("editButton");
        options.enter(u"Logs"_s, u".log .trace"_s);
        options.list()->setCurrentItem(options.row(12));
        // Whoever is told of another current row reads the types by the rows.
        bool fits = true;
        const auto look = [&] {
            const auto types = static_cast<int>(options.dialog.edited().categories.size());
            fits = fits && options.list()->topLevelItemCount() == types;
        };
        connect(options.list(), &QTreeWidget::currentItemChanged, this, look);
        connect(options.list(), &QTreeWidget::itemChanged, this, look);
        options.click("removeButton");
        QVERIFY(fits);
        QCOMPARE(options.list()->currentItem(), options.row(12));
        QVERIFY(options.dialog.findChild<QPushButton *>(u"removeButton"_s)->isEnabled());
        options.click("OKButton");
    }
    // The flag of the type behind the removed one moves with it, and nothing stays behind.
    const FinderSettings now = loaded();
    QCOMPARE(now.customTypes, (std::vector<CustomFileType>{{u"Logs"_s, {u".log"_s, u".trace"_s}}}));
    QVERIFY(now.categories[12].selected);
    QVERIFY(!storedNumber(u"13"_s));
    QVERIFY(stored(u"CustomFileType1"_s).isEmpty());
    Options options;
    options.list()->setCurrentItem(options.row(3));
    QVERIFY(!options.dialog.findChild<QPushButton *>(u"removeButton"_s)->isEnabled());
    QVERIFY(!options.dialog.findChild<QPushButton *>(u"editButton"_s)->isEnabled());
}

void FindDuplicateSettingsTest::customTypeDialogTakesOnlyWhatWorks_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("extensions");
    QTest::addColumn<QStringList>("taken");
    QTest::addColumn<QString>("remark");
    const QString name = u"Notes"_s;
    QTest::newRow("good") << name << u"memo;.MEMO"_s << QStringList{u".memo"_s} << QString();
    QTest::newRow("two dots never match") << name << u".tar.gz"_s << QStringList() << QString();
    QTest::newRow("none") << name << u" , "_s << QStringList() << QString();
    QTest::newRow("no character of a file name") << name << u"a:b"_s << QStringList() << QString();
    QTest::newRow("no name") << u"  "_s << u".memo"_s << QStringList() << QString();
    QTest::newRow("a name that is taken") << u"pictures"_s << u".memo"_s << QStringList() << QString();
    QTest::newRow("the type that comes first takes the files")
        << name << u".raw JPG"_s << QStringList{u".raw"_s, u".jpg"_s}
        << u"\".jpg\" already belongs to Pictures, which goes first."_s;
    QTest::newRow("one that is left out, and one behind")
        << name << u".log .note"_s << QStringList{u".log"_s, u".note"_s} << QString();
}

void FindDuplicateSettingsTest::customTypeDialogTakesOnlyWhatWorks()
{
    QFETCH(const QString, name);
    QFETCH(const QString, extensions);
    CustomFileTypeDialog dialog({},
                                {{u"Pictures"_s, {u".jpg"_s, u".png"_s}, true},
                                 {u"Left out"_s, {u".log"_s}, false},
                                 {u"Behind"_s, {u".note"_s}, true}},
                                2);
    dialog.findChild<QLineEdit *>(u"nameLineEdit"_s)->setText(name);
    dialog.findChild<QLineEdit *>(u"extensionsLineEdit"_s)->setText(extensions);
    const bool mayBeAccepted = dialog.findChild<QPushButton *>(u"OKButton"_s)->isEnabled();
    QTEST(mayBeAccepted && dialog.entered() ? dialog.entered()->extensions : QStringList(), "taken");
    const QString said = dialog.findChild<QLabel *>(u"problemLabel"_s)->text();
    QTEST(mayBeAccepted && said.contains(u"belongs"_s) ? said : QString(), "remark");
}

void FindDuplicateSettingsTest::optionsThatAreNotStoredStayOpen()
{
    {
        // Below a key that goes with the session nothing is made that stays.
        platform::RegKey session;
        QCOMPARE(RegCreateKeyExW(HKEY_CURRENT_USER, L"Software\\Fernlight", 0, nullptr, REG_OPTION_VOLATILE,
                                 KEY_ALL_ACCESS, nullptr, session.put(), nullptr),
                 ERROR_SUCCESS);
    }
    Options options;
    options.row(3)->setCheckState(0, Qt::Unchecked);
    options.click("OKButton");
    QVERIFY(options.dialog.isVisible());
    const auto *notStored = options.dialog.findChild<QLabel *>(u"notStoredLabel"_s);
    QVERIFY(notStored->isVisible());
    tests::RegistryGuard(); // the key is gone
    options.click("OKButton");
    QVERIFY(!options.dialog.isVisible());
    QVERIFY(!loaded().categories[3].selected);
}

QTEST_MAIN(FindDuplicateSettingsTest)

#include "tst_find_duplicate_settings.moc"
