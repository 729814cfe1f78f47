// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/engine/Blur.h"
#include "ConvertImage/engine/Targets.h"
#include "ConvertImage/options/Settings.h"
#include "ConvertImage/preview/PreviewView.h"
#include "tests/ConvertImage/Scene.h"
#include "tests/support/RegistryTest.h"

#include <QApplication>
#include <QComboBox>
#include <QGraphicsBlurEffect>
#include <QGraphicsPixmapItem>
#include <QGraphicsScene>
#include <QInputDialog>
#include <QLabel>
#include <QMenu>
#include <QPainter>
#include <QPushButton>
#include <QSlider>
#include <QSpinBox>
#include <QTimer>
#include <QToolButton>

#include <memory>

using namespace Qt::StringLiterals;
using namespace tests::convert;

class ConvertPageTest : public tests::RegistryTest
{
    Q_OBJECT

private slots:
    void initTestCase() { QApplication::setStyle(u"Fusion"_s); }

    void settingsSurviveDamage();
    void namedSets();
    void selectionFollowsTheFiles();
    void controlsAreTheSettings();
    void previewFollowsTheSettings();
    void marksAreDragged_data();
    void marksAreDragged();
    void blursLikeTheEffect();
};

// What is stored and not usable shows as the default; what is, in every control of the value.
void ConvertPageTest::settingsSurviveDamage()
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

void ConvertPageTest::namedSets()
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

void ConvertPageTest::selectionFollowsTheFiles()
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

void ConvertPageTest::controlsAreTheSettings()
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

void ConvertPageTest::previewFollowsTheSettings()
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

void ConvertPageTest::marksAreDragged_data()
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
void ConvertPageTest::marksAreDragged()
{
    const auto picture = std::make_shared<PreviewImage>();
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

void ConvertPageTest::blursLikeTheEffect()
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

QTEST_MAIN(ConvertPageTest)
#include "tst_convert_page.moc"
