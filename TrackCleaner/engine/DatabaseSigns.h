// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

namespace tracks
{

// Detects databases by the names in one folder. Their journals look like log files, but contain data that has
// not been written to the database yet, or is needed to open it:
// - LevelDB (profiles of browsers and many other programs): 000003.log beside CURRENT and MANIFEST-000001;
// - ESE (web cache, Windows Search, Windows Update): edb00012.log, V0100012.log beside edb.chk, V01.chk;
// - registry hives: SYSTEM.LOG, NTUSER.DAT.LOG beside SYSTEM.LOG1, NTUSER.DAT.LOG2.
// Add every name of the folder, then query any of them.
class DatabaseSigns
{
public:
    // `folder`: the hives of Windows itself are recognised by their location.
    explicit DatabaseSigns(QStringView folder = {});

    void meet(QStringView name);
    // For a partly listed folder: the signs may be in the part that is missing.
    void assumeLevelDb() { m_current = m_manifest = true; }
    bool isPartOfDatabase(QStringView name) const;
    // False for almost every folder; then only names for which isJournalAnywhere() holds can be journals.
    bool any() const { return m_systemHives || (m_current && m_manifest) || hasBases(); }

    // Whether the name is an ESE journal of Windows itself, whatever lies beside it.
    static bool isJournalAnywhere(QStringView name);

private:
    bool hasBases() const { return !m_eseBases.isEmpty() || !m_hives.isEmpty(); }
    bool isPartOfLevelDb(QStringView name) const;
    bool isPartOfEse(QStringView name) const;
    bool isPartOfHive(QStringView name) const;

    bool m_systemHives = false;
    bool m_current = false;
    bool m_manifest = false;
    QStringList m_eseBases; // "edb", "V01"
    QStringList m_hives;    // "NTUSER.DAT"
};

} // namespace tracks
