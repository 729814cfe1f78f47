// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/Settings.h"
#include "settings/FileTypeStore.h"
#include "settings/Settings.h"
#include "tests/support/RegistryTest.h"

#include <QTest>

using namespace Qt::StringLiterals;
using namespace diskusage;
using core::ExcludedFolder;
using core::FileTypeCategory;
using core::FileTypeTable;

namespace
{

const QString key = u"Software\\Folder Size Analyzer"_s;

void store(const QString &name, const QString &text)
{
    settings::writeString(key, name, text);
}

QString stored(const QString &name)
{
    QString text;
    return settings::readString(key, name, text) ? text : u"(absent)"_s;
}

QStringList names(const FileTypeTable &table)
{
    QStringList result;
    for (const FileTypeCategory &category : table)
        result.append(category.name);
    return result;
}

} // namespace

class DiskUsageSettingsTest : public tests::RegistryTest
{
    Q_OBJECT

private slots:
    void withoutStoredCategoriesTheBuiltInOnesCount();
    void categoriesSurviveARoundTrip();
    void aMissingCategoryIsSkippedAndLaterOnesAreRead();
    void exclusionsAreReadFromTenValues();
    void aRemovedExclusionDoesNotComeBack();
    void recentFoldersAreNewestFirst();
    void oneDriveFolderHasNoSeparatorAtItsEnd();
};

void DiskUsageSettingsTest::withoutStoredCategoriesTheBuiltInOnesCount()
{
    FileTypeTable table{{u"left over"_s, {}, true}};
    QVERIFY(!settings::loadFileTypes(table));
    QVERIFY(table.empty());
    QCOMPARE(settings::loadFileTypesOrDefaults(), core::defaultFileTypes());
    settings::writeDword(key, u"FileTypeDataCount"_s, 0);
    QCOMPARE(settings::loadFileTypesOrDefaults().size(), 12U);
    // What is stored is no category at all.
    settings::writeDword(key, u"FileTypeDataCount"_s, 1);
    store(u"FileTypeData0"_s, u";Font Files (.fnt)"_s);
    QCOMPARE(settings::loadFileTypesOrDefaults().size(), 12U);
}

void DiskUsageSettingsTest::categoriesSurviveARoundTrip()
{
    FileTypeTable table = core::defaultFileTypes();
    table[6].enabled = false;
    table[0].extensions.append(u".\u00fcml\u00e4ut"_s);
    settings::saveFileTypes(table);
    QCOMPARE(stored(u"FileTypeData6"_s), u"0;Font Files (.fnt, .fon, .otf, .ttf)"_s);
    quint32 count = 0;
    QVERIFY(settings::readDword(key, u"FileTypeDataCount"_s, count));
    QCOMPARE(count, 12U);
    QCOMPARE(settings::loadFileTypesOrDefaults(), table);
}

void DiskUsageSettingsTest::aMissingCategoryIsSkippedAndLaterOnesAreRead()
{
    settings::writeDword(key, u"FileTypeDataCount"_s, 3);
    store(u"FileTypeData0"_s, u"1;One (.a)"_s);
    store(u"FileTypeData2"_s, u"1;Three (.c)"_s);
    store(u"FileTypeData3"_s, u"1;Beyond the count (.d)"_s);
    QCOMPARE(names(settings::loadFileTypesOrDefaults()), QStringList({u"One"_s, u"Three"_s}));
    settings::writeDword(key, u"FileTypeDataCount"_s, 0xFFFFFFFF); // would take hours
    QCOMPARE(settings::loadFileTypesOrDefaults().size(), 3U);
}

void DiskUsageSettingsTest::exclusionsAreReadFromTenValues()
{
    store(u"ExludeFolder0"_s, u"1;C:\\a;b"_s);
    store(u"ExludeFolder1"_s, u"1;"_s);
    store(u"ExludeFolder4"_s, u"2;C:\\two"_s);
    store(u"ExludeFolder9"_s, u"0;C:\\nine"_s);
    store(u"ExludeFolder10"_s, u"1;C:\\ten"_s);
    store(u"ExcludeFolder2"_s, u"1;C:\\spelled right"_s);
    const std::vector<ExcludedFolder> expected{
        {true, u"C:\\a;b"_s}, {false, u"C:\\two"_s}, {false, u"C:\\nine"_s}};
    QCOMPARE(loadExcludedFolders(), expected);
}

void DiskUsageSettingsTest::aRemovedExclusionDoesNotComeBack()
{
    std::vector<ExcludedFolder> folders;
    for (int i = 0; i < 12; ++i)
        folders.push_back({i % 2 == 0, u"C:\\%1"_s.arg(i)});
    saveExcludedFolders(folders);
    QCOMPARE(stored(u"ExludeFolder9"_s), u"0;C:\\9"_s);
    QCOMPARE(stored(u"ExludeFolder10"_s), u"(absent)"_s);
    folders.resize(1);
    saveExcludedFolders(folders);
    QCOMPARE(loadExcludedFolders(), folders);
}

void DiskUsageSettingsTest::recentFoldersAreNewestFirst()
{
    QStringList recent;
    for (const char *folder : {"C:\\1", "C:\\2", "C:\\3", "C:\\4", "C:\\5", "C:\\6", "c:\\2", "C:\\7"}) {
        recent = withRecentFolder(recent, QLatin1String(folder));
        saveRecentFolders(recent);
    }
    const QStringList expected{u"C:\\7"_s, u"c:\\2"_s, u"C:\\6"_s, u"C:\\5"_s, u"C:\\4"_s, u"C:\\3"_s};
    QCOMPARE(loadRecentFolders(), expected);
    QCOMPARE(stored(u"RecentFile0"_s), u"C:\\7"_s);
    QCOMPARE(stored(u"RecentFile6"_s), u"(absent)"_s);
    // A hole ends nothing, and a longer text than any path is none.
    settings::deleteValue(key, u"RecentFile1"_s);
    store(u"RecentFile2"_s, QString(40'000, QLatin1Char('x')));
    QCOMPARE(loadRecentFolders().size(), 4);
    saveRecentFolders({});
    QVERIFY(loadRecentFolders().isEmpty());
}

void DiskUsageSettingsTest::oneDriveFolderHasNoSeparatorAtItsEnd()
{
    settings::writeString(u"Environment", u"OneDrive", u"C:/Users/x/OneDrive/");
    QCOMPARE(oneDriveFolder(), u"C:\\Users\\x\\OneDrive"_s);
    settings::deleteValue(u"Environment", u"OneDrive");
    QCOMPARE(oneDriveFolder(), QString());
}

QTEST_GUILESS_MAIN(DiskUsageSettingsTest)
#include "tst_disk_usage_settings.moc"
