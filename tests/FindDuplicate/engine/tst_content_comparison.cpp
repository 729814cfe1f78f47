// SPDX-License-Identifier: GPL-3.0-or-later
#include "FindDuplicate/engine/ContentComparison.h"

#include "core/DirectoryEnumerator.h"

#include <QByteArray>
#include <QTest>

#include <algorithm>
#include <map>

using namespace duplicates;
using namespace Qt::StringLiterals;
using S = ContentState;
using States = std::vector<ContentState>;

namespace
{

constexpr qsizetype chunk = qsizetype(1) << 20; // what the comparison reads at a time

struct FakeFile {
    QByteArray content = {};
    quint32 attributes = 0;
    bool opens = true;
    qint64 failsAt = -1; // reading this offset fails
    qint64 atOnce = qint64(1) << 30;
};

class FakeReader : public ContentReader
{
public:
    std::map<QString, FakeFile> files;
    QStringList opened;
    int open_ = 0;
    int maxOpen = 0;
    core::CancelFlag *cancelAfterReads = nullptr;
    int readsLeft = 0;

    std::optional<quint32> attributes(const QString &path) override
    {
        const auto found = files.find(path);
        return found == files.end() ? std::nullopt : std::optional(found->second.attributes);
    }

    std::unique_ptr<File> open(const QString &path) override
    {
        opened.append(path);
        if (!files.at(path).opens)
            return nullptr;
        return std::make_unique<Handle>(*this, files.at(path));
    }

private:
    class Handle : public File
    {
    public:
        Handle(FakeReader &reader, const FakeFile &file) : m_reader(reader), m_file(file)
        {
            m_reader.maxOpen = std::max(m_reader.maxOpen, ++m_reader.open_);
        }
        ~Handle() override { --m_reader.open_; }

        qint64 read(char *to, qint64 atMost) override
        {
            if (m_reader.cancelAfterReads && m_reader.readsLeft-- == 0)
                m_reader.cancelAfterReads->set();
            qint64 length = std::min({atMost, m_file.atOnce, m_file.content.size() - m_offset});
            if (m_file.failsAt >= 0 && m_offset + length > m_file.failsAt)
                return -1;
            std::copy_n(m_file.content.constData() + m_offset, length, to);
            m_offset += length;
            return length;
        }

    private:
        FakeReader &m_reader;
        const FakeFile &m_file;
        qint64 m_offset = 0;
    };
};

QByteArray content(qsizetype size)
{
    QByteArray bytes(size, Qt::Uninitialized);
    for (qsizetype i = 0; i < size; ++i)
        bytes[i] = static_cast<char>((i * 2654435761U) >> 13);
    return bytes;
}

QByteArray changedAt(QByteArray bytes, qsizetype at)
{
    bytes[at] = static_cast<char>(bytes[at] ^ 1);
    return bytes;
}

} // namespace

class ContentComparisonTest : public QObject
{
    Q_OBJECT

private slots:
    void states_data();
    void states();
    void placeholdersAreNotOpened();
    void unreadableFirstGivesWay();
    void manyMembersStayWithinBounds();
    void cancelled();

private:
    States compare(FakeReader &reader, quint64 size = 0);

    core::CancelFlag m_cancel;
    quint64 m_done = 0;
    quint64 m_total = 0;
};

// The members are the reader's files, by name. Checks the progress as it goes.
States ContentComparisonTest::compare(FakeReader &reader, quint64 size)
{
    QStringList paths;
    for (const auto &[path, file] : reader.files)
        paths.append(path);
    m_done = m_total = 0;
    const States states = compareContents(
        paths, size, reader,
        [&](quint64 done, quint64 total) {
            if (total == m_total && done < m_done)
                qFatal("progress went back");
            if (done > total)
                qFatal("more than all");
            m_done = done;
            m_total = total;
        },
        m_cancel);
    if (reader.open_ != 0)
        qFatal("a file is still open");
    return states;
}

void ContentComparisonTest::states_data()
{
    QTest::addColumn<QByteArray>("first");
    QTest::addColumn<QByteArray>("second");
    QTest::addColumn<bool>("identical");
    for (const qsizetype size : {qsizetype(0), qsizetype(1), chunk - 1, chunk, chunk + 1, 3 * chunk}) {
        const QByteArray bytes = content(size);
        QTest::addRow("%lld bytes, equal", static_cast<long long>(size)) << bytes << bytes << true;
        QTest::addRow("%lld bytes, second longer", static_cast<long long>(size))
            << bytes << bytes + 'x' << false;
        QTest::addRow("%lld bytes, first longer", static_cast<long long>(size))
            << bytes + 'x' << bytes << false;
        if (size > 0) {
            QTest::addRow("%lld bytes, last one differs", static_cast<long long>(size))
                << bytes << changedAt(bytes, size - 1) << false;
            QTest::addRow("%lld bytes, first one differs", static_cast<long long>(size))
                << bytes << changedAt(bytes, 0) << false;
        }
    }
}

void ContentComparisonTest::states()
{
    QFETCH(QByteArray, first);
    QFETCH(QByteArray, second);
    QFETCH(bool, identical);
    FakeReader reader;
    reader.files[u"a"_s] = {.content = first};
    // Short reads say nothing about where a file ends.
    reader.files[u"b"_s] = {.content = second, .atOnce = 300'007};
    const quint64 size = static_cast<quint64>(first.size());
    QCOMPARE(compare(reader, size), (States{S::Reference, identical ? S::Identical : S::Different}));
    QCOMPARE(m_done, size);
    QCOMPARE(m_total, size);
}

void ContentComparisonTest::placeholdersAreNotOpened()
{
    FakeReader reader;
    reader.files[u"a"_s] = {.attributes = core::AttributeRecallOnDataAccess};
    reader.files[u"b"_s] = {.content = "x",
                            .attributes = core::AttributeReadOnly | core::AttributeReparsePoint};
    reader.files[u"c"_s] = {.attributes = core::AttributeOffline};
    reader.files[u"d"_s] = {.content = "x"};
    reader.files[u"e"_s] = {.attributes = core::AttributeRecallOnOpen};
    QCOMPARE(compare(reader),
             (States{S::Placeholder, S::Reference, S::Placeholder, S::Identical, S::Placeholder}));
    QCOMPARE(reader.opened, QStringList({u"b"_s, u"d"_s}));
}

void ContentComparisonTest::unreadableFirstGivesWay()
{
    const QByteArray bytes = content(2 * chunk);
    FakeReader reader;
    reader.files[u"a"_s] = {.opens = false};
    // Fails late, when others were already found to differ from it.
    reader.files[u"b"_s] = {.content = changedAt(bytes, 0), .failsAt = chunk + 1};
    reader.files[u"c"_s] = {.content = bytes};
    reader.files[u"d"_s] = {.content = bytes};
    reader.files[u"e"_s] = {.content = changedAt(bytes, 0)};
    reader.files[u"f"_s] = {.content = bytes, .failsAt = chunk + 1};
    QCOMPARE(compare(reader, 2 * chunk),
             (States{S::Unreadable, S::Unreadable, S::Reference, S::Identical, S::Different, S::Unreadable}));
    QCOMPARE(m_done, m_total);
}

void ContentComparisonTest::manyMembersStayWithinBounds()
{
    FakeReader reader;
    States expected;
    for (int i = 0; i < 60; ++i) {
        const bool differs = i % 7 == 3;
        reader.files[QString::number(1000 + i)] = {.content = differs ? "other" : "same!"};
        expected.push_back(i == 0 ? S::Reference : differs ? S::Different : S::Identical);
    }
    QCOMPARE(compare(reader, 5), expected);
    QCOMPARE(reader.maxOpen, 17);
    QCOMPARE(m_done, quint64(59 * 5));
}

void ContentComparisonTest::cancelled()
{
    const QByteArray bytes = content(4 * chunk);
    FakeReader reader;
    for (const char *name : {"a", "b", "c"})
        reader.files[QLatin1String(name)] = {.content = bytes};
    reader.files[u"d"_s] = {.content = changedAt(bytes, 0)};
    core::CancelFlag cancel;
    reader.cancelAfterReads = &cancel;
    reader.readsLeft = 6; // within the second chunk
    const States states = compareContents({u"a"_s, u"b"_s, u"c"_s, u"d"_s}, 4 * chunk, reader, {}, cancel);
    QCOMPARE(states, (States{S::Reference, S::NotCompared, S::NotCompared, S::Different}));
}

QTEST_APPLESS_MAIN(ContentComparisonTest)
#include "tst_content_comparison.moc"
