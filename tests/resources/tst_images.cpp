// SPDX-License-Identifier: GPL-3.0-or-later
#include <QDir>
#include <QImageReader>
#include <QtTest>

using namespace Qt::StringLiterals;

// What the program finds at run time: tools/icons checks the files, this the way from a path in the code to
// pixels.
class ImagesTest : public QObject
{
    Q_OBJECT

private slots:
    void everyImageHasItsLargerTwin();
    void theApplicationIconHasEverySize();
};

void ImagesTest::everyImageHasItsLargerTwin()
{
    const QDir images(u":/resources/images"_s);
    const QStringList names = images.entryList({u"*.png"_s});
    QVERIFY(names.size() > 100);
    for (const QString &name : names) {
        if (name.contains(u'@'))
            continue;
        const QImage image(images.filePath(name));
        const QImage twin(images.filePath(QString(name).replace(u".png"_s, u"@2x.png"_s)));
        QVERIFY2(!image.isNull(), qPrintable(name));
        QCOMPARE(twin.size(), image.size() * 2);
    }
}

void ImagesTest::theApplicationIconHasEverySize()
{
    // Fails too when the plugin that reads icon files was not shipped.
    QImageReader reader(u":/resources/images/rocket.ico"_s);
    QList<int> sides;
    for (int number = 0; number < reader.imageCount(); ++number) {
        QVERIFY(reader.jumpToImage(number));
        const QImage image = reader.read();
        QVERIFY2(!image.isNull(), qPrintable(reader.errorString()));
        QCOMPARE(image.width(), image.height());
        sides.append(image.width());
    }
    QCOMPARE(sides, QList<int>({16, 20, 24, 32, 40, 48, 64, 128, 256}));
}

QTEST_MAIN(ImagesTest)
#include "tst_images.moc"
