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
    // Also overwrite files with other names (hard links), whose content is lost under all of them. Otherwise
    // they are left.
    bool overwriteOtherNames = false;
};

// Outcome for one file, link or folder.
struct ShredRecord {
    QString path;
    quint64 size = 0;
    bool isFolder = false;
    bool isLink = false;
    bool destroyed = false;
    // Old data may survive: the file was compressed or encrypted, and its clusters could not be written
    // directly.
    bool oldClustersMaySurvive = false;
    Fault fault = Fault::None; // why it still exists
    int streams = 0;           // alternate data streams that were overwritten too
    QString leftName;          // current name, if the original could not be restored
};

class ShredListener : public WriteListener
{
public:
    // Called before each row and once at the end: totalSteps() times.
    virtual void stepDone() = 0;
    virtual void itemBegins(const QString &path, int count) = 0;
    // Bytes that were planned but will not be written.
    virtual void bytesLeftOut(quint64 bytes) = 0;
    virtual void rowDestroyed(int row) = 0;
};

struct ShredResult {
    std::vector<ShredRecord> records; // in order of processing
    int rowsLeft = 0;
    bool cancelled = false;
};

// A row of the list with its facts as of the moment it was added.
struct ShredRow {
    Item item;
    bool isFile = true;
};

inline int totalSteps(std::size_t rows)
{
    return static_cast<int>(rows) + 1;
}

// Destroys the rows from last to first. Folders are emptied bottom-up and removed; links are removed and
// never followed. An item that cannot be overwritten keeps its name and place, and its row stays.
ShredResult shredRows(const std::vector<ShredRow> &rows, const ShredOptions &options, Disk &disk,
                      PassBuffers &buffers, ShredListener &listener, const core::CancelFlag &cancel);

// The name for one rename round: replaces every UTF-16 unit except ".".
QString roundName(const QString &name, char16_t letter);

} // namespace securedelete
