// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/ConvertImagesThread.h"
#include "ConvertImage/SourceModel.h"
#include "ConvertImage/options/Settings.h"
#include "widgets/FLWidget.h"
#include "widgets/JobHost.h"
#include "widgets/SettingsBinding.h"

#include <QElapsedTimer>
#include <QSet>

#include <memory>

class ConvertPage;
class ConvertProgressForm;
class ConvertResultPage;
class QStackedLayout;
struct PreparedRun;

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

    conversion::Settings settings() const; // as the controls show them

public slots:
    // Files and folders of any kind; looked at by a worker.
    void addPaths(const QStringList &paths);
    void convert();

signals:
    void resultsShown(); // for whoever watches the form from outside

private:
    // One run, and what is run again after the user's answers.
    struct Run {
        QStringList sources; // all of them
        std::vector<conversion::FileResult> results;
        QString error; // of the run as a whole
        bool cancelled = false;
    };

    void buildPages();
    // What becomes of outputs that are there already.
    enum class Existing { List, Replace, KeepBoth };

    bool chooseTarget();
    void begin(const QStringList &sources, const PreparedRun &prepared);
    bool mayStart(const PreparedRun &prepared);
    bool settleClashes(std::vector<conversion::PlannedFile> &files,
                       const std::vector<conversion::PlannedFile> &resolved);
    void start(std::vector<conversion::PlannedFile> files, Existing existing);
    ConversionJob makeJob(std::vector<conversion::PlannedFile> files, Existing existing) const;
    void onEnded(ConvertImagesThread &thread);
    bool askAboutExisting();
    void takeResults(std::vector<conversion::FileResult> results);
    void showResults();
    void tryAgain();
    void convertList(const QStringList &sources);

    std::shared_ptr<imaging::DecoderPool> m_decoders;
    SettingsBinding m_binding;
    QStackedLayout *m_pages;
    ConvertPage *m_page;
    ConvertProgressForm *m_progress;
    ConvertResultPage *m_results;
    Run m_run;
    QStringList m_waiting;                           // to be added when the search has ended
    std::vector<conversion::PlannedFile> m_keepBoth; // to be converted after those that replace
    QSet<QString> m_skipped;                         // sources whose outputs the user wants to keep
    QElapsedTimer m_clock;
    qint64 m_milliseconds = 0;      // of the run so far
    bool m_documentIsFresh = false; // its path was chosen just now
    JobHost m_search;               // for pictures among what was added; the look at the output folder
    JobHost m_jobs;                 // last: its worker ends first
};
