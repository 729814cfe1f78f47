// SPDX-License-Identifier: GPL-3.0-or-later
#include "SystemInfo/engine/WmiNotice.h"

namespace systeminfo
{

core::WmiAnswer ask(Machine &machine, Page &page, const core::WmiQuery &query, const QString &about,
                    const std::function<void(const core::WmiRow &)> &take)
{
    const core::WmiAnswer answer = machine.wmi().query(query, take);
    QString notice;
    if (answer == core::WmiAnswer::Failed)
        notice = Words::tr("Windows gave no information about %1.").arg(about);
    else if (answer == core::WmiAnswer::TooMany)
        notice = Words::tr("Windows listed too many entries about %1; only the first are shown.").arg(about);
    if (!notice.isEmpty() && !page.notices.contains(notice))
        page.notices.append(notice);
    return answer;
}

} // namespace systeminfo
