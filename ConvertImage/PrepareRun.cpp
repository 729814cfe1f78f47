// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/PrepareRun.h"

#include "ConvertImage/engine/Targets.h"
#include "imaging/DecoderPool.h"
#include "platform/Paths.h"

#include <QDir>

PreparedRun prepareRun(const QStringList &sources, const QHash<QString, QString> &subfolders,
                       const conversion::Settings &settings, imaging::DecoderPool &decoders,
                       const core::CancelFlag &cancel)
{
    PreparedRun run;
    const QString mark = settings.rendering.marks.picture.path;
    run.markIsUnreadable = !mark.isEmpty() && !decoders.source(mark, {}, cancel);
    if (settings.encoding.target == conversion::Target::Pdf) {
        for (const QString &source : sources)
            run.files.push_back({source, settings.pdfFileName});
        run.resolved = run.files;
        run.documentExists = platform::fileExists(settings.pdfFileName);
        return run;
    }
    run.folderMissing = !settings.besideSource && !QDir(settings.outputFolder).exists();
    run.files =
        conversion::plannedFiles(sources, settings.besideSource ? QString() : settings.outputFolder,
                                 QString::fromLatin1(conversion::factsOf(settings.encoding.target).extension),
                                 settings.keepFolders ? subfolders : QHash<QString, QString>());
    run.resolved = run.files;
    conversion::resolveClashes(run.resolved, [](const QString &path) { return platform::fileExists(path); });
    return run;
}
