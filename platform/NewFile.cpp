// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/NewFile.h"

#include "platform/Guard.h"
#include "platform/Handle.h"
#include "platform/Paths.h"

#include <QCoreApplication>
#include <QDir>
#include <QRandomGenerator>
#include <QRegularExpression>

#include <windows.h>

namespace platform
{

namespace
{

// A prefix that no user would choose, so that the clean-up removes nothing else.
const QString prefix = QStringLiteral("~larkspur-");
const QString suffix = QStringLiteral(".new");
constexpr int digits = 16;

QString folderOf(const QString &path)
{
    return path.left(path.lastIndexOf(u'\\'));
}

QString temporaryPath(const QString &path)
{
    const quint64 number = QRandomGenerator::system()->generate64();
    return folderOf(path) + u'\\' + prefix + QString::number(number, 16).rightJustified(digits, u'0') +
           suffix;
}

QString systemText(DWORD error)
{
    return qt_error_string(static_cast<int>(error));
}

// Windows refuses to replace a read-only file, Wine does not.
bool isReadOnly(const QString &path)
{
    const DWORD attributes = GetFileAttributesW(apiPath(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_READONLY);
}

// Whether the path names a regular file in this folder, which may be replaced.
bool isPlainFile(const QString &path)
{
    const DWORD attributes = GetFileAttributesW(apiPath(path).c_str());
    return attributes != INVALID_FILE_ATTRIBUTES && !(attributes & FILE_ATTRIBUTE_DIRECTORY) &&
           !(attributes & FILE_ATTRIBUTE_REPARSE_POINT) && isInside(folderOf(path), path);
}

// The rename is written at once, but the content at any later time: a power failure in between could destroy
// both files.
bool writeToDisk(const QString &path)
{
    const FileHandle file(CreateFileW(apiPath(path).c_str(), GENERIC_WRITE,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                      OPEN_EXISTING, 0, nullptr));
    return file && FlushFileBuffers(file.get());
}

QString tr(const char *text)
{
    return QCoreApplication::translate("NewFile", text);
}

} // namespace

NewFile::NewFile(const QString &path) : m_path(shownPath(path)), m_file(temporaryPath(m_path))
{
    if (!m_file.open(QIODevice::ReadWrite | QIODevice::NewOnly))
        m_writeError = m_file.errorString();
}

NewFile::~NewFile()
{
    if (m_placed || !m_file.isOpen())
        return;
    m_file.close();
    eraseOwn(folderOf(m_path), m_file.fileName().replace(u'/', u'\\'));
}

bool NewFile::write(const QByteArray &bytes)
{
    if (!m_writeError.isEmpty())
        return false;
    if (m_file.write(bytes) == bytes.size())
        return true;
    m_writeError = m_file.errorString();
    return false;
}

NewFile::Placed NewFile::place(bool replace, QString &problem)
{
    const bool taken = fileExists(m_path);
    if (taken && !replace)
        return Placed::NameTaken;
    if (taken && !isPlainFile(m_path)) {
        problem = tr("What bears this name is no plain file, and is not replaced");
        return Placed::Failed;
    }
    if (taken && isReadOnly(m_path)) {
        problem = systemText(ERROR_ACCESS_DENIED);
        return Placed::Failed;
    }
    if (!m_writeError.isEmpty() || !m_file.flush()) {
        problem = m_writeError.isEmpty() ? m_file.errorString() : m_writeError;
        return Placed::Failed;
    }
    const QString temporary = m_file.fileName().replace(u'/', u'\\');
    m_file.close();
    const DWORD flags = MOVEFILE_WRITE_THROUGH | (taken ? MOVEFILE_REPLACE_EXISTING : 0);
    if ((!taken || writeToDisk(temporary)) &&
        MoveFileExW(apiPath(temporary).c_str(), apiPath(m_path).c_str(), flags)) {
        m_placed = true;
        return Placed::Done;
    }
    const DWORD error = GetLastError();
    eraseOwn(folderOf(m_path), temporary);
    m_placed = true; // nothing left to remove
    if (!replace && (error == ERROR_ALREADY_EXISTS || error == ERROR_FILE_EXISTS))
        return Placed::NameTaken;
    problem = systemText(error);
    return Placed::Failed;
}

QString NewFile::save(const QString &path, const QByteArray &bytes)
{
    NewFile file(path);
    QString problem;
    file.write(bytes);
    file.place(true, problem);
    return problem;
}

int NewFile::clearLeftovers(const QString &folder)
{
    static const QRegularExpression ours(QStringLiteral("^~larkspur-[0-9a-f]{16}\\.new$"));
    int cleared = 0;
    const QString pattern = prefix + u'*' + suffix;
    for (const QString &name : QDir(folder).entryList({pattern}, QDir::Files | QDir::Hidden)) {
        const QString path = QDir::toNativeSeparators(QDir(folder).filePath(name));
        if (ours.match(name).hasMatch() && eraseOwn(folder, path) == Guarded::Done)
            ++cleared;
    }
    return cleared;
}

} // namespace platform
