// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SecureDelete/engine/Overwrite.h"

#include <QString>

#include <vector>

namespace securedelete
{

struct ShredOptions {
    Method method = Method::Gutmann;
    int randomPasses = 1;
    // Overwrite files that have other names as well (hard links), whose content dies with them. Otherwise
    // such files are left.
    bool overwriteOtherNames = false;
};

// What happened to one file, link or folder.
struct ShredRecord {
    QString path;
    quint64 size = 0;
    bool isFolder = false;
    bool isLink = false;
    bool destroyed = false;
    // Bytes may survive all the same: the file was compressed or encrypted, and its clusters could not be
    // written to.
    bool oldClustersMaySurvive = false;
    Fault fault = Fault::None; // why it is still there
    int streams = 0;           // alternate data streams that were overwritten with it
    QString leftName;          // under which it is still there, when it could not get its own name back
};

class ShredListener : public WriteListener
{
public:
    // Before each row, and once at the end: as many as totalSteps().
    virtual void stepDone() = 0;
    virtual void itemBegins(const QString &path, int count) = 0;
    // Bytes that the plan counted and nobody will write.
    virtual void bytesLeftOut(quint64 bytes) = 0;
    virtual void rowDestroyed(int row) = 0;
};

struct ShredResult {
    std::vector<ShredRecord> records; // in the order of the work
    int rowsLeft = 0;
    bool cancelled = false;
};

// A row of the list: an item of a folder. Its facts are those of the moment when the row was made.
struct ShredRow {
    Item item;
    bool isFile = true;
};

inline int totalSteps(std::size_t rows)
{
    return static_cast<int>(rows) + 1;
}

// Destroys the rows from the last to the first. Folders are emptied from below and removed; a link is removed
// itself and never entered. What cannot be overwritten keeps its name and its place, and its row stays.
ShredResult shredRows(const std::vector<ShredRow> &rows, const ShredOptions &options, Disk &disk,
                      PassBuffers &buffers, ShredListener &listener, const core::CancelFlag &cancel);

// The name of one rename: every UTF-16 unit but "." replaced.
QString roundName(const QString &name, char16_t letter);

} // namespace securedelete
