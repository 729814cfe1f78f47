// SPDX-License-Identifier: GPL-3.0-or-later
// Icons as another program reads and writes them: icotool and wrestool of icoutils.
#include "ExtractIcon/engine/IconListing.h"
#include "ExtractIcon/engine/IconPicture.h"
#include "ExtractIcon/engine/IconWriter.h"

#include <QDir>
#include <QFile>
#include <QHash>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace icons;

namespace
{

// What the program prints; fails the test when it is not there. It may answer with an error for some files.
QString run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.start(program, arguments);
    if (!process.waitForStarted())
        qFatal("%s is not installed (package icoutils)", qPrintable(program));
    process.waitForFinished(60000);
    return QString::fromLocal8Bit(process.readAllStandardOutput());
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// The images of an icon file, by our own parser.
QList<IconImage> decoded(const QString &path)
{
    IconFileSource source(contents(path));
    const std::optional<StoredIcon> icon = readIcon(source, IconFileSource::onlyId);
    return icon ? decodeIcon(*icon) : QList<IconImage>();
}

// Empty when both pictures look the same; transparent pixels have no colour.
QString difference(QImage ours, QImage theirs)
{
    ours = ours.convertToFormat(QImage::Format_ARGB32);
    theirs = theirs.convertToFormat(QImage::Format_ARGB32);
    if (ours.size() != theirs.size())
        return QStringLiteral("size %1x%2").arg(ours.width()).arg(ours.height());
    for (int y = 0; y < ours.height(); ++y) {
        const auto *left = reinterpret_cast<const QRgb *>(ours.constScanLine(y));
        const auto *right = reinterpret_cast<const QRgb *>(theirs.constScanLine(y));
        for (int x = 0; x < ours.width(); ++x) {
            const QRgb a = left[x], b = right[x];
            if (a != b && !(qAlpha(a) == 0 && qAlpha(b) == 0))
                return QStringLiteral("%1,%2: %3, icotool %4").arg(x).arg(y).arg(a, 8, 16).arg(b, 8, 16);
        }
    }
    return {};
}

// Compares every image of the icon files of a folder with what icotool makes of it. Returns the number.
int compareFolder(const QDir &folder)
{
    QDir(folder).mkdir(QStringLiteral("png"));
    QStringList arguments{QStringLiteral("-x"), QStringLiteral("-o"), folder.filePath(QStringLiteral("png"))};
    const QStringList files = folder.entryList({QStringLiteral("*.ico")}, QDir::Files);
    for (const QString &file : files)
        arguments.append(folder.filePath(file));
    run(QStringLiteral("icotool"), arguments);
    // "shell32.dll_14_1_0_3_48x48x32.png" is the third image of "shell32.dll_14_1_0.ico".
    QHash<QString, QString> pictures;
    const QDir made(folder.filePath(QStringLiteral("png")));
    for (const QString &file : made.entryList(QDir::Files))
        pictures.insert(file.section(u'_', 0, -2), made.filePath(file));
    int compared = 0;
    for (const QString &file : files) {
        const QList<IconImage> images = decoded(folder.filePath(file));
        for (qsizetype i = 0; i < images.size(); ++i) {
            const QString name = QStringLiteral("%1_%2").arg(file.chopped(4)).arg(i + 1);
            const QString wrong = difference(images[i].image, QImage(pictures.value(name)));
            if (wrong.isEmpty())
                ++compared;
            else
                qWarning() << name << wrong;
        }
    }
    return compared;
}

int imageCount(const QDir &folder)
{
    int count = 0;
    for (const QString &file : folder.entryList({QStringLiteral("*.ico")}, QDir::Files))
        count += static_cast<int>(decoded(folder.filePath(file)).size());
    return count;
}

// A disc with soft edges on nothing, and colour enough for every depth.
QImage picture(int side)
{
    QImage image(side, side, QImage::Format_ARGB32);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            const double fromMiddle = std::hypot(x - side / 2.0, y - side / 2.0);
            const int alpha = std::clamp(static_cast<int>((side / 2.0 - fromMiddle) * 60), 0, 255);
            image.setPixel(x, y, qRgba(x * 255 / side, y * 255 / side, 128, alpha));
        }
    }
    return image;
}

} // namespace

class tst_icon_other_readers : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void librariesOfWine();
    void depthsOfIcotool();
    void ownFilesAreRead();
};

void tst_icon_other_readers::initTestCase()
{
#ifdef Q_OS_WIN
    QSKIP("asks programs of the build machine");
#endif
}

void tst_icon_other_readers::librariesOfWine()
{
    const QDir wine(QStringLiteral("/usr/lib/x86_64-linux-gnu/wine/x86_64-windows"));
    QTemporaryDir scratch;
    QStringList arguments{QStringLiteral("-x"), QStringLiteral("-t14"), QStringLiteral("-o"), scratch.path()};
    for (const QString &file : wine.entryList(QDir::Files))
        arguments.append(wine.filePath(file));
    run(QStringLiteral("wrestool"), arguments);
    const int images = imageCount(QDir(scratch.path()));
    QVERIFY2(images > 1000, "the package libwine is needed");
    QCOMPARE(compareFolder(QDir(scratch.path())), images);
}

void tst_icon_other_readers::depthsOfIcotool()
{
    QTemporaryDir scratch;
    const QDir folder(scratch.path());
    for (const int side : {15, 16, 20, 48}) {
        const QString png = folder.filePath(QStringLiteral("%1.png").arg(side));
        QVERIFY(picture(side).save(png));
        // Few colours, which is all that icotool can put into a palette.
        const QString few = folder.filePath(QStringLiteral("few%1.png").arg(side));
        QImage blocks(side, side, QImage::Format_ARGB32);
        for (int y = 0; y < side; ++y) {
            for (int x = 0; x < side; ++x)
                blocks.setPixel(x, y, x < y ? 0 : (x / 3 + y / 3) % 2 == 0 ? 0xff000000 : 0xffffffff);
        }
        QVERIFY(blocks.save(few));
        for (const int bits : {1, 4, 8, 24, 32}) {
            run(QStringLiteral("icotool"),
                {QStringLiteral("-c"), QStringLiteral("-b"), QString::number(bits), QStringLiteral("-o"),
                 folder.filePath(QStringLiteral("%1_%2.ico").arg(side).arg(bits)), bits <= 8 ? few : png});
        }
    }
    QCOMPARE(imageCount(folder), 20);
    QCOMPARE(compareFolder(folder), 20);
}

void tst_icon_other_readers::ownFilesAreRead()
{
    QTemporaryDir scratch;
    QList<QImage> images;
    const IconPicture square(picture(400), QRect(0, 0, 400, 400));
    for (const int side : usualSizes)
        images.append(square.made(side, true));
    QFile file(scratch.filePath(QStringLiteral("own.ico")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(makeIconFile(images));
    file.close();

    const QString listed = run(QStringLiteral("icotool"), {QStringLiteral("-l"), file.fileName()});
    QStringList sizes;
    QRegularExpressionMatchIterator each =
        QRegularExpression(QStringLiteral("--width=(\\d+) --height=\\1 --bit-depth=32")).globalMatch(listed);
    while (each.hasNext())
        sizes.append(each.next().captured(1));
    QCOMPARE(sizes.join(u' '), QStringLiteral("16 20 24 32 40 48 64 96 128 256"));
    const QList<IconImage> again = decoded(file.fileName());
    QCOMPARE(again.size(), images.size());
    for (qsizetype i = 0; i < images.size(); ++i) {
        QCOMPARE(again[i].facts.png, images[i].width() == 256);
        QCOMPARE(difference(again[i].image, images[i]), QString());
    }
    QCOMPARE(compareFolder(QDir(scratch.path())), 10);
}

QTEST_GUILESS_MAIN(tst_icon_other_readers)
#include "tst_icon_other_readers.moc"
