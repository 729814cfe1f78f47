// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace tests
{

// A new folder below the temporary folder, which goes with everything in it when the object goes. Made and
// removed with the Win32 calls, so that it can hold what QTemporaryDir cannot: paths of any length, names
// with trailing dots or spaces, unpaired surrogates, links. Only in a test prefix. Paths given here are
// relative to the folder, with native separators; the folders on the way are made. Every function returns the
// full path and ends the program when it fails, since a test that lacks its files proves nothing.
class TestFolder
{
public:
    TestFolder();
    ~TestFolder();
    TestFolder(const TestFolder &) = delete;
    TestFolder &operator=(const TestFolder &) = delete;

    QString path() const { return m_root; }
    QString path(const QString &relative) const { return m_root + u'\\' + relative; }

    QString makeFolder(const QString &relative) const;
    QString makeFile(const QString &relative, const QByteArray &content = {}) const;
    // A file of any size that takes no room: its content is zeros.
    QString makeLargeFile(const QString &relative, quint64 bytes) const;
    // A second name for a file.
    QString makeHardLink(const QString &relative, const QString &existing) const;
    // A symbolic link to a folder or file, also relative to the folder. Under Wine it is one of the build
    // machine, since Wine makes none itself: the attributes of a link to a folder are 0x410 without a tag
    // there, and a link to a file looks like a file.
    QString makeLink(const QString &relative, const QString &target);

    // FILETIME values.
    void setTimes(const QString &relative, quint64 lastWrite, quint64 lastAccess) const;

private:
    QString m_root;
    QStringList m_links;
};

// Whether this Windows is Wine.
bool isWine();

} // namespace tests
