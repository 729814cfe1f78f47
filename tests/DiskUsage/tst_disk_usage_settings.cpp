// SPDX-License-Identifier: GPL-3.0-or-later
#include "DiskUsage/Settings.h"
#include "app/settings/FileTypeStore.h"
#include "app/settings/Settings.h"
#include "tests/support/TestPrefix.h"

#include <QTest>

using namespace diskusage;
using core::ExcludedFolder;
using core::FileTypeCategory;
using core::FileTypeTable;

namespace
{

const QString key = QStringLiteral("Software\\Folder Size Analyzer");

void store(const QString &name, const QString &text)
{
    settings::writeString(key, name, text);
}

QString stored(const QString &name)
{
    QString text;
    return settings::readString(key, name, text) ? text : QStringLiteral("(absent)");
}

QStringList names(const FileTypeTable &table)
{
    QStringList result;
    for (const FileTypeCategory &category : table)
        result.append(category.name);
    return result;
}

} // namespace

class DiskUsageSettingsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { tests::requireTestPrefix(); }
    void init() { m_guard = std::make_unique<tests::RegistryGuard>(); }
    void cleanup() { m_guard.reset(); }

    void withoutStoredCategoriesTheBuiltInOnesCount();
    void categoriesSurviveARoundTrip();
    void aMissingCategoryIsSkippedAndLaterOnesAreRead();
    void exclusionsAreReadFromTenValues();
    void aRemovedExclusionDoesNotComeBack();
    void recentFoldersAreNewestFirst();
    void oneDriveFolderHasNoSeparatorAtItsEnd();

private:
    std::unique_ptr<tests::RegistryGuard> m_guard;
};

void DiskUsageSettingsTest::withoutStoredCategoriesTheBuiltInOnesCount()
{
    FileTypeTable table{{QStringLiteral("left over"), {}, true}};
    QVERIFY(!settings::loadFileTypes(table));
    QVERIFY(table.empty());
    QCOMPARE(settings::loadFileTypesOrDefaults(), core::defaultFileTypes());
    settings::writeDword(key, QStringLiteral("FileTypeDataCount"), 0);
    QCOMPARE(settings::loadFileTypesOrDefaults().size(), 12U);
    // What is stored is no category at all.
    settings::writeDword(key, QStringLiteral("FileTypeDataCount"), 1);
    store(QStringLiteral("FileTypeData0"), QStringLiteral(";Font Files (.fnt)"));
    QCOMPARE(settings::loadFileTypesOrDefaults().size(), 12U);
}

void DiskUsageSettingsTest::categoriesSurviveARoundTrip()
{
    FileTypeTable table = core::defaultFileTypes();
    table[6].enabled = false;
    table[0].extensions.append(QStringLiteral(".\u00fcml\u00e4ut"));
    settings::saveFileTypes(table);
    QCOMPARE(stored(QStringLiteral("FileTypeData6")),
             QStringLiteral("0;Font Files (.fnt, .fon, .otf, .ttf)"));
    quint32 count = 0;
    QVERIFY(settings::readDword(key, QStringLiteral("FileTypeDataCount"), count));
    QCOMPARE(count, 12U);
    QCOMPARE(settings::loadFileTypesOrDefaults(), table);
}

void DiskUsageSettingsTest::aMissingCategoryIsSkippedAndLaterOnesAreRead()
{
    settings::writeDword(key, QStringLiteral("FileTypeDataCount"), 3);
    store(QStringLiteral("FileTypeData0"), QStringLiteral("1;One (.a)"));
    store(QStringLiteral("FileTypeData2"), QStringLiteral("1;Three (.c)"));
    store(QStringLiteral("FileTypeData3"), QStringLiteral("1;Beyond the count (.d)"));
    QCOMPARE(names(settings::loadFileTypesOrDefaults()),
             QStringList({QStringLiteral("One"), QStringLiteral("Three")}));
    // A damaged count costs no time.
    settings::writeDword(key, QStringLiteral("FileTypeDataCount"), 0xFFFFFFFF);
    QElapsedTimer clock;
    clock.start();
    QCOMPARE(settings::loadFileTypesOrDefaults().size(), 3U);
    QVERIFY(clock.elapsed() < 5000);
}

void DiskUsageSettingsTest::exclusionsAreReadFromTenValues()
{
    store(QStringLiteral("ExludeFolder0"), QStringLiteral("1;C:\\a;b"));
    store(QStringLiteral("ExludeFolder1"), QStringLiteral("1;"));
    store(QStringLiteral("ExludeFolder4"), QStringLiteral("2;C:\\two"));
    store(QStringLiteral("ExludeFolder9"), QStringLiteral("0;C:\\nine"));
    store(QStringLiteral("ExludeFolder10"), QStringLiteral("1;C:\\ten"));
    store(QStringLiteral("ExcludeFolder2"), QStringLiteral("1;C:\\spelled right"));
    const std::vector<ExcludedFolder> expected{{true, QStringLiteral("C:\\a;b")},
                                               {false, QStringLiteral("C:\\two")},
                                               {false, QStringLiteral("C:\\nine")}};
    QCOMPARE(loadExcludedFolders(), expected);
}

void DiskUsageSettingsTest::aRemovedExclusionDoesNotComeBack()
{
    std::vector<ExcludedFolder> folders;
    for (int i = 0; i < 12; ++i)
        folders.push_back({i % 2 == 0, QStringLiteral("C:\\%1").arg(i)});
    saveExcludedFolders(folders);
    QCOMPARE(stored(QStringLiteral("ExludeFolder9")), QStringLiteral("0;C:\\9"));
    QCOMPARE(stored(QStringLiteral("ExludeFolder10")), QStringLiteral("(absent)"));
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
    const QStringList expected{QStringLiteral("C:\\7"), QStringLiteral("c:\\2"), QStringLiteral("C:\\6"),
                               QStringLiteral("C:\\5"), QStringLiteral("C:\\4"), QStringLiteral("C:\\3")};
    QCOMPARE(loadRecentFolders(), expected);
    QCOMPARE(stored(QStringLiteral("RecentFile0")), QStringLiteral("C:\\7"));
    QCOMPARE(stored(QStringLiteral("RecentFile6")), QStringLiteral("(absent)"));
    // A hole ends nothing, and a longer text than any path is none.
    settings::deleteValue(key, QStringLiteral("RecentFile1"));
    store(QStringLiteral("RecentFile2"), QString(40'000, QLatin1Char('x')));
    QCOMPARE(loadRecentFolders().size(), 4);
    saveRecentFolders({});
    QVERIFY(loadRecentFolders().isEmpty());
}

void DiskUsageSettingsTest::oneDriveFolderHasNoSeparatorAtItsEnd()
{
    const QString environment = QStringLiteral("Environment");
    const QString name = QStringLiteral("OneDrive");
    QString before;
    const bool present = settings::readString(environment, name, before);
    settings::writeString(environment, name, u"C:/Users/x/OneDrive/");
    QCOMPARE(oneDriveFolder(), QStringLiteral("C:\\Users\\x\\OneDrive"));
    settings::deleteValue(environment, name);
    QCOMPARE(oneDriveFolder(), QString());
    if (present)
        settings::writeString(environment, name, before);
}

QTEST_GUILESS_MAIN(DiskUsageSettingsTest)
#include "tst_disk_usage_settings.moc"
