// SPDX-License-Identifier: GPL-3.0-or-later
#include "ExtractIcon/IconFiles.h"
#include "ExtractIcon/Image2IcoForm.h"
#include "ExtractIcon/engine/IconListing.h"
#include "ExtractIcon/generator/CropView.h"
#include "tests/support/FakeDialogs.h"
#include "tests/support/RegistryTest.h"
#include "tests/support/TestFolder.h"
#include "widgets/NoticeBar.h"
#include "widgets/ScanPage.h"

#include <QCheckBox>
#include <QDir>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QTest>

using icons::CropView;

class tst_image2ico_form : public tests::RegistryTest
{
    Q_OBJECT

private slots:
    void makesIconsOfSeveral();
    void stopsSavingSeveral();
    void keepsTheCentre();

private:
    static QString picture(const tests::TestFolder &folder, const QString &name, QSize size, QColor colour)
    {
        QImage image(size, QImage::Format_RGB32);
        image.fill(colour);
        if (!image.save(folder.path(name)))
            qFatal("no picture");
        return folder.path(name);
    }
};

void tst_image2ico_form::makesIconsOfSeveral()
{
    tests::TestFolder folder;
    tests::FakeDialogs dialogs;
    Image2IcoForm form;
    form.resize(950, 600);
    form.show();
    auto *save = form.findChild<QPushButton *>(QStringLiteral("saveAllButton"));
    QVERIFY(!save->isEnabled());
    const QString other = folder.makeFolder(QStringLiteral("other"));
    folder.makeFile(QStringLiteral("other\\a.ico"), "old");
    form.addPictures({picture(folder, QStringLiteral("a.png"), {300, 200}, Qt::red),
                      picture(folder, QStringLiteral("other\\a.png"), {40, 60}, Qt::blue),
                      folder.makeFile(QStringLiteral("b.png"), "no picture")});
    QTRY_COMPARE(form.findChild<CropView *>()->square(), QRect(50, 0, 200, 200));
    form.findChild<QPushButton *>(QStringLiteral("wholeButton"))->click();
    form.findChild<QCheckBox *>(QStringLiteral("size24"))->setChecked(false);
    dialogs.nextFolder.enqueue(other);
    save->click();
    QTRY_VERIFY(save->isEnabled() && !form.isBusy());
    QCOMPARE(QDir(other).entryList({QStringLiteral("*.ico")}).join(u' '),
             QStringLiteral("a (2).ico a (3).ico a.ico"));
    QCOMPARE(QFileInfo(folder.path(QStringLiteral("other\\a.ico"))).size(), 3);

    const auto source = icons::openIcons(other + QStringLiteral("\\a (2).ico"));
    const QList<icons::IconImage> images = icons::decodeIcon(*icons::readIcon(*source, 0));
    QCOMPARE(images.size(), 9);
    QCOMPARE(images.last().facts.width, 256);
    QCOMPARE(images.last().image.pixel(128, 10), 0U); // the whole picture, with nothing above it
    QCOMPARE(images.last().image.pixel(128, 128), 0xffff0000);
}

void tst_image2ico_form::stopsSavingSeveral()
{
    tests::TestFolder folder;
    tests::FakeDialogs dialogs;
    Image2IcoForm form;
    form.resize(950, 600);
    form.show();
    constexpr int count = 200; // far more than are saved before the click
    form.addPictures(QStringList(count, picture(folder, QStringLiteral("a.png"), {300, 200}, Qt::red)));
    dialogs.nextFolder.enqueue(folder.path());
    form.findChild<QPushButton *>(QStringLiteral("saveAllButton"))->click();
    const auto *progress = form.findChild<ScanPage *>();
    QVERIFY(progress->isVisible());
    const auto *done = progress->findChild<QLabel *>(QStringLiteral("stepsLabel"));
    QTRY_VERIFY2(done->text().endsWith(QStringLiteral(" of 200")), qPrintable(done->text()));
    progress->findChild<QPushButton *>(QStringLiteral("cancelButton"))->click();
    QTRY_VERIFY(!form.isBusy());
    QVERIFY(!progress->isVisible());
    const auto saved = QDir(folder.path()).entryList({QStringLiteral("*.ico")}).size();
    QVERIFY(saved < count);
    QCOMPARE(form.findChild<NoticeBar *>()->text(),
             QStringLiteral("Stopped. %1 of 200 icons were saved.").arg(saved));
}

void tst_image2ico_form::keepsTheCentre()
{
    CropView view;
    view.resize(420, 420); // the picture at its own size, beside a margin of ten pixels
    view.setPicture(QImage(400, 400, QImage::Format_RGB32), QRect(100, 100, 100, 100));
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    QTest::mousePress(&view, Qt::LeftButton, {}, QPoint(210, 210)); // the lower right corner
    QTest::mouseMove(&view, QPoint(230, 230));
    QTRY_COMPARE(view.square(), QRect(100, 100, 120, 120));
    view.setCentreKept(true);
    QCOMPARE(view.square(), QRect(80, 80, 140, 140));
    view.setCentreKept(false);
    QCOMPARE(view.square(), QRect(100, 100, 120, 120));
    QTest::mouseRelease(&view, Qt::LeftButton, {}, QPoint(230, 230));
    QTest::keyClick(&view, Qt::Key_Left, Qt::ControlModifier);
    QCOMPARE(view.square(), QRect(90, 100, 120, 120));
}

QTEST_MAIN(tst_image2ico_form)
#include "tst_image2ico_form.moc"
