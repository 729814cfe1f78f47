// SPDX-License-Identifier: GPL-3.0-or-later
#include <QDir>
#include <QGuiApplication>
#include <QIcon>
#include <QImageReader>
#include <QtTest>

// What the program finds at run time: tools/icons checks the files, this the way from a path in the code to
// pixels.
class ImagesTest : public QObject
{
    Q_OBJECT

public:
    // Qt looks for the larger images only when a screen is scaled.
    static void initMain() { qputenv("QT_SCALE_FACTOR", "2"); }

private slots:
    void everyImageHasItsLargerTwin();
    void iconsTakeTheTwinOnScaledScreens();
    void theApplicationIconHasEverySize();
};

void ImagesTest::everyImageHasItsLargerTwin()
{
    const QDir images(QStringLiteral(":/resources/images"));
    const QStringList names = images.entryList({QStringLiteral("*.png")});
    QVERIFY(names.size() > 100);
    for (const QString &name : names) {
        if (name.contains(u'@'))
            continue;
        const QImage image(images.filePath(name));
        const QImage twin(
            images.filePath(QString(name).replace(QStringLiteral(".png"), QStringLiteral("@2x.png"))));
        QVERIFY2(!image.isNull(), qPrintable(name));
        QVERIFY2(image.hasAlphaChannel(), qPrintable(name));
        QCOMPARE(twin.size(), image.size() * 2);
    }
}

void ImagesTest::iconsTakeTheTwinOnScaledScreens()
{
    const QString path = QStringLiteral(":/resources/images/folder_size_analyzer_48x48.png");
    const QImage twin(QStringLiteral(":/resources/images/folder_size_analyzer_48x48@2x.png"));
    const QPixmap pixmap = QIcon(path).pixmap(QSize(48, 48));
    QCOMPARE(pixmap.devicePixelRatio(), 2.0);
    QCOMPARE(pixmap.toImage().convertToFormat(QImage::Format_ARGB32_Premultiplied),
             twin.convertToFormat(QImage::Format_ARGB32_Premultiplied));
}

void ImagesTest::theApplicationIconHasEverySize()
{
    // Fails too when the plugin that reads icon files was not shipped.
    QImageReader reader(QStringLiteral(":/resources/images/rocket.ico"));
    QList<int> sides;
    for (int number = 0; number < reader.imageCount(); ++number) {
        QVERIFY(reader.jumpToImage(number));
        const QImage image = reader.read();
        QVERIFY2(!image.isNull(), qPrintable(reader.errorString()));
        QCOMPARE(image.width(), image.height());
        QVERIFY(image.hasAlphaChannel());
        QVERIFY(image.pixelColor(0, 0).alpha() < 128);
        QCOMPARE(image.pixelColor(image.width() / 2, image.height() / 2).alpha(), 255);
        sides.append(image.width());
    }
    QCOMPARE(sides, QList<int>({16, 20, 24, 32, 40, 48, 64, 128, 256}));
}

QTEST_MAIN(ImagesTest)
#include "tst_images.moc"
