// SPDX-License-Identifier: GPL-3.0-or-later
#include "app/OpenAdminModuleDialog.h"

#include "platform/TopLevelWindows.h"
#include "widgets/Theme.h"

#include <QLabel>
#include <QProgressBar>
#include <QPushButton>
#include <QTimer>
#include <QVBoxLayout>

namespace
{

constexpr int lookInterval = 1000; // ms

} // namespace

OpenAdminModuleDialog::OpenAdminModuleDialog(const QString &moduleName, bool installed, QWidget *parent)
    : QDialog(parent),
      m_moduleName(moduleName)
{
    setAttribute(Qt::WA_DeleteOnClose);
    setWindowTitle(tr("Module Launcher"));

    auto *label =
        new QLabel(tr("Preparing to open %1 in administrator mode.\n Please Wait...").arg(moduleName));
    label->setObjectName(QStringLiteral("label"));
    label->setTextFormat(Qt::PlainText);
    auto *missing = new QLabel(
        tr("%1 is not installed: there is no such program in the installation folder.").arg(moduleName));
    missing->setObjectName(QStringLiteral("notInstalledLabel"));
    missing->setTextFormat(Qt::PlainText);
    missing->setWordWrap(true);
    missing->setHidden(installed);
    auto *progress = new QProgressBar;
    progress->setRange(0, 0);
    progress->setTextVisible(false);
    progress->setMaximumHeight(theme::barHeight);
    progress->setVisible(installed);
    auto *cancel = new QPushButton(tr("Cancel"));
    cancel->setObjectName(QStringLiteral("pushButton"));
    connect(cancel, &QPushButton::clicked, this, &OpenAdminModuleDialog::on_pushButton_clicked);

    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins(theme::spaceSection, theme::spaceSection, theme::spaceSection,
                               theme::spaceWide);
    layout->setSpacing(theme::spaceWide);
    layout->addWidget(label);
    layout->addWidget(missing);
    layout->addWidget(progress);
    layout->addWidget(cancel, 0, Qt::AlignTrailing);
    layout->setSizeConstraint(QLayout::SetFixedSize);

    auto *timer = new QTimer(this);
    connect(timer, &QTimer::timeout, this, &OpenAdminModuleDialog::MyTimerSlot);
    timer->start(lookInterval);
}

void OpenAdminModuleDialog::MyTimerSlot()
{
    if (platform::companionWindow(m_moduleName))
        deleteLater();
}
