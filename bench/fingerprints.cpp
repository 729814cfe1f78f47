// SPDX-License-Identifier: GPL-3.0-or-later

// The look-alike scan of photographs of 12 megapixels against the least that anyone can do: a loop that reads
// each with QImageReader. The files are made once and kept. The scan decodes in threads of this process, and
// as the application does it, in processes of their own, as many as there are cores. All ways take turns; the
// medians are compared. usage: fingerprints FOLDER DECODER [PHOTOGRAPHS] [ROUNDS]

#include "FindDuplicateImage/engine/Scan.h"
#include "bench/Bench.h"
#include "imaging/DecoderPool.h"
#include "imaging/engine/ImageLoader.h"
#include "imaging/engine/ThumbnailSpool.h"
#include "tests/support/MemoryEnumerator.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>
#include <QImageReader>
#include <QTemporaryFile>
#include <QThread>

#include <cstdlib>
#include <random>

namespace
{

class Silent : public duplicates::ScanListener
{
public:
    void totalSubFolders(int) override {}
    void folderEntered() override {}
    void pathChanged(const QString &) override {}
    void itemSeen(int) override {}
};

// Soft shapes under fine grain, so that a file is as large as a camera's.
QImage photograph(quint32 number)
{
    std::mt19937 random(number);
    QImage small(16, 12, QImage::Format_RGB32);
    for (int y = 0; y < small.height(); ++y)
        for (int x = 0; x < small.width(); ++x)
            small.setPixel(
                x, y, qRgb(int(20 + random() % 200), int(20 + random() % 200), int(20 + random() % 200)));
    QImage image = small.scaled(4000, 3000, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    for (int y = 0; y < image.height(); ++y) {
        auto *row = reinterpret_cast<QRgb *>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            const int grain = static_cast<int>(random() % 24);
            row[x] = qRgb(qRed(row[x]) + grain, qGreen(row[x]) + grain, qBlue(row[x]) + grain);
        }
    }
    return image;
}

QStringList photographs(const QDir &folder, int count)
{
    QStringList paths;
    for (int i = 0; i < count; ++i) {
        const QString path = folder.filePath(QStringLiteral("photograph %1.jpg").arg(i));
        // Every fifth shows what an earlier one shows.
        if (!QFileInfo::exists(path) &&
            !photograph(quint32(i % 5 == 4 ? i - 3 : i)).save(path, "JPG", i % 5 == 4 ? 85 : 90))
            qFatal("cannot write %s", qPrintable(path));
        paths.append(path);
    }
    return paths;
}

void readAll(const QStringList &paths)
{
    for (const QString &path : paths) {
        QImageReader reader(path);
        if (reader.read().isNull())
            std::abort();
    }
}

// The folder is listed from memory, so that the walk costs nothing.
std::size_t scanAll(const QStringList &paths, int threads, const lookalikes::Examine &examine)
{
    const QString folder = QDir::toNativeSeparators(QFileInfo(paths.front()).path());
    tests::MemoryEnumerator disk;
    for (const QString &path : paths)
        disk.addFile(folder + u'\\' + QFileInfo(path).fileName(), 1);
    QTemporaryFile file;
    if (!file.open())
        qFatal("no temporary file");
    imaging::ThumbnailSpool thumbnails(file);
    Silent listener;
    const core::CancelFlag cancel;
    lookalikes::ScanOptions options;
    options.decodeThreads = threads;
    const auto result =
        lookalikes::findLookalikes(folder, options, disk, examine, thumbnails, listener, cancel);
    if (result.imagesCompared != std::size_t(paths.size()))
        qFatal("%zu pictures compared", result.imagesCompared);
    return result.groups.size();
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    if (argc < 3)
        return 2;
    const QDir folder(QString::fromLocal8Bit(argv[1]));
    const int count = argc > 3 ? std::atoi(argv[3]) : 300;
    const int rounds = argc > 4 ? std::atoi(argv[4]) : 3;
    if (count < 1 || !folder.mkpath(QStringLiteral(".")))
        return 2;
    const QStringList paths = photographs(folder, count);
    const int cores = QThread::idealThreadCount();
    imaging::DecoderPool decoders({QString::fromLocal8Bit(argv[2])});
    const core::CancelFlag cancel;
    const lookalikes::Examine examineHere = lookalikes::examineWith(imaging::readImage);
    const lookalikes::Examine examineApart =
        [&](const QString &path,
            const imaging::BeforeDecode &before) -> std::optional<lookalikes::ExaminedImage> {
        auto examination = decoders.examine(path, before, cancel);
        if (!examination)
            return std::nullopt;
        return lookalikes::examinedImage(std::move(*examination));
    };

    readAll(paths); // warms the system's cache
    std::vector<double> bare, one, all, apart;
    std::size_t groups = 0;
    for (int round = 0; round < rounds; ++round) {
        bare.push_back(bench::seconds([&] { readAll(paths); }));
        one.push_back(bench::seconds([&] { groups = scanAll(paths, 1, examineHere); }));
        all.push_back(bench::seconds([&] { groups = scanAll(paths, cores, examineHere); }));
        apart.push_back(bench::seconds([&] { groups = scanAll(paths, cores, examineApart); }));
    }
    if (decoders.usesThisProcess() || decoders.lost() > 0)
        qFatal("the decoders did not work");
    bench::report("photographs", count);
    bench::report("groups", static_cast<double>(groups));
    bench::report("bare loop of QImageReader::read", bench::median(bare), "s");
    bench::report("scan, one decoding thread", bench::median(one), "s");
    bench::report("scan, " + std::to_string(cores) + " decoding threads", bench::median(all), "s");
    bench::report("scan, " + std::to_string(cores) + " decoding processes", bench::median(apart), "s");
    bench::report("ratio, one thread (aim: at most 1.05)", bench::median(one) / bench::median(bare));
    bench::report("ratio, all cores (aim on two: at most 0.6)", bench::median(all) / bench::median(bare));
    bench::report("ratio, all cores, processes (the same aim)", bench::median(apart) / bench::median(bare));
    return 0;
}
