// SPDX-License-Identifier: GPL-3.0-or-later
// Reads image files that others made (tools/image-corpus), the broken and the hostile among them: each one is
// read as the picture that its makers say it is, or is refused. Its folder is in the environment as
// LARKSPUR_IMAGE_CORPUS.
#include "imaging/engine/ImageLoader.h"
#include "tests/formats/Pictures.h"
#include "tests/support/TestPrefix.h"

#include <QColorSpace>
#include <QDir>
#include <QDirIterator>
#include <QElapsedTimer>
#include <QFileInfo>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>
#include <QRegularExpression>
#include <QTest>
#include <QVersionNumber>

#include <algorithm>
#include <cmath>
#include <optional>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

constexpr qint64 maxMilliseconds = 20000;
constexpr quint64 mebibyte = 1 << 20;
// A picture at the limit, and as much again for its decoder.
constexpr quint64 maxMemory = 2 * quint64(imaging::imageAllocationLimit) * mebibyte;

// What kimageformats wrote beside a picture: which file it must look like, by the version of Qt.
std::optional<QString> statedReference(const QFileInfo &picture)
{
    QFile file(picture.filePath() + u".json"_s);
    if (!file.open(QIODevice::ReadOnly))
        return std::nullopt;
    const QVersionNumber qt = QVersionNumber::fromString(QLatin1StringView(qVersion()));
    for (const QJsonValue &value : QJsonDocument::fromJson(file.readAll()).array()) {
        const QJsonObject entry = value.toObject();
        const QString least = entry["minQtVersion"_L1].toString(u"0"_s);
        const QString most = entry["maxQtVersion"_L1].toString(u"99"_s);
        if (qt < QVersionNumber::fromString(least) || qt > QVersionNumber::fromString(most))
            continue;
        // Our loader always turns a picture upright. The references in TIFF are CMYK with a profile, which
        // only a later TIFF reader knows.
        const QString name = entry["fileName"_L1].toString();
        if (entry["disableAutoTransform"_L1].toBool() || name.endsWith(".tif"_L1))
            return QString();
        return picture.dir().filePath(name);
    }
    return QString();
}

// rose.lossy.webp -> rose.png, video-001-tile.tiff -> video-001.png
QString sameStem(const QFileInfo &picture)
{
    QString stem = picture.completeBaseName();
    while (!stem.isEmpty()) {
        const QString candidate = picture.dir().filePath(stem + u".png"_s);
        if (QFileInfo::exists(candidate))
            return candidate;
        stem.truncate(std::max(stem.lastIndexOf(u'.'), stem.lastIndexOf(u'-')));
    }
    return {};
}

// The same picture in a file that other code made; empty when there is none. By the naming of the packages.
QString referenceOf(const QFileInfo &picture)
{
    static const QRegularExpression sameAsHopper(
        u"^hopper(_(bigtiff|jpg|lzw|webp|merged|orientation_\\d))?\\.(jpg|tif|webp|psd|bmp)$"_s);
    static const QRegularExpression turnedFax(u"^g4_orientation_\\d\\.tif$"_s);
    // Grey of a coloured picture, and a picture without the transparency of the other.
    static const QRegularExpression otherContent(u"^(video.*gray.*|yellow_rose\\.lossy\\.webp)$"_s);
    if (const std::optional<QString> stated = statedReference(picture))
        return *stated;
    const QString path = picture.path();
    const QString name = picture.fileName();
    if (picture.suffix() == "png"_L1 || otherContent.match(name).hasMatch())
        return {};
    if (path.contains("/kf6-kimageformats/"_L1) || path.contains("/golang-"_L1) ||
        path.contains("/reftests"_L1))
        return sameStem(picture);
    if (path.endsWith("/pillow"_L1) && sameAsHopper.match(name).hasMatch())
        return picture.dir().filePath(u"hopper.png"_s);
    if (path.endsWith("/pillow"_L1) && turnedFax.match(name).hasMatch())
        return picture.dir().filePath(u"g4_orientation_1.tif"_s);
    const QString shown = picture.dir().filePath(u"../html/"_s + picture.completeBaseName() + u".png"_s);
    return path.endsWith("/pillow/bmp/g"_L1) && QFileInfo::exists(shown) ? shown : QString();
}

QImage inSRgb(const QImage &image)
{
    const QColorSpace sRgb(QColorSpace::SRgb);
    return image.colorSpace().isValid() ? image.convertedToColorSpace(sRgb, QImage::Format_ARGB32) : image;
}

// Some references have the same numbers in another colour space, some the same colours.
double shownDifference(const QImage &first, const QImage &second)
{
    return std::min(difference(first, second).mean, difference(inSRgb(first), inSRgb(second)).mean);
}

QStringList picturesBelow(const QString &folder)
{
    QStringList paths;
    QDirIterator files(folder, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        const QString path = files.next();
        if (!path.endsWith(".json"_L1) && path.contains(u'.'))
            paths.append(path);
    }
    paths.sort();
    return paths;
}

} // namespace

class TestCorpus : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void reads_data();
    void reads();
    void cleanupTestCase();

private:
    QString m_folder;
    QStringList m_pictures;
    quint64 m_memoryBefore = 0;
    bool m_aboveBound = false;
    int m_read = 0;
    int m_compared = 0;
};

void TestCorpus::initTestCase()
{
    tests::requireTestPrefix();
    m_folder = qEnvironmentVariable("LARKSPUR_IMAGE_CORPUS");
    if (m_folder.isEmpty() || !QDir(m_folder).exists())
        QSKIP("LARKSPUR_IMAGE_CORPUS names no folder; tools/image-corpus makes one");
    // A package that could not be had is no fault of this program, but the run proves less without it, and
    // nothing without any.
    QFile missing(QDir(m_folder).filePath(u"missing"_s)); // written by tools/image-corpus
    const QByteArray names =
        missing.open(QIODevice::ReadOnly) ? missing.readAll().simplified() : QByteArray();
    if (!names.isEmpty())
        qInfo("not fetched: %s", names.constData());
    m_pictures = picturesBelow(m_folder);
    QVERIFY2(!m_pictures.isEmpty(), "no package was had: there is no picture to read");
    m_memoryBefore = peakMemory();
}

void TestCorpus::reads_data()
{
    QTest::addColumn<QString>("path");
    const QDir folder(m_folder);
    for (const QString &path : std::as_const(m_pictures))
        QTest::newRow(qPrintable(folder.relativeFilePath(path))) << path;
}

void TestCorpus::reads()
{
    QFETCH(QString, path);
    QElapsedTimer timer;
    timer.start();
    const auto loaded = imaging::readImage(path);
    QVERIFY2(timer.elapsed() < maxMilliseconds, qPrintable(QString::number(timer.elapsed())));
    // The peak never falls: the first file above the bound is the one that fails.
    const quint64 taken = peakMemory() - m_memoryBefore;
    const bool aboveAlready = std::exchange(m_aboveBound, taken >= maxMemory);
    QVERIFY2(aboveAlready || taken < maxMemory, qPrintable(QString::number(taken / mebibyte) + u" MiB"_s));
    m_read += loaded.has_value();
    const QString reference = referenceOf(QFileInfo(path));
    if (reference.isEmpty())
        return;
    const auto expected = imaging::readImage(reference);
    QVERIFY2(expected, qPrintable(reference));
    QVERIFY2(loaded, "has a reference and is not read");
    ++m_compared;
    const double mean = shownDifference(loaded->image, expected->image);
    QVERIFY2(mean < 4, qPrintable(QString::number(mean) + u" from "_s + reference));
}

void TestCorpus::cleanupTestCase()
{
    qInfo("%d of %d files read, %d compared", m_read, int(m_pictures.size()), m_compared);
}

QTEST_GUILESS_MAIN(TestCorpus)
#include "tst_corpus.moc"
