// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Machine.h"
#include "SystemInfo/engine/Row.h"

#include <QMap>

namespace tests
{

// WMI that answers from recorded rows, by a part of the query's text; a question that nobody recorded fails.
class FakeWmi : public core::WmiSource
{
public:
    core::WmiAnswer query(const core::WmiQuery &query,
                          const std::function<void(const core::WmiRow &)> &take) override
    {
        asked << query.text;
        for (auto answer = answers.cbegin(); answer != answers.cend(); ++answer) {
            if (!query.text.contains(answer.key()))
                continue;
            for (const core::WmiRow &row : answer.value())
                take(row);
            return core::WmiAnswer::Complete;
        }
        return core::WmiAnswer::Failed;
    }
    void noteFailure(const core::WmiQuery &query, quint32) override { failures << query.failure; }

    QMap<QString, QList<core::WmiRow>> answers;
    QStringList asked;
    QStringList failures;
};

// A registry in memory; keys are compared without regard to case. 32-bit keys begin with "32:".
class FakeRegistry : public core::RegistryView
{
public:
    void set(const QString &path, const QString &name, const core::RegistryValue &value)
    {
        m_keys[path.toLower()].insert(name, value);
        m_paths[path.toLower()] = path;
    }
    void set(const QString &path, const QString &name, const QString &text)
    {
        set(path, name, core::RegistryValue::ofText(text));
    }

    core::RegistryValue value(Hive hive, const QString &path, const QString &name, Bits bits) override
    {
        return m_keys.value(key(hive, path, bits)).value(name);
    }
    QStringList valueNames(Hive hive, const QString &path, Bits bits) override
    {
        return m_keys.value(key(hive, path, bits)).keys();
    }
    QStringList subkeys(Hive hive, const QString &path, Bits bits) override
    {
        const QString start = key(hive, path, bits) + QLatin1Char('\\');
        QStringList names;
        for (auto i = m_paths.cbegin(); i != m_paths.cend(); ++i) {
            if (i.key().startsWith(start))
                names << i.value().mid(start.size()).section(QLatin1Char('\\'), 0, 0);
        }
        names.removeDuplicates();
        return names;
    }

private:
    // "HKLM\..." and "HKCU\..."
    static QString key(Hive hive, const QString &path, Bits bits)
    {
        const QString root = hive == Hive::LocalMachine ? QStringLiteral("hklm\\") : QStringLiteral("hkcu\\");
        return (bits == Bits::Is32 ? QStringLiteral("32:") : QString()) + root + path.toLower();
    }

    QMap<QString, QMap<QString, core::RegistryValue>> m_keys;
    QMap<QString, QString> m_paths;
};

// A machine of which nothing can be read, until a test gives it something.
class FakeMachine : public systeminfo::Machine
{
public:
    FakeWmi fakeWmi;
    FakeRegistry fakeRegistry;
    systeminfo::SystemFacts facts;
    systeminfo::MemoryStatus memoryStatus;
    systeminfo::PowerStatus powerStatus;
    std::vector<systeminfo::Volume> volumes;
    std::vector<systeminfo::Adapter> adapterList;
    std::vector<systeminfo::GraphicsAdapter> graphicsList;
    QStringList presentDevices;
    QStringList existingPaths;
    std::vector<systeminfo::StartupFile> files;
    systeminfo::TaskList taskList;

    core::WmiSource &wmi() override { return fakeWmi; }
    core::RegistryView &registry() override { return fakeRegistry; }
    bool stopRequested() const override { return false; }
    systeminfo::SystemFacts system() override { return facts; }
    systeminfo::MemoryStatus memory() override { return memoryStatus; }
    systeminfo::PowerStatus power() override { return powerStatus; }
    QSize primaryScreen() override { return {1920, 1080}; }
    std::vector<systeminfo::Volume> fixedVolumes() override { return volumes; }
    std::vector<systeminfo::Adapter> adapters() override { return adapterList; }
    std::vector<systeminfo::Connection> connections() override { return {}; }
    QStringList printers() override { return {}; }
    std::vector<systeminfo::GraphicsAdapter> graphics() override { return graphicsList; }
    bool isPresent(const QString &id) override { return presentDevices.contains(id); }
    systeminfo::DriveAnswers drive(quint32) override { return {}; }
    std::optional<int> encryptionState(const QString &) override { return {}; }
    QString expanded(const QString &text) override
    {
        return QString(text).replace(QStringLiteral("%SystemRoot%"), QStringLiteral("C:\\Windows"));
    }
    QImage smallIcon(const QString &) override { return {}; }
    systeminfo::PathState pathState(const QString &path) override
    {
        return existingPaths.contains(path, Qt::CaseInsensitive) ? systeminfo::PathState::Exists
                                                                 : systeminfo::PathState::Missing;
    }
    QString companyName(const QString &) override { return QStringLiteral("Example Ltd"); }
    QString findProgram(const QString &) override { return {}; }
    std::vector<systeminfo::SpecialFolder> specialFolders() override { return {}; }
    std::vector<systeminfo::StartupFile> startupFiles() override { return files; }
    systeminfo::TaskList tasks() override { return taskList; }
};

// "Storage/Disk #0/Size" -> the row; null when there is none.
inline const systeminfo::Row *rowAt(const std::vector<systeminfo::Row> &rows, const QString &path)
{
    const QString label = path.section(QLatin1Char('/'), 0, 0);
    const QString rest = path.section(QLatin1Char('/'), 1);
    for (const systeminfo::Row &row : rows) {
        if (row.label == label)
            return rest.isEmpty() ? &row : rowAt(row.children, rest);
    }
    return nullptr;
}
inline QString textAt(const systeminfo::Page &page, const QString &path)
{
    const systeminfo::Row *row = rowAt(page.sections, path);
    return row ? row->value.text : QStringLiteral("(no row)");
}
inline QStringList labels(const systeminfo::Row &row)
{
    QStringList texts;
    for (const systeminfo::Row &child : row.children)
        texts << child.label;
    return texts;
}

} // namespace tests
