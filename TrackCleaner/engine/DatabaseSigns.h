// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QString>
#include <QStringList>
#include <QStringView>

namespace tracks
{

// What the names in one folder tell about databases in it. Their journals look like log files, but hold what
// has not reached the database yet, or what it needs to open at all:
// - LevelDB (profiles of browsers and of many programs): 000003.log beside CURRENT and MANIFEST-000001;
// - ESE (web cache, Windows Search, Windows Update): edb00012.log, V0100012.log beside edb.chk, V01.chk;
// - hives of the registry: SYSTEM.LOG, NTUSER.DAT.LOG beside SYSTEM.LOG1, NTUSER.DAT.LOG2.
// Tell it every name of the folder, then ask about any of them.
class DatabaseSigns
{
public:
    // `folder`: the hives of Windows itself are known by where they lie.
    explicit DatabaseSigns(QStringView folder = {});

    void meet(QStringView name);
    // Of a folder that was listed in part: what tells the database may be in the rest.
    void assumeLevelDb() { m_current = m_manifest = true; }
    bool isPartOfDatabase(QStringView name) const;
    // False for nearly every folder: then only a name that is a journal anywhere can be a part of one.
    bool any() const { return m_systemHives || (m_current && m_manifest) || hasBases(); }

    // Named like a journal of ESE that Windows itself uses, whatever lies beside it.
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
