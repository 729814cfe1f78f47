// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/ConvertImagesThread.h"
#include "ConvertImage/SourceModel.h"
#include "widgets/FLWidget.h"
#include "widgets/JobHost.h"

#include <QElapsedTimer>
#include <QSet>

#include <memory>

class ConvertPage;
class ConvertProgressForm;
class ConvertResultPage;
class QStackedLayout;
class SettingsBinder;

namespace imaging
{
class DecoderPool;
}

// The bulk image converter: the page with the pictures and settings, the progress of a run, the question
// about files that exist, and the list of what became of each file.
class ConvertImageForm : public FLWidget
{
    Q_OBJECT

public:
    explicit ConvertImageForm(QWidget *parent = nullptr);
    ~ConvertImageForm() override;

public slots:
    // Files and folders of any kind; looked at by a worker.
    void addPaths(const QStringList &paths);
    void convert();

signals:
    void resultsShown(); // for whoever watches the form from outside

private:
    // One run, and what is run again after the user's answers.
    struct Run {
        QStringList sources; // of the list, all of them
        std::vector<conversion::FileResult> results;
        QString error; // of the run as a whole
        bool cancelled = false;
    };

    void buildPages();
    bool mayStart();
    bool chooseDocument();
    bool plan(const QStringList &sources, std::vector<conversion::PlannedFile> &files);
    bool settleClashes(std::vector<conversion::PlannedFile> &files);
    void start(std::vector<conversion::PlannedFile> files, bool overwriteAll);
    ConversionJob makeJob(std::vector<conversion::PlannedFile> files, bool overwriteAll) const;
    void onEnded(ConvertImagesThread &thread);
    bool askAboutExisting();
    void takeResults(std::vector<conversion::FileResult> results);
    void showResults();
    void tryAgain();
    void convertList(const QStringList &sources);

    std::shared_ptr<imaging::DecoderPool> m_decoders;
    SettingsBinder *m_binder;
    QStackedLayout *m_pages;
    ConvertPage *m_page;
    ConvertProgressForm *m_progress;
    ConvertResultPage *m_results;
    Run m_run;
    std::vector<conversion::PlannedFile> m_keepBoth; // to be converted after those that replace
    QSet<QString> m_skipped;                         // sources whose outputs the user wants to keep
    QElapsedTimer m_clock;
    JobHost m_search; // for pictures among what was added
    JobHost m_jobs;   // last: its worker ends first
};
