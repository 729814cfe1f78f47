// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/ConvertImageForm.h"
#include "ConvertImage/engine/Blur.h"
#include "ConvertImage/engine/Targets.h"
#include "ConvertImage/options/Settings.h"
#include "ConvertImage/preview/PreviewView.h"
#include "ConvertImage/results/OverwriteFileDialog.h"
#include "platform/NewFile.h"
#include "settings/Keys.h"
#include "settings/Settings.h"
#include "tests/support/FakeDialogs.h"
#include "tests/support/RegistryTest.h"
#include "tests/support/TestFolder.h"

#include <QApplication>
#include <QComboBox>
#include <QDateTime>
#include <QDir>
#include <QGraphicsBlurEffect>
#include <QGraphicsPixmapItem>
#include <QGraphicsScene>
#include <QImageWriter>
#include <QInputDialog>
#include <QLabel>
#include <QListView>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QSignalSpy>
#include <QSlider>
#include <QSpinBox>
#include <QTableView>
#include <QTest>
#include <QTimer>
#include <QToolButton>

#include <memory>

using namespace Qt::StringLiterals;
using tests::FakeDialogs;
using tests::TestFolder;

namespace
{

constexpr QStringView key = settings::keys::convertImage;

QImage photograph(int width, int height)
{
    QImage image(width, height, QImage::Format_RGB32);
    for (int y = 0; y < height; ++y) {
        for (int x = 0; x < width; ++x)
            image.setPixel(x, y, qRgb(x * 255 / width, y * 255 / height, 128 + (x * 5 + y * 3) % 31));
    }
    return image;
}

// A form with some pictures in a folder.
struct Scene {
    TestFolder folder;
    FakeDialogs dialogs;
    std::unique_ptr<ConvertImageForm> form;

    Scene()
    {
        folder.makeFolder(u"in\\deep"_s);
        folder.makeFolder(u"out"_s);
        photograph(320, 200).save(folder.path(u"in\\a.png"_s));
        QFile noEnd(folder.path(u"in\\deep\\\u65e5\u672c.jpg"_s));
        photograph(200, 120).save(noEnd.fileName());
        noEnd.resize(noEnd.size() - 2);
        folder.makeFile(u"in\\broken.jpg"_s, "\xff\xd8\xff\xe0 no picture");
        settings::writeString(key, u"OutputFolder", folder.path(u"out"_s));
    }
    void open()
    {
        form = std::make_unique<ConvertImageForm>();
        form->resize(986, 513);
        form->show();
    }
    QListView *list() const { return form->findChild<QListView *>(u"sourceListView"_s); }
    bool add(const QStringList &paths, int expected)
    {
        form->addPaths(paths);
        return QTest::qWaitFor([&] { return list()->model()->rowCount() == expected; }, 20'000);
    }
    bool convert()
    {
        QSignalSpy shown(form.get(), &ConvertImageForm::resultsShown);
        form->convert();
        return shown.count() > 0 || shown.wait(60'000);
    }
    QStringList results(int column = 1) const
    {
        const auto *table = form->findChild<QTableView *>(u"conversionTableView"_s);
        QStringList texts;
        for (int row = 0; row < table->model()->rowCount(); ++row)
            texts.append(table->model()->index(row, column).data().toString());
        return texts;
    }
    QStringList outputs() const { return QDir(folder.path(u"out"_s)).entryList(QDir::Files, QDir::Name); }
};

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

    void settingsSurviveDamage();
    void namedSets();
    void everyFormat_data();
    void everyFormat();
    void existingFilesAreAskedAbout();
    void missingMarksAreAskedAbout();
    void sourcesAreNotCovered();
    void foldersAndTimesAreKept();
    void leftoversAndLockedOutputs();
    void selectionFollowsTheFiles();
    void controlsAreTheSettings();
    void previewFollowsTheSettings();
    void marksAreDragged_data();
    void marksAreDragged();
    void closedInTheMiddle();
    void blursLikeTheEffect();
};

// What is stored and not usable shows as the default; what is, in every control of the value.
void ConvertFormTest::settingsSurviveDamage()
{
    settings::writeString(key, u"scalePercentage", u"50");
    settings::writeDword(key, u"targeFileType", quint32(-3));
    settings::writeDword(key, u"textPosition", 12);
    settings::writeDword(key, u"scaleRelativeWidth", 0);
    settings::writeDword(key, u"adjustContrast", quint32(-50));
    settings::writeDword(key, u"adjustSepia", 2);
    settings::writeDword(key, u"scaleImage", 2);
    settings::writeString(key, u"textColor", u"no colour");
    Scene scene;
    scene.open();
    conversion::Settings expected;
    expected.rendering.adjustments.contrast = -50;
    expected.rendering.resize.on = true;
    expected.rendering.marks.text.font = scene.form->font().family();
    expected.outputFolder = scene.folder.path(u"out"_s);
    QCOMPARE(scene.form->settings(), expected);
    settings::writeDword(key, u"targeFileType", 77);
    scene.open();
    QCOMPARE(scene.form->settings().encoding.target, conversion::Target::Pdf);
}

void ConvertFormTest::namedSets()
{
    Scene scene;
    scene.open();
    auto *percent = scene.form->findChild<QSpinBox *>(u"scalePercentageSpinBox"_s);
    auto *sets = scene.form->findChild<QComboBox *>(u"presetComboBox"_s);
    const auto saveAs = [&scene](const QString &name) {
        QTimer::singleShot(0, qApp, [name] {
            auto *ask = qobject_cast<QInputDialog *>(QApplication::activeModalWidget());
            ask->setTextValue(name);
            ask->accept();
        });
        scene.form->findChild<QToolButton *>(u"savePresetButton"_s)->click();
    };
    percent->setValue(25);
    saveAs(u"Small"_s);
    QCOMPARE(sets->currentText(), u"Small"_s);
    percent->setValue(75);
    settings::writeString(key, u"OutputFolder", u"C:\\elsewhere");
    scene.open();
    percent = scene.form->findChild<QSpinBox *>(u"scalePercentageSpinBox"_s);
    sets = scene.form->findChild<QComboBox *>(u"presetComboBox"_s);
    sets->setCurrentText(u"Small"_s);
    emit sets->activated(sets->currentIndex());
    QCOMPARE(percent->value(), 25);
    QCOMPARE(settings::dwordInRange(key, u"scalePercentage", 0, 0, 100), 25);
    QCOMPARE(scene.form->settings().outputFolder, u"C:\\elsewhere"_s); // of the run, not of the set
    scene.dialogs.nextAnswer.enqueue(QMessageBox::Yes);
    scene.form->findChild<QToolButton *>(u"removePresetButton"_s)->click();
    QCOMPARE(sets->count(), 1);
}

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

void ConvertFormTest::selectionFollowsTheFiles()
{
    Scene scene;
    scene.open();
    QVERIFY(scene.add({scene.folder.path(u"in"_s)}, 3));
    const QString broken = scene.folder.path(u"in\\broken.jpg"_s);
    const auto current = [&] { return scene.list()->currentIndex(); };
    scene.list()->setCurrentIndex(scene.list()->model()->index(1, 0));
    QCOMPARE(current().data(Qt::ToolTipRole).toString(), broken);
    const auto *menu = scene.form->findChild<QToolButton *>(u"listMenuButton"_s)->menu();
    menu->actions().at(2)->trigger(); // by size: the largest is the first
    QCOMPARE(current().row(), 2);
    QCOMPARE(current().data(Qt::ToolTipRole).toString(), broken);
    scene.form->findChild<QToolButton *>(u"removeButton"_s)->click();
    QCOMPARE(scene.list()->model()->rowCount(), 2);
    QCOMPARE(current().row(), 1);
}

void ConvertFormTest::controlsAreTheSettings()
{
    Scene scene;
    scene.open();
    // The names as they are stored, by people's computers since long.
    const QStringList names =
        u"targeFileType targeFileQuality OutputFolder pdfFileName pdfPaperSize scaleImage scaleType "
        "scalePercentage scaleAbsoluteWitdh scaleAbsoluteHeight scaleRelativeTo scaleRelativeWidth "
        "scaleRelativeHeight textContent textFont textSize textColor textPosition textOpacity textMargin "
        "imagePath imageSize imagePosition imageOpacity imageMargin qrCodeText qrCodeSize qrCodePosition "
        "qrCodeMargin adjustGrayScale adjustSepia adjustContrast adjustBrightness adjustGamma "
        "adjustInvertColours setBlurRadius"_s.split(u' ');
    const QList<QWidget *> all = scene.form->findChildren<QWidget *>();
    for (const QString &name : names)
        QVERIFY2(std::ranges::any_of(
                     all, [&](const QWidget *control) { return control->objectName().startsWith(name); }),
                 qPrintable(name));
    auto *contrast = scene.form->findChild<QSpinBox *>(u"adjustContrastSpinBox"_s);
    contrast->setValue(-20);
    QCOMPARE(scene.form->findChild<QSlider *>(u"adjustContrastSlider"_s)->value(), -20);
    quint32 stored = 0;
    QVERIFY(settings::readDword(key, u"adjustContrast", stored));
    QCOMPARE(qint32(stored), -20);
    scene.form->findChild<QPushButton *>(u"resetAdjustmentsButton"_s)->click();
    QCOMPARE(contrast->value(), 0);
}

void ConvertFormTest::previewFollowsTheSettings()
{
    Scene scene;
    scene.open();
    QVERIFY(scene.add({scene.folder.path(u"in\\a.png"_s)}, 1));
    auto *facts = scene.form->findChild<QLabel *>(u"previewFactsLabel"_s);
    QTRY_VERIFY_WITH_TIMEOUT(facts->text().startsWith(u"320 x 200 becomes 320 x 200"_s), 20'000);
    auto *view = scene.form->findChild<PreviewView *>();
    const auto middle = [view] { return view->grab().toImage().pixelColor(view->rect().center()); };
    const QColor before = middle();
    QTRY_VERIFY_WITH_TIMEOUT(facts->text().contains(u"about"_s), 20'000);
    scene.form->findChild<QSpinBox *>(u"adjustInvertColoursSpinBox"_s)->setValue(256);
    QVERIFY(!facts->text().contains(u"about"_s)); // that was of the other settings
    QTRY_VERIFY_WITH_TIMEOUT(qAbs(middle().blue() - (255 - before.blue())) < 12, 20'000);
}

void ConvertFormTest::marksAreDragged_data()
{
    using conversion::Position;
    QTest::addColumn<QPoint>("by");
    QTest::addColumn<int>("drops");
    QTest::addColumn<Position>("position");
    QTest::addColumn<int>("margin");
    QTest::newRow("a click") << QPoint() << 0 << Position::Center << 0;
    QTest::newRow("top left") << QPoint(-125, -85) << 1 << Position::TopLeft << 10;
    QTest::newRow("top") << QPoint(5, -75) << 1 << Position::TopCenter << 20;
    QTest::newRow("within the middle") << QPoint(5, 5) << 1 << Position::Center << 0;
    QTest::newRow("right") << QPoint(110, 5) << 1 << Position::CenterRight << 30;
    QTest::newRow("out of the picture") << QPoint(140, 90) << 1 << Position::BottomRight << 0;
}

// A mark of 20 by 10 in the middle of 300 by 200.
void ConvertFormTest::marksAreDragged()
{
    const auto picture = std::make_shared<PreviewPicture>();
    picture->before = picture->after = photograph(300, 200);
    picture->marks.push_back({conversion::MarkKind::Qr, {}, {140, 95, 20, 10}, 100});
    PreviewView view;
    view.resize(300, 200);
    view.setPicture(picture);
    QSignalSpy placed(&view, &PreviewView::markPlaced);
    QFETCH(QPoint, by);
    const QPoint middle(150, 100);
    QTest::mousePress(&view, Qt::LeftButton, {}, middle);
    QTest::mouseMove(&view, middle + by);
    QTest::mouseRelease(&view, Qt::LeftButton, {}, middle + by);
    QFETCH(int, drops);
    QCOMPARE(placed.count(), drops);
    if (drops == 0)
        return;
    QCOMPARE(placed[0][0].value<conversion::MarkKind>(), conversion::MarkKind::Qr);
    QTEST(placed[0][1].value<conversion::Position>(), "position");
    QTEST(placed[0][2].toInt(), "margin");
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

void ConvertFormTest::blursLikeTheEffect()
{
    QImage image = photograph(300, 220);
    QPainter(&image).fillRect(120, 80, 60, 60, Qt::black);
    for (const int radius : {1, 5, 12}) {
        QGraphicsScene scene;
        auto *item = scene.addPixmap(QPixmap::fromImage(image));
        auto *effect = new QGraphicsBlurEffect;
        effect->setBlurRadius(radius);
        item->setGraphicsEffect(effect);
        QImage expected(image.size(), QImage::Format_RGB32);
        QPainter painter(&expected);
        scene.render(&painter, expected.rect(), image.rect());
        painter.end();
        const QImage soft = conversion::blurred(image, radius);
        double squares = 0;
        int pixels = 0;
        for (int y = 60; y < 160; ++y) { // the effect darkens the edges
            for (int x = 60; x < 240; ++x, ++pixels) {
                const double difference = qGreen(soft.pixel(x, y)) - qGreen(expected.pixel(x, y));
                squares += difference * difference;
            }
        }
        const double deviation = std::sqrt(squares / pixels);
        QVERIFY2(deviation < 6.0, qPrintable(u"radius %1: %2"_s.arg(radius).arg(deviation)));
    }
}

QTEST_MAIN(ConvertFormTest)
#include "tst_convert_form.moc"
