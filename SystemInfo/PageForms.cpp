// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/PageForms.h"

#include "SystemInfo/pages/AVCodecInfoForm.h"
#include "SystemInfo/pages/CPUInfoForm.h"
#include "SystemInfo/pages/EnvironmentVarsInfoForm.h"
#include "SystemInfo/pages/GeneralInfoForm.h"
#include "SystemInfo/pages/MemoryInfoForm.h"
#include "SystemInfo/pages/MotherboardInfoForm.h"
#include "SystemInfo/pages/OperatingSystemInfoForm.h"
#include "SystemInfo/pages/SpecialFoldersForm.h"
#include "SystemInfo/pages/StartupItemsInfoForm.h"
#include "SystemInfo/pages/StorageInfoForm.h"
#include "SystemInfo/pages/TaskSchedulerInfoForm.h"

using systeminfo::PageId;

InfoPageForm *makePageForm(PageId id, QWidget *parent)
{
    switch (id) {
    case PageId::General:
        return new GeneralInfoForm(parent);
    case PageId::Cpu:
        return new CPUInfoForm(parent);
    case PageId::Motherboard:
        return new MotherboardInfoForm(parent);
    case PageId::Memory:
        return new MemoryInfoForm(parent);
    case PageId::Storage:
        return new StorageInfoForm(parent);
    case PageId::OperatingSystem:
        return new OperatingSystemInfoForm(parent);
    case PageId::EnvironmentVariables:
        return new EnvironmentVarsInfoForm(parent);
    case PageId::SpecialFolders:
        return new SpecialFoldersForm(parent);
    case PageId::StartupItems:
        return new StartupItemsInfoForm(parent);
    case PageId::TaskScheduler:
        return new TaskSchedulerInfoForm(parent);
    case PageId::Codecs:
        break;
    }
    return new AVCodecInfoForm(parent);
}
