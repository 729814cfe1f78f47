// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/engine/ImageFormat.h"
#include "ConvertImage/engine/Run.h"

#include <QBuffer>
#include <QGuiApplication>
#include <QHash>
#include <QMutex>
#include <QTest>

#include <atomic>
#include <new>
#include <stdexcept>

using namespace conversion;

namespace
{

QString path(const char *name)
{
    return QStringLiteral("C:\\in\\") + QString::fromLatin1(name);
}

QString made(const char *name)
{
    return QStringLiteral("C:\\out\\") + QString::fromLatin1(name);
}

// A disk in memory.
class MemoryFiles : public ConversionFiles
{
public:
    QHash<QString, QImage> sources;
    QHash<QString, QByteArray> written; // by its path in small letters
    QString lockedOutput;
    QString note; // on every source
    Metadata metadata;
    bool fullDisk = false;
    bool brokenLoader = false;
    std::atomic_int loads = 0;
    core::CancelFlag *cancelInLoad = nullptr; // a decoder that is stopped gives no picture
    int lost = 0;                             // temporary files that went without being placed

    Source load(const QString &source, bool, const std::function<void(qint64)> &beforeDecode) override
    {
        ++loads;
        if (brokenLoader)
            throw std::length_error("too long");
        if (cancelInLoad)
            cancelInLoad->set();
        if (cancelInLoad || !sources.contains(source))
            return {{}, {}, 0, QStringLiteral("gone")};
        const QImage image = sources.value(source);
        if (beforeDecode)
            beforeDecode(image.sizeInBytes());
        return {image, metadata, 1000, {}, note};
    }
    bool exists(const QString &output) override
    {
        const QMutexLocker lock(&m_mutex);
        return written.contains(output.toLower());
    }
    std::unique_ptr<PendingOutput> begin(const QString &output, const QString &, QString &problem) override
    {
        if (output == lockedOutput) {
            problem = QStringLiteral("locked");
            return nullptr;
        }
        return std::make_unique<Pending>(*this, output);
    }

private:
    // Full after some bytes.
    class Disk : public QBuffer
    {
    public:
        bool full = false;
        qint64 writeData(const char *data, qint64 length) override
        {
            return full && pos() + length > 40 ? -1 : QBuffer::writeData(data, length);
        }
    };

    class Pending : public PendingOutput
    {
    public:
        Pending(MemoryFiles &files, const QString &output) : m_files(files), m_output(output.toLower())
        {
            m_disk.full = files.fullDisk;
            m_disk.open(QIODevice::ReadWrite);
        }
        ~Pending() override
        {
            const QMutexLocker lock(&m_files.m_mutex);
            m_files.lost += m_placed ? 0 : 1;
        }
        QIODevice &device() override { return m_disk; }
        Placed place(bool replace, QString &) override
        {
            const QMutexLocker lock(&m_files.m_mutex);
            if (!replace && m_files.written.contains(m_output))
                return Placed::Exists;
            m_files.written[m_output] = m_disk.data();
            m_placed = true;
            return Placed::Done;
        }

    private:
        MemoryFiles &m_files;
        QString m_output;
        Disk m_disk;
        bool m_placed = false;
    };

    QMutex m_mutex;
};

QImage plain(int width, QColor colour)
{
    QImage image(width, 4, QImage::Format_RGB32);
    image.fill(colour);
    return image;
}

QString outcomes(const std::vector<FileResult> &results)
{
    QString text;
    for (const FileResult &result : results)
        text += QStringLiteral(".WEF")[static_cast<int>(result.outcome)];
    return text;
}

std::vector<FileResult> converted(MemoryFiles &files, const QStringList &sources, RunOptions options = {},
                                  const RunListener &listener = {}, const core::CancelFlag &cancel = {})
{
    options.encoding.target = Target::Png;
    return convertFiles(plannedFiles(sources, QStringLiteral("C:\\out"), QStringLiteral(".png")), options,
                        files, listener, cancel);
}

} // namespace

class TestRun : public QObject
{
    Q_OBJECT

private slots:
    void names_data();
    void names();
    void clashesAreResolved();
    void existingAreListed();
    void oneOutputForSeveral();
    void failuresAreTold();
    void manyInOrder();
    void cancelled();
    void exceptionsOnEveryThreadAreReported();
    void documents();
};

void TestRun::names_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("source");
    QTest::addColumn<QString>("expected");
    QTest::newRow("to the first dot") << "C:\\o"
                                      << "D:\\x.y\\photo.2024.jpg"
                                      << "C:\\o\\photo.png";
    QTest::newRow("nothing before the dot") << "C:\\o"
                                            << "D:\\.a.jpg"
                                            << "C:\\o\\.png";
    QTest::newRow("no dot") << "C:\\o"
                            << "D:/x/photo"
                            << "C:\\o\\photo.png";
    QTest::newRow("a drive") << "C:\\"
                             << "D:\\a.b"
                             << "C:\\a.png";
}

void TestRun::names()
{
    QFETCH(QString, folder);
    QFETCH(QString, source);
    QTEST(outputPath(folder, source, QStringLiteral(".png")), "expected");
}

void TestRun::clashesAreResolved()
{
    std::vector<PlannedFile> plan = plannedFiles(
        {path("IMG.1.jpg"), path("b.jpg"), path("img.2.jpg"), path("IMG.2.png"), path("IMG.jpg")}, {},
        QStringLiteral(".png"));
    const std::vector<Clash> found = clashes(plan);
    QCOMPARE(found.size(), std::size_t(1));
    QCOMPARE(found[0].files, (std::vector<std::size_t>{0, 2, 3, 4}));
    resolveClashes(plan, [](const QString &name) { return name == path("IMG (2).png"); });
    QCOMPARE(plan[0].output, path("IMG.png"));
    QCOMPARE(plan[2].output, path("img.2.png"));
    QCOMPARE(plan[3].output, path("IMG.2 (2).png"));
    QCOMPARE(plan[4].output, path("IMG (3).png"));
    QVERIFY(clashes(plan).empty());
}

void TestRun::existingAreListed()
{
    MemoryFiles files;
    files.sources = {{path("a.jpg"), plain(3, Qt::red)}, {path("b.jpg"), plain(4, Qt::red)}};
    files.written[made("b.png")] = "old";
    files.written.insert(made("b.png").toLower(), "old");
    const QStringList sources{path("a.jpg"), path("b.jpg")};
    QCOMPARE(outcomes(converted(files, sources)), QStringLiteral("WE"));
    QCOMPARE(files.written[made("b.png").toLower()], QByteArray("old"));
    QCOMPARE(files.loads.load(), 1); // no work for what is only listed
    RunOptions options;
    options.overwriteAll = true;
    QCOMPARE(outcomes(converted(files, sources, options)), QStringLiteral("WW"));
    QCOMPARE(QImage::fromData(files.written[made("b.png").toLower()]).width(), 4);
}

void TestRun::oneOutputForSeveral()
{
    MemoryFiles files;
    files.sources = {{path("a.png"), plain(3, Qt::red)}, {path("A.jpg"), plain(4, Qt::red)}};
    RunOptions options;
    options.threads = 4;
    for (const bool overwrite : {false, true}) {
        files.written.clear();
        options.overwriteAll = overwrite;
        // What this run wrote is never replaced by it; what failed leaves the name free.
        QCOMPARE(outcomes(converted(files, {path("a.png"), path("A.jpg")}, options)), QStringLiteral("WE"));
        QCOMPARE(QImage::fromData(files.written[made("a.png").toLower()]).width(), 3);
        files.written.clear();
        QCOMPARE(outcomes(converted(files, {path("a.gone"), path("a.png"), path("A.jpg")}, options)),
                 QStringLiteral("FWE"));
    }
}

void TestRun::failuresAreTold()
{
    MemoryFiles files;
    files.sources = {{path("a.jpg"), plain(300, Qt::red)}, {path("c.jpg"), plain(1, Qt::red)}};
    files.lockedOutput = made("a.png");
    const std::vector<FileResult> results = converted(files, {path("a.jpg"), path("b.jpg"), path("c.jpg")});
    QCOMPARE(outcomes(results), QStringLiteral("FFW"));
    QCOMPARE(results[0].problem, QStringLiteral("locked"));
    QCOMPARE(results[1].problem, QStringLiteral("gone"));
    QCOMPARE(results[2].sourceBytes, 1000);
    QCOMPARE(results[2].outputBytes, files.written[made("c.png").toLower()].size());
    files.written.clear();
    RunOptions small;
    small.rendering.resize = {.on = true, .percentage = 50};
    QVERIFY(!converted(files, {path("c.jpg")}, small)[0].problem.isEmpty());
    files.fullDisk = true;
    files.written.clear();
    QCOMPARE(outcomes(converted(files, {path("c.jpg")})), QStringLiteral("F"));
    QVERIFY(files.written.isEmpty());
    QCOMPARE(files.lost, 1);
    files.fullDisk = false;
    files.note = QStringLiteral("cut off");
    files.metadata.exif = "damaged";
    QVERIFY(converted(files, {path("c.jpg")})[0].note.startsWith(QStringLiteral("cut off. EXIF")));
    QCOMPARE(convertToPdf({path("c.jpg")}, made("d.pdf"), {}, files, {}, {})[0].note, files.note);
}

void TestRun::manyInOrder()
{
    MemoryFiles files;
    QStringList sources;
    for (int i = 0; i < 60; ++i) {
        sources.append(path("p%1.jpg").arg(i));
        files.sources[sources.last()] = plain(i + 1, Qt::red);
    }
    QStringList started;
    int finished = 0;
    RunOptions options;
    options.threads = 4;
    options.decodedBytes = 100; // less than one picture needs: one at a time, and none waits for ever
    const std::vector<FileResult> results =
        converted(files, sources, options,
                  {[&started](const QString &source) { started.append(source); },
                   [&finished](const FileResult &) { ++finished; }});
    QCOMPARE(started, sources);
    QCOMPARE(finished, 60);
    for (int i = 0; i < 60; ++i)
        QCOMPARE(results[std::size_t(i)].size.width(), i + 1);
}

void TestRun::cancelled()
{
    MemoryFiles files;
    files.sources = {{path("a.jpg"), plain(3, Qt::red)}, {path("b.jpg"), plain(4, Qt::red)}};
    core::CancelFlag cancel;
    const auto results = converted(files, {path("a.jpg"), path("b.jpg")}, {},
                                   {{}, [&cancel](const FileResult &) { cancel.set(); }}, cancel);
    QCOMPARE(outcomes(results), QStringLiteral("W."));
    QCOMPARE(files.written.size(), 1);
    QVERIFY(converted(files, {}).empty());
    cancel.reset();
    files.cancelInLoad = &cancel;
    QCOMPARE(outcomes(converted(files, {path("b.jpg")}, {}, {}, cancel)), QStringLiteral("."));
}

void TestRun::exceptionsOnEveryThreadAreReported()
{
    MemoryFiles files;
    QStringList sources;
    for (int i = 0; i < 12; ++i) {
        sources.append(QStringLiteral("C:\\in\\%1.jpg").arg(i));
        files.sources[sources.last()] = plain(3, Qt::red);
    }
    RunOptions options;
    options.threads = 4;
    const auto throws = [](const FileResult &) { throw std::length_error("listener"); };
    QVERIFY_THROWS_EXCEPTION(std::length_error, converted(files, sources, options, {{}, throws}));
    files.written.clear();
    files.brokenLoader = true;
    const auto results = converted(files, sources, options);
    QCOMPARE(outcomes(results), QString(12, u'F'));
    QCOMPARE(results.back().problem, QStringLiteral("too long"));
    const auto lastRow = [](int y) {
        if (y == 7)
            throw std::bad_alloc();
    };
    QVERIFY_THROWS_EXCEPTION(std::bad_alloc, forEachRowInParallel(8, 1 << 20, lastRow));
}

void TestRun::documents()
{
    MemoryFiles files;
    files.sources = {{path("a.jpg"), plain(3, Qt::red)}, {path("c.jpg"), plain(4, Qt::red)}};
    const QStringList sources{path("a.jpg"), path("b.jpg"), path("c.jpg")};
    const QString document = made("d.pdf");
    const QString key = document.toLower();
    files.written[key] = "old";
    core::CancelFlag cancel;
    const RunListener cancels{{}, [&cancel](const FileResult &) { cancel.set(); }};
    QCOMPARE(outcomes(convertToPdf(sources, document, {}, files, cancels, cancel)), QStringLiteral("..."));
    QCOMPARE(files.written[key], QByteArray("old"));
    cancel.reset();
    files.fullDisk = true;
    QCOMPARE(outcomes(convertToPdf(sources, document, {}, files, {}, cancel)), QStringLiteral("FFF"));
    QCOMPARE(files.written[key], QByteArray("old"));
    files.fullDisk = false;
    QCOMPARE(outcomes(convertToPdf(sources, document, {}, files, {}, cancel)), QStringLiteral("WFW"));
    QCOMPARE(files.written[key].count("/Type /Page\n"), 3);
}

int main(int argc, char **argv)
{
#ifndef Q_OS_WIN
    qputenv("QT_QPA_PLATFORM", "offscreen"); // the build machine may have no display
#endif
    QGuiApplication application(argc, argv);
    TestRun test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_convert_run.moc"
