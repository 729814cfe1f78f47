// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/FindSources.h"

#include "core/FileTypes.h"
#include "core/FolderWalk.h"
#include "platform/Paths.h"

#include <QDateTime>
#include <QFileInfo>

#include <algorithm>

namespace
{

const QStringList &imageExtensions()
{
    static const QStringList extensions = [] {
        const core::FileTypeTable &table = core::defaultFileTypes();
        const auto raster =
            std::ranges::find(table, QStringLiteral("Raster Image Files"), &core::FileTypeCategory::name);
        return raster == table.end() ? QStringList() : raster->extensions;
    }();
    return extensions;
}

bool isImageFile(QStringView name)
{
    const qsizetype dot = name.lastIndexOf(u'.');
    return dot >= 0 && imageExtensions().contains(name.mid(dot).toString(), Qt::CaseInsensitive);
}

// FILETIME: units of 100 ns since 1601.
quint64 fileTime(const QDateTime &time)
{
    constexpr qint64 from1601To1970 = 11'644'473'600'000; // milliseconds
    return static_cast<quint64>((time.toMSecsSinceEpoch() + from1601To1970) * 10'000);
}

bool isInCloud(quint32 attributes)
{
    constexpr quint32 recallOnDataAccess = 0x400000; // winnt.h
    constexpr quint32 offline = 0x1000;
    return (attributes & (recallOnDataAccess | offline)) != 0;
}

class Collector : public core::WalkVisitor
{
public:
    Collector(const QString &root, bool withSubfolders, FoundSources &found)
        : m_root(root),
          m_withSubfolders(withSubfolders),
          m_found(found)
    {
        while (m_root.endsWith(u'\\') || m_root.endsWith(u'/'))
            m_root.chop(1);
        const QString name = m_root.mid(std::max(m_root.lastIndexOf(u'\\'), m_root.lastIndexOf(u'/')) + 1);
        m_name = name.endsWith(u':') ? QString() : name; // a drive root has no name
    }

    void rootCounted(int) override {}
    void entryMet() override {}
    bool acceptFolder(const QString &, const core::DirectoryEntry &entry) override
    {
        return m_withSubfolders && !entry.mayBeLink();
    }
    void enterFolder(const QString &, QStringView, int, FolderState state) override
    {
        m_found.unread += state == FolderState::Unreadable ? 1 : 0;
    }
    void file(const QString &folder, const core::DirectoryEntry &entry) override
    {
        if (!isImageFile(entry.name))
            return;
        if (isInCloud(entry.attributes)) {
            ++m_found.others;
            return;
        }
        const QString below = m_name + folder.mid(m_root.size());
        m_found.files.push_back({folder + u'\\' + entry.name.toString(), entry.size, entry.lastWriteTime,
                                 below.startsWith(u'\\') ? below.mid(1) : below});
    }
    void leaveFolder() override {}

private:
    QString m_root; // without a trailing separator
    QString m_name;
    bool m_withSubfolders;
    FoundSources &m_found;
};

} // namespace

FoundSources findSources(const QStringList &given, bool withSubfolders, core::DirectoryEnumerator &enumerator,
                         const core::CancelFlag &cancel)
{
    FoundSources found;
    for (const QString &path : given) {
        const QFileInfo facts(path);
        if (facts.isDir()) {
            const auto before = static_cast<std::ptrdiff_t>(found.files.size());
            Collector collector(path, withSubfolders, found);
            core::walkFolders(path, enumerator, collector, cancel);
            std::sort(found.files.begin() + before, found.files.end(),
                      [](const SourceFile &one, const SourceFile &other) {
                          return QString::compare(one.path, other.path, Qt::CaseInsensitive) < 0;
                      });
        } else if (facts.isFile()) {
            found.files.push_back({platform::shownPath(path), static_cast<quint64>(facts.size()),
                                   fileTime(facts.lastModified())});
        } else {
            ++found.others;
        }
    }
    return found;
}

QString pictureFilter()
{
    QStringList patterns;
    for (const QString &extension : imageExtensions())
        patterns.append(u'*' + extension);
    return patterns.join(u' ');
}
