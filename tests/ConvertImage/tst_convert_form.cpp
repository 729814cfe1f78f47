// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/engine/Targets.h"
#include "ConvertImage/results/OverwriteFileDialog.h"
#include "platform/NewFile.h"
#include "tests/ConvertImage/Scene.h"
#include "tests/support/RegistryTest.h"

#include <QApplication>
#include <QDateTime>
#include <QImageWriter>
#include <QPushButton>
#include <QTimer>
#include <QToolButton>

#include <memory>

using namespace Qt::StringLiterals;
using namespace tests::convert;

namespace
{

// Gives the next overwrite dialog this answer for all rows.
void answerExisting(OverwriteFileDialog::Answer answer, int expectedRows)
{
    auto *poll = new QTimer(qApp);
    QObject::connect(poll, &QTimer::timeout, qApp, [poll, answer, expectedRows] {
        auto *dialog = qobject_cast<OverwriteFileDialog *>(QApplication::activeModalWidget());
        if (!dialog)
            return;
        poll->deleteLater();
        const auto rows = dialog->answers().size();
        dialog->answerAll(answer);
        dialog->accept();
        QCOMPARE(rows, std::size_t(expectedRows));
    });
    poll->start(100);
}

} // namespace

class ConvertFormTest : public tests::RegistryTest
{
    Q_OBJECT

private slots:
    void initTestCase() { QApplication::setStyle(u"Fusion"_s); }

    void everyFormat_data();
    void everyFormat();
    void existingFilesAreAskedAbout();
    void missingMarksAreAskedAbout();
    void sourcesAreNotCovered();
    void foldersAndTimesAreKept();
    void leftoversAndLockedOutputs();
    void closedInTheMiddle();
};

void ConvertFormTest::everyFormat_data()
{
    QTest::addColumn<int>("target");
    for (int i = 0; i < conversion::targetCount; ++i)
        QTest::newRow(conversion::factsOf(static_cast<conversion::Target>(i)).extension) << i;
}

void ConvertFormTest::everyFormat()
{
    QFETCH(int, target);
    const auto facts = conversion::factsOf(static_cast<conversion::Target>(target));
    const bool isPdf = target == int(conversion::Target::Pdf);
    const bool isGif = target == int(conversion::Target::Gif); // has a writer of our own
    if (!isPdf && !isGif &&
        !QImageWriter::supportedImageFormats().contains(QByteArray(facts.extension).mid(1)))
        QSKIP("built without this format");
    Scene scene;
    settings::writeDword(key, u"targeFileType", quint32(target));
    settings::writeString(key, u"pdfFileName", scene.folder.path(u"out\\all.pdf"_s));
    settings::writeDword(key, u"scaleImage", 1);
    settings::writeDword(key, u"scalePercentage", 50);
    scene.open();
    QVERIFY(scene.add({scene.folder.path(u"in"_s)}, 3));
    QVERIFY(scene.convert());
    QCOMPARE(scene.results(), QStringList({u"Converted"_s, u"Failed"_s, u"Converted"_s}));
    QCOMPARE(scene.results(2), QStringList({QString(), u"The file is not a readable picture"_s,
                                            u"The end of the source is missing"_s}));
    const QString extension = QString::fromLatin1(facts.extension);
    if (isPdf) {
        QCOMPARE(scene.outputs(), QStringList{u"all.pdf"_s});
        // What is tried again is the whole document.
        scene.dialogs.nextAnswer.enqueue(QMessageBox::Yes);
        QSignalSpy shown(scene.form.get(), &ConvertImageForm::resultsShown);
        scene.form->findChild<QPushButton *>(u"tryAgainButton"_s)->click();
        QVERIFY(shown.wait(60'000));
        QCOMPARE(scene.results().size(), 3);
        return;
    }
    QCOMPARE(scene.outputs(), QStringList({u"a"_s + extension, u"\u65e5\u672c"_s + extension}));
    const QImage first(scene.folder.path(u"out\\a"_s + extension));
    QCOMPARE(first.size(), QSize(160, 100));
    QVERIFY(qAbs(qRed(first.pixel(120, 50)) - 191) < 40 && qAbs(qGreen(first.pixel(120, 50)) - 127) < 40);
}

void ConvertFormTest::existingFilesAreAskedAbout()
{
    Scene scene;
    settings::writeDword(key, u"targeFileType", quint32(conversion::Target::Png));
    scene.folder.makeFile(u"out\\a.png"_s, "old");
    scene.open();
    QVERIFY(scene.add({scene.folder.path(u"in\\a.png"_s)}, 1));
    answerExisting(OverwriteFileDialog::Answer::Skip, 1);
    QVERIFY(scene.convert());
    QCOMPARE(QFileInfo(scene.folder.path(u"out\\a.png"_s)).size(), 3);
    answerExisting(OverwriteFileDialog::Answer::KeepBoth, 1);
    QVERIFY(scene.convert());
    QCOMPARE(QFileInfo(scene.folder.path(u"out\\a.png"_s)).size(), 3);
    QCOMPARE(QImage(scene.folder.path(u"out\\a (2).png"_s)).width(), 320);
    answerExisting(OverwriteFileDialog::Answer::KeepBoth, 1);
    QVERIFY(scene.convert());
    QCOMPARE(QImage(scene.folder.path(u"out\\a (3).png"_s)).width(), 320);
    answerExisting(OverwriteFileDialog::Answer::Replace, 1);
    QVERIFY(scene.convert());
    QCOMPARE(QImage(scene.folder.path(u"out\\a.png"_s)).width(), 320);
    // Two of one name are told before anything is written.
    photograph(10, 10).save(scene.folder.path(u"in\\A.2.bmp"_s));
    QVERIFY(scene.add({scene.folder.path(u"in\\A.2.bmp"_s)}, 2));
    scene.dialogs.nextAnswer.enqueue(QMessageBox::Cancel);
    scene.form->convert();
    QTRY_VERIFY(!scene.dialogs.questions.isEmpty());
    QVERIFY(scene.dialogs.questions.last().text.contains(scene.folder.path(u"out\\A.2.png"_s)));
}

void ConvertFormTest::missingMarksAreAskedAbout()
{
    Scene scene;
    settings::writeDword(key, u"targeFileType", quint32(conversion::Target::Png));
    settings::writeString(key, u"imagePath", scene.folder.path(u"in\\broken.jpg"_s));
    settings::writeString(key, u"qrCodeText", QString(5000, u'x'));
    scene.open();
    QVERIFY(scene.add({scene.folder.path(u"in\\a.png"_s)}, 1));
    scene.dialogs.nextAnswer << QMessageBox::No << QMessageBox::Yes << QMessageBox::No;
    for (const int questions : {1, 3}) {
        scene.form->convert();
        QTRY_COMPARE(scene.dialogs.questions.size(), questions);
        QCOMPARE(scene.outputs(), QStringList());
    }
    scene.dialogs.nextAnswer << QMessageBox::Yes << QMessageBox::Yes;
    QVERIFY(scene.convert());
    QCOMPARE(scene.outputs(), QStringList{u"a.png"_s});
}

// Converted in place: one answer for all leaves the originals alone.
void ConvertFormTest::sourcesAreNotCovered()
{
    Scene scene;
    settings::writeDword(key, u"targeFileType", quint32(conversion::Target::Png));
    settings::writeDword(key, u"besideSource", 1);
    photograph(10, 10).save(scene.folder.path(u"in\\deep\\b.bmp"_s));
    photograph(20, 20).save(scene.folder.path(u"in\\deep\\b.png"_s));
    scene.open();
    const QString original = scene.folder.path(u"in\\a.png"_s);
    QVERIFY(scene.add({original, scene.folder.path(u"in\\deep\\b.bmp"_s)}, 2));
    const QDateTime before = QFileInfo(original).lastModified();
    answerExisting(OverwriteFileDialog::Answer::Replace, 2);
    QVERIFY(scene.convert());
    QCOMPARE(scene.results(), QStringList({u"Skipped, exists"_s, u"Converted"_s}));
    QCOMPARE(QFileInfo(original).lastModified(), before);
    QCOMPARE(QImage(scene.folder.path(u"in\\deep\\b.png"_s)).width(), 10);
}

void ConvertFormTest::foldersAndTimesAreKept()
{
    Scene scene;
    settings::writeDword(key, u"targeFileType", quint32(conversion::Target::Png));
    settings::writeDword(key, u"keepFolders", 1);
    settings::writeDword(key, u"keepTimes", 1);
    settings::writeString(key, u"OutputFolder", scene.folder.path(u"new"_s));
    const QDateTime taken({2001, 9, 9}, {1, 46, 40});
    QFile source(scene.folder.path(u"in\\a.png"_s));
    QVERIFY(source.open(QIODevice::ReadWrite) &&
            source.setFileTime(taken, QFileDevice::FileModificationTime));
    source.close();
    scene.open();
    QVERIFY(scene.add({scene.folder.path(u"in"_s), scene.folder.path(u"in\\a.png"_s)}, 3));
    scene.dialogs.nextAnswer.enqueue(QMessageBox::Yes); // make the folder
    QVERIFY(scene.convert());
    QCOMPARE(scene.results(), QStringList({u"Converted"_s, u"Failed"_s, u"Converted"_s}));
    QCOMPARE(QFileInfo(scene.folder.path(u"new\\in\\a.png"_s)).lastModified(), taken);
    QVERIFY(QFileInfo::exists(scene.folder.path(u"new\\in\\deep\\\u65e5\u672c.png"_s)));
}

void ConvertFormTest::leftoversAndLockedOutputs()
{
    Scene scene;
    settings::writeDword(key, u"targeFileType", quint32(conversion::Target::Png));
    scene.folder.makeFile(u"out\\~larkspur-0123456789abcdef.new"_s, "of a crashed run");
    scene.folder.makeFile(u"out\\~larkspur-notes.new"_s, "of the user");
    scene.folder.makeFolder(u"out\\a.png"_s); // no file can have this name
    scene.open();
    QVERIFY(scene.add({scene.folder.path(u"in\\a.png"_s)}, 1));
    answerExisting(OverwriteFileDialog::Answer::Replace, 1);
    QVERIFY(scene.convert());
    QCOMPARE(scene.results(), QStringList{u"Failed"_s});
    QCOMPARE(scene.outputs(), QStringList{u"~larkspur-notes.new"_s});
    QVERIFY(scene.form->findChild<QPushButton *>(u"tryAgainButton"_s)->isVisible());
    QString problem;
    platform::NewFile nowhere(scene.folder.path(u"missing\\x.png"_s));
    QVERIFY(!nowhere.file().isOpen());
}

void ConvertFormTest::closedInTheMiddle()
{
    Scene scene;
    for (int i = 0; i < 40; ++i)
        photograph(900, 700).save(scene.folder.path(u"in\\deep\\p%1.bmp"_s.arg(i)));
    settings::writeDword(key, u"targeFileType", quint32(conversion::Target::Png));
    scene.open();
    QVERIFY(scene.add({scene.folder.path(u"in\\deep"_s)}, 41));
    scene.form->convert();
    QTRY_VERIFY(scene.outputs().size() > 1);
    QVERIFY(scene.form->isBusy());
    scene.form->requestStop();
    QTRY_VERIFY_WITH_TIMEOUT(!scene.form->isBusy(), 30'000);
    scene.form.reset();
    // No half file, and nothing of the temporary ones.
    for (const QString &name : scene.outputs()) {
        QVERIFY2(name.endsWith(u".png"_s), qPrintable(name));
        QVERIFY(!QImage(scene.folder.path(u"out\\"_s + name)).isNull());
    }
}

QTEST_MAIN(ConvertFormTest)
#include "tst_convert_form.moc"
