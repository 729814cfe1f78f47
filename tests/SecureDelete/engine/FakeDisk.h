// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SecureDelete/engine/Disk.h"
#include "SecureDelete/engine/Shred.h"

#include <QByteArray>
#include <QMap>
#include <QStringList>

#include <functional>

namespace tests
{

// One write: where, and the first byte of as many.
struct Write {
    quint64 offset = 0;
    quint64 length = 0;
    quint8 first = 0;
    bool operator==(const Write &) const = default;
};

// A disk in memory that writes down what is done to it, in order: "write NAME", "rename A B", "erase A".
// Wrong steps, such as a write to a file that is not open, fail.
class FakeDisk : public securedelete::Disk
{
public:
    struct File {
        quint32 attributes = 0;
        quint32 tag = 0;
        quint64 size = 0;
        quint64 number = 1; // its identity
        quint32 links = 1;
        bool canOpen = true;
        bool canRename = true;
        int canRenameTimes = 1000; // and then no more
        bool canErase = true;
        int failingWrite = -1; // the number of the write that fails
        std::vector<securedelete::Stream> streams;
        std::optional<std::vector<securedelete::Range>> ranges;
        std::vector<securedelete::Extent> extents, extentsLater;
        std::vector<Write> writes;
    };

    // By path; folders have core::AttributeDirectory.
    QMap<QString, File> files;
    QStringList log;
    std::vector<Write> volumeWrites;
    std::optional<securedelete::VolumeFacts> volume;
    QString protectedPath;
    quint64 free = 1 << 30;
    std::function<void(const QString &path)> onWrite;

    File &add(const QString &path, quint64 size, quint32 attributes = 0)
    {
        files[path] = File{.attributes = attributes, .size = size};
        return files[path];
    }

    securedelete::ShredRow row(const QString &path)
    {
        const qsizetype cut = path.lastIndexOf(u'\\');
        const auto item = find(path.left(cut), path.left(cut), path.mid(cut + 1));
        return {item.value_or(securedelete::Item{}), item && !item->isFolder()};
    }

    std::optional<securedelete::Item> find(const QString &root, const QString &folder,
                                           const QString &name) override
    {
        const auto found = files.find(folder + u'\\' + name);
        if (found == files.end())
            return std::nullopt;
        return securedelete::Item{root,       folder,      name, found->attributes,
                                  found->tag, found->size, 0,    core::FileIdentity{1, found->number}};
    }
    void list(const QString &folder, core::DirectoryListing &out, const core::CancelFlag &) override
    {
        out.clear();
        out.readable = true;
        for (auto file = files.begin(); file != files.end(); ++file) {
            const QString name = file.key().mid(folder.size() + 1);
            if (!file.key().startsWith(folder + u'\\') || name.contains(u'\\'))
                continue;
            core::DirectoryEntry entry;
            entry.name = name;
            entry.attributes = file->attributes;
            entry.reparseTag = file->tag;
            entry.size = file->size;
            out.add(entry);
        }
    }
    std::unique_ptr<securedelete::DoomedFile> file(const securedelete::Item &item) override;
    securedelete::Fault checkFolder(const securedelete::Item &item) override
    {
        const bool same = !item.identity || item.identity->file == files.value(item.path()).number;
        return same ? securedelete::Fault::None : securedelete::Fault::Changed;
    }
    securedelete::Fault eraseLink(const securedelete::Item &item) override { return eraseAny(item, "link"); }
    securedelete::Fault eraseFolder(const securedelete::Item &item) override
    {
        for (auto file = files.begin(); file != files.end(); ++file) {
            if (file.key().startsWith(item.path() + u'\\'))
                return securedelete::Fault::NotEmpty;
        }
        return eraseAny(item, "folder");
    }
    bool isProtected(const securedelete::Item &item) override { return item.path() == protectedPath; }
    void pause() override { log.append(QStringLiteral("pause")); }

private:
    securedelete::Fault eraseAny(const securedelete::Item &item, const char *kind)
    {
        if (!files.value(item.path()).canErase)
            return securedelete::Fault::Denied;
        files.remove(item.path());
        log.append(QLatin1String(kind) + u' ' + item.name);
        return securedelete::Fault::None;
    }
};

class FakeFile : public securedelete::DoomedFile
{
public:
    using Target = securedelete::Target;
    FakeFile(FakeDisk &disk, const securedelete::Item &item) : m_disk(disk), m_item(item), m_name(item.name)
    {
    }

    Target *openForWriting(securedelete::Fault &fault) override
    {
        if (!entry().canOpen) {
            fault = securedelete::Fault::InUse;
            return nullptr;
        }
        return open(entry().writes, m_name);
    }
    Target *openStream(const QString &stream, securedelete::Fault &) override
    {
        m_streamWrites.clear();
        return open(m_streamWrites, stream);
    }
    quint32 linkCount() override { return entry().links; }
    std::vector<securedelete::Stream> streams() override { return entry().streams; }
    std::optional<std::vector<securedelete::Range>> allocatedRanges() override { return entry().ranges; }
    quint64 freeBytes() override { return m_disk.free; }
    void close() override { m_open.clear(); }
    Target *openVolume(securedelete::VolumeFacts &facts) override
    {
        m_volumeOpened = true;
        if (!m_disk.volume)
            return nullptr;
        facts = *m_disk.volume;
        return open(m_disk.volumeWrites, QStringLiteral("volume"));
    }
    std::optional<std::vector<securedelete::Extent>> extents() override
    {
        return m_volumeOpened && !entry().extentsLater.empty() ? entry().extentsLater : entry().extents;
    }
    securedelete::Fault rename(const QString &name) override
    {
        if (!m_open.empty() || !entry().canRename || entry().canRenameTimes-- <= 0)
            return securedelete::Fault::InUse;
        if (name != m_name && m_disk.files.contains(m_item.folder + u'\\' + name))
            return securedelete::Fault::NameTaken;
        const FakeDisk::File file = m_disk.files.take(path());
        m_name = name;
        m_disk.files.insert(path(), file);
        return securedelete::Fault::None;
    }
    securedelete::Fault erase() override
    {
        if (!m_open.empty() || !entry().canErase)
            return securedelete::Fault::InUse;
        m_disk.log.append(QStringLiteral("erase ") + m_name);
        m_disk.files.remove(path());
        return securedelete::Fault::None;
    }
    QString name() override { return m_name; }
    bool formerNameExists() override { return m_disk.files.contains(m_item.path()); }

private:
    QString path() const { return m_item.folder + u'\\' + m_name; }
    FakeDisk::File &entry() { return m_disk.files[path()]; }
    class Recorder : public Target
    {
    public:
        Recorder(FakeFile &file, std::vector<Write> &writes) : m_file(file), m_writes(writes) {}
        bool moveTo(quint64 position) override
        {
            m_position = position;
            return true;
        }
        bool moveBack(quint64 bytes) override
        {
            const bool possible = bytes <= m_position;
            m_position -= possible ? bytes : 0;
            return possible;
        }
        quint64 write(const char *data, quint64 bytes) override
        {
            if (m_file.m_open.empty() || static_cast<int>(m_writes.size()) == m_file.entry().failingWrite)
                return 0;
            m_writes.push_back({m_position, bytes, static_cast<quint8>(*data)});
            m_position += bytes;
            if (m_file.m_disk.onWrite)
                m_file.m_disk.onWrite(m_file.m_item.path());
            return bytes;
        }

    private:
        FakeFile &m_file;
        std::vector<Write> &m_writes;
        quint64 m_position = 0;
    };

    Target *open(std::vector<Write> &writes, const QString &what)
    {
        m_open.push_back(std::make_unique<Recorder>(*this, writes));
        m_disk.log.append(QStringLiteral("write ") + what);
        return m_open.back().get();
    }

    FakeDisk &m_disk;
    const securedelete::Item m_item;
    QString m_name;
    std::vector<std::unique_ptr<Recorder>> m_open;
    std::vector<Write> m_streamWrites;
    bool m_volumeOpened = false;
};

inline std::unique_ptr<securedelete::DoomedFile> FakeDisk::file(const securedelete::Item &item)
{
    return std::make_unique<FakeFile>(*this, item);
}

} // namespace tests
