// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Machine.h"

#include "core/CancelFlag.h"
#include "platform/RegistryReader.h"
#include "platform/WmiSession.h"

#include <memory>

namespace systeminfo
{

// This computer, through documented calls that need no elevation. Created, used and destroyed on one thread,
// on which it initialises COM.
class WindowsMachine : public Machine
{
public:
    explicit WindowsMachine(const core::CancelFlag &cancel);
    ~WindowsMachine() override;

    core::WmiSource &wmi() override { return m_wmi; }
    core::RegistryView &registry() override { return m_registry; }
    bool stopRequested() const override { return m_cancel.isSet(); }

    SystemFacts system() override;
    MemoryStatus memory() override;
    PowerStatus power() override;
    QSize primaryScreen() override;
    std::vector<Volume> fixedVolumes() override;
    std::vector<Adapter> adapters() override;
    std::vector<Connection> connections() override;
    QStringList printers() override;
    std::vector<GraphicsAdapter> graphics() override;
    bool isPresent(const QString &deviceInstance) override;
    DriveAnswers drive(quint32 number) override;
    std::optional<int> encryptionState(const QString &root) override;
    QString expanded(const QString &text) override;
    QImage smallIcon(const QString &path) override;
    PathState pathState(const QString &path) override;
    QString companyName(const QString &file) override;
    QString findProgram(const QString &name) override;
    std::vector<SpecialFolder> specialFolders() override;
    std::vector<StartupFile> startupFiles() override;
    TaskList tasks() override;

private:
    struct Apartment;

    const core::CancelFlag &m_cancel;
    std::unique_ptr<Apartment> m_apartment; // destroyed last
    platform::RegistryReader m_registry;
    platform::WmiSession m_wmi;
};

} // namespace systeminfo
