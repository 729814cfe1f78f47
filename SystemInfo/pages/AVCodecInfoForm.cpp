// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/pages/AVCodecInfoForm.h"

using systeminfo::PageId;

LoadAVCodecInfoThread::LoadAVCodecInfoThread(QStandardItemModel *model)
    : LoadPageThread(PageId::Codecs, model)
{
}

AVCodecInfoForm::AVCodecInfoForm(QWidget *parent)
    : InfoPageForm(PageId::Codecs, QStringLiteral("codecTreeView"), make<LoadAVCodecInfoThread>, parent)
{
}
