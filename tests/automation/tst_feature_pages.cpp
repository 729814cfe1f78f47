// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/AutoDarkModeForm.h"
#include "automation/AutoWallpaperChangerForm.h"
#include "automation/DroppedImages.h"
#include "automation/OwnImagesView.h"
#include "automation/StayAwakeForm.h"
#include "automation/TransparentTaskbarModuleForm.h"
#include "automation/engine/AgentLog.h"
#include "automation/engine/WallpaperJob.h"
#include "platform/KnownFolders.h"
#include "settings/AgentState.h"
#include "settings/AutoDarkSettings.h"
#include "settings/StayAwakeSettings.h"
#include "settings/TaskbarSettings.h"
#include "settings/WallpaperSettings.h"
#include "tests/support/FakeDialogs.h"
#include "tests/support/FakeShell.h"
#include "tests/support/FakeWindow.h"
#include "tests/support/RegistryTest.h"
#include "tests/support/TestFolder.h"
#include "widgets/NoticeBar.h"
#include "widgets/WrappedLabel.h"

#include <QCheckBox>
#include <QComboBox>
#include <QDragEnterEvent>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMimeData>
#include <QPushButton>
#include <QRadioButton>
#include <QSlider>
#include <QSpinBox>
#include <QTest>
#include <QTimeEdit>
#include <QTreeWidget>

using namespace Qt::StringLiterals;

class FeaturePagesTest : public tests::RegistryTest
{
    Q_OBJECT

private slots:
    void showsWhatTheAgentLeft();
    void storesHowLong();
    void aProgramMustBeNamed();
    void hoursAreStoredInTwelves_data();
    void hoursAreStoredInTwelves();
    void tellsOfTheSun();
    void asksWhereTheComputerIs();
    void damagedSettings();
    void tabGoesDown();
    void ownPictures();
    void droppedFolders();
    void showsThePicture();
};

void FeaturePagesTest::showsWhatTheAgentLeft()
{
    const tests::FakeShell shell;
    StayAwakeForm form;
    form.show();
    const auto text = [&form](const char *name) {
        return form.findChild<WrappedLabel *>(QString::fromLatin1(name))->text();
    };
    auto *start = form.findChild<QPushButton *>(u"startAgentButton"_s);
    QTRY_COMPARE(text("nowLabel"), u"Off"_s);
    QVERIFY(!start->isVisible());
    form.findChild<QCheckBox *>(u"checkBox"_s)->click();
    QVERIFY(settings::stayAwakeActive.read());
    QCOMPARE(shell.agents.size(), 1);
    QVERIFY(start->isVisible());
    start->click();
    QCOMPARE(shell.agents.size(), 2);

    settings::writeAgentState(automation::features::stayAwake, {u"It is so"_s, u"Ends some day"_s});
    form.shellEvent(ShellEvent::StayAwakeState, 1);
    QCOMPARE(text("nowLabel"), u"On"_s); // of an agent that was killed
    const tests::FakeWindow agent(u"GLASSWICK"_s, u"Transparent Taskbar"_s);
    form.shellEvent(ShellEvent::StayAwakeState, 1);
    QCOMPARE(text("nowLabel"), u"On. It is so."_s);
    QCOMPARE(text("nextLabel"), u"Ends some day"_s);
    QVERIFY(!start->isVisible());
    settings::stayAwakeActive.write(false); // by the agent
    form.shellEvent(ShellEvent::StayAwakeState, 0);
    QVERIFY(!form.findChild<QCheckBox *>(u"checkBox"_s)->isChecked());
    QCOMPARE(shell.agents.size(), 2);
}

void FeaturePagesTest::storesHowLong()
{
    const tests::FakeShell shell;
    settings::awakeDuration.write(7);
    StayAwakeForm form;
    QVERIFY(form.findChild<QRadioButton *>(u"durationRadioButton"_s)->isChecked());
    auto *unit = form.findChild<QComboBox *>(u"durationUnitComboBox"_s);
    unit->setCurrentIndex(1);
    emit unit->activated(1);
    QCOMPARE(settings::awakeDurationUnit.read(), 1);
    QCOMPARE(settings::awakeDuration.read(), 7);
    form.findChild<QRadioButton *>(u"foreverRadioButton"_s)->click();
    QCOMPARE(settings::awakeDuration.read(), 0);
    form.findChild<QCheckBox *>(u"monitorOnCheckBox"_s)->click();
    QVERIFY(!settings::awakeMonitorOn.read());
}

void FeaturePagesTest::aProgramMustBeNamed()
{
    const tests::FakeShell shell;
    StayAwakeForm form;
    form.findChild<QRadioButton *>(u"programRadioButton"_s)->click();
    auto *box = form.findChild<QCheckBox *>(u"checkBox"_s);
    box->click();
    QVERIFY(!box->isChecked() && !settings::stayAwakeActive.read());
    QVERIFY(!form.findChild<NoticeBar *>()->text().isEmpty());
    auto *line = form.findChild<QComboBox *>(u"programComboBox"_s)->lineEdit();
    QTest::keyClicks(line, u"setup.exe"_s);
    QTest::keyClick(line, Qt::Key_Return);
    QCOMPARE(settings::awakeProgram.read(), u"setup.exe"_s);
    box->click();
    QVERIFY(settings::stayAwakeActive.read());
}

void FeaturePagesTest::hoursAreStoredInTwelves_data()
{
    QTest::addColumn<QTime>("time");
    QTest::addColumn<QList<int>>("stored");
    QTest::newRow("midnight") << QTime(0, 5) << QList<int>{12, 5, 0};
    QTest::newRow("noon") << QTime(12, 0) << QList<int>{12, 0, 1};
    QTest::newRow("evening") << QTime(23, 59) << QList<int>{11, 59, 1};
}

void FeaturePagesTest::hoursAreStoredInTwelves()
{
    QFETCH(const QTime, time);
    const tests::FakeShell shell;
    AutoDarkModeForm form;
    form.findChild<QTimeEdit *>(u"darkTimeEdit"_s)->setTime(time);
    const QList<int> found{settings::darkHour.read(), settings::darkMinute.read(),
                           settings::darkPeriod.read()};
    QTEST(found, "stored");
    AutoDarkModeForm again;
    QCOMPARE(again.findChild<QTimeEdit *>(u"darkTimeEdit"_s)->time(), time);
}

void FeaturePagesTest::tellsOfTheSun()
{
    const tests::FakeShell shell;
    AutoDarkModeForm form;
    auto *tomorrow = form.findChild<QLabel *>(u"tomorrowLabel"_s);
    QVERIFY(tomorrow->text().contains(u"07:00"_s));
    form.findChild<QRadioButton *>(u"sunRadioButton"_s)->click();
    QVERIFY(!tomorrow->text().contains(u"sunset"_s));
    for (const auto &[name, text] :
         {std::pair(u"latitudeLineEdit"_s, u"52,52"_s), std::pair(u"longitudeLineEdit"_s, u"13.4"_s)}) {
        auto *line = form.findChild<QLineEdit *>(name);
        line->setText(text);
        emit line->editingFinished();
    }
    QVERIFY(tomorrow->text().contains(u"sunset"_s));
    QCOMPARE(settings::autoDarkLatitude.read(), u"52,52"_s);
    form.findChild<QLineEdit *>(u"latitudeLineEdit"_s)->setText(u"95"_s);
    emit form.findChild<QLineEdit *>(u"latitudeLineEdit"_s)->editingFinished();
    QVERIFY(form.findChild<QLabel *>(u"placeLabel"_s)->text().contains(u"-90"_s));
}

void FeaturePagesTest::asksWhereTheComputerIs()
{
    tests::FakeShell shell;
    settings::autoDarkBySun.write(true);
    automation::DevicePosition told{.position = {},
                                    .failure = automation::DevicePosition::Failure::NotAllowed};
    AutoDarkModeForm form([&](const core::CancelFlag &) { return told; }, nullptr);
    auto *button = form.findChild<QPushButton *>(u"locateButton"_s);
    const auto *bar = form.findChild<NoticeBar *>();
    button->click();
    button->click(); // stops
    QTest::qWait(50);
    QVERIFY(bar->text().isEmpty());
    button->click();
    QTRY_VERIFY(bar->text().contains(u"Allow it"_s));
    form.findChild<QToolButton *>(u"noticeActionButton"_s)->click();
    QCOMPARE(shell.settingsPages, QStringList{u"privacy-location"_s});
    QVERIFY(settings::autoDarkLatitude.read().isEmpty());

    told = {.position = automation::Position{-33.86785, 151.20732}};
    button->click();
    QTRY_COMPARE(settings::autoDarkLatitude.read(), u"-33.87"_s);
    QCOMPARE(settings::autoDarkLongitude.read(), u"151.21"_s);
    QVERIFY(form.findChild<QLabel *>(u"tomorrowLabel"_s)->text().contains(u"sunset"_s));
}

void FeaturePagesTest::damagedSettings()
{
    settings::writeDword(settings::keys::autoDarkMode, u"DarkHour", 77);
    settings::writeString(settings::keys::glasswick, u"TransparentLevel", u"much");
    settings::writeDword(settings::keys::glasswick, u"TaskbarBackgroundMode", 9);
    const AutoDarkModeForm dark;
    QCOMPARE(dark.findChild<QTimeEdit *>(u"darkTimeEdit"_s)->time(), QTime(19, 0));
    const TransparentTaskbarModuleForm taskbar;
    QCOMPARE(taskbar.findChild<QSlider *>(u"levelSlider"_s)->value(), 50);
    QCOMPARE(taskbar.findChild<QComboBox *>(u"modeComboBox"_s)->currentIndex(), 0);
}

// The settings come before the log, which was made before them.
void FeaturePagesTest::tabGoesDown()
{
    StayAwakeForm form;
    QCoreApplication::processEvents();
    QStringList passed;
    const QWidget *log = form.findChild<QTreeWidget *>(u"logTreeWidget"_s);
    const QWidget *at = form.findChild<QCheckBox *>(u"checkBox"_s);
    for (; at != log && passed.size() < 100; at = at->nextInFocusChain())
        passed.append(at->objectName());
    QCOMPARE(at, log);
    QVERIFY(passed.contains(u"batteryCheckBox"_s));
}

void FeaturePagesTest::ownPictures()
{
    const tests::FakeShell shell;
    tests::FakeDialogs dialogs;
    const tests::TestFolder folder;
    const QString picture = folder.path(u"a.png"_s);
    QImage(50, 60, QImage::Format_RGB32).save(picture);
    settings::wallpaperSource.write(2);
    AutoWallpaperChangerForm form;
    form.show();
    form.findChild<QCheckBox *>(u"checkBox"_s)->click(); // nothing to show yet
    QVERIFY(!settings::wallpaperEnabled.read());
    const QStringList all{picture, folder.path(u"gone.png"_s), folder.path(u"c.png"_s)};
    dialogs.nextFilesToOpen.enqueue(all + all);
    form.findChild<QPushButton *>(u"addPicturesButton"_s)->click();
    QCOMPARE(settings::customFiles.read(), all);
    auto *list = form.findChild<QTreeWidget *>(u"ownPicturesTreeWidget"_s);
    QTRY_VERIFY_WITH_TIMEOUT(!list->topLevelItem(0)->icon(0).isNull(), 20'000);
    QTRY_VERIFY(list->topLevelItem(1)->text(1).contains(u"Missing"_s));

    settings::customIndex.write(2);
    list->setCurrentItem(list->topLevelItem(2));
    form.findChild<QPushButton *>(u"upButton"_s)->click();
    QCOMPARE(settings::customFiles.read(), (QStringList{all[0], all[2], all[1]}));
    QCOMPARE(settings::customIndex.read(), 1); // it is still the one that is shown
    list->setCurrentItem(list->topLevelItem(0));
    form.findChild<QPushButton *>(u"removePicturesButton"_s)->click();
    QCOMPARE(settings::customFiles.read(), (QStringList{all[2], all[1]}));
    QCOMPARE(settings::customIndex.read(), 0);
    form.findChild<QCheckBox *>(u"checkBox"_s)->click();
    QVERIFY(settings::wallpaperEnabled.read() && settings::isAgentNeeded());
    QVERIFY(!settings::backgroundFeaturesEnabled()); // which decides another thing
}

void FeaturePagesTest::droppedFolders()
{
    const tests::FakeShell shell;
    const tests::TestFolder folder;
    const QStringList pictures{folder.makeFile(u"in\\p2.PNG"_s), folder.makeFile(u"in\\p10.jpg"_s)};
    const QString deeper = folder.makeFile(u"in\\deeper\\p3.png"_s);
    folder.makeFile(u"in\\notes.txt"_s);
    QVERIFY(QDir().mkpath(folder.path(u"none"_s)));
    settings::wallpaperSource.write(2);
    AutoWallpaperChangerForm form;
    auto *list = form.findChild<QTreeWidget *>(u"ownPicturesTreeWidget"_s)->viewport();
    const auto drop = [list](const QString &path) {
        QMimeData data;
        data.setUrls({QUrl::fromLocalFile(path)});
        QDragEnterEvent enter({}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(list, &enter);
        QDropEvent event({}, Qt::CopyAction, &data, Qt::LeftButton, {});
        QCoreApplication::sendEvent(list, &event);
    };
    drop(folder.path(u"in"_s));
    drop(folder.path(u"none"_s)); // the first may not be listed yet
    QTRY_COMPARE(settings::customFiles.read(), pictures);
    auto *notice = form.findChild<NoticeBar *>();
    QTRY_VERIFY(notice->text().contains(folder.path(u"none"_s)));

    QStringList many = pictures.mid(1);
    while (many.size() < automation::maxOwnImages - 1)
        many.append(u"C:\\gone\\%1.png"_s.arg(many.size()));
    auto *view = form.findChild<OwnImagesView *>();
    view->setFiles(many);
    view->drop({folder.path(u"in"_s), deeper});
    QTRY_VERIFY2(notice->text().startsWith(u"1 picture was left out"_s), qPrintable(notice->text()));
    QCOMPARE(view->files(), many + pictures.mid(0, 1));
    QVERIFY(!automation::droppedImages({folder.path(u"in"_s)}, {u"png"_s}, {}, 2).isWhole);
}

void FeaturePagesTest::showsThePicture()
{
    const tests::FakeShell shell;
    const QString folder =
        automation::wallpaperFolder(platform::knownFolder(platform::KnownFolder::LocalAppData));
    QVERIFY(QDir().mkpath(folder));
    QFile shown(folder + u"\\shown.json"_s);
    QVERIFY(shown.open(QIODevice::WriteOnly));
    automation::WallpaperAnswer answer{.result = automation::WallpaperAnswer::Result::Changed};
    answer.pictures = {{.title = u"Owl"_s, .credit = u"By me"_s, .page = QUrl(u"https://example.org/owl"_s)}};
    shown.write(automation::answerText(answer));
    shown.close();
    AutoWallpaperChangerForm form;
    form.show();
    QTRY_VERIFY(form.findChild<QPushButton *>(u"openPageButton"_s));
    QCOMPARE(form.findChild<WrappedLabel *>(u"titleLabel"_s)->text(), u"Owl"_s);
    form.findChild<QPushButton *>(u"openPageButton"_s)->click();
    QCOMPARE(shell.webPages, QList<QUrl>{QUrl(u"https://example.org/owl"_s)});
    form.findChild<QPushButton *>(u"nextButton"_s)->click(); // off: nobody to ask
    QVERIFY(!form.findChild<NoticeBar *>()->text().isEmpty());
    QVERIFY(shown.remove());
}

QTEST_MAIN(FeaturePagesTest)
#include "tst_feature_pages.moc"
