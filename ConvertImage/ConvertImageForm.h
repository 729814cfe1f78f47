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

// The bulk image converter: the page with the images and settings, the progress of a run, the question about
// existing files, and the list of results.
class ConvertImageForm : public FLWidget
{
    Q_OBJECT

public:
    explicit ConvertImageForm(QWidget *parent = nullptr);
    ~ConvertImageForm() override;

    conversion::Settings settings() const; // as shown by the controls

public slots:
    // Accepts any files and folders; a worker searches them for images.
    void addPaths(const QStringList &paths);
    void convert();

signals:
    void resultsShown(); // for observers outside the form (tests)

private:
    // A run, including what is repeated after the user's answers.
    struct Run {
        QStringList sources; // all of them
        std::vector<conversion::FileResult> results;
        QString error; // concerns the whole run
        bool cancelled = false;
    };

    void buildPages();
    // How outputs that already exist are treated.
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
    QStringList m_waiting;                           // added when the current search has finished
    std::vector<conversion::PlannedFile> m_keepBoth; // converted after those that replace
    QSet<QString> m_skipped;                         // sources whose existing outputs are kept
    QElapsedTimer m_clock;
    qint64 m_milliseconds = 0;      // accumulated over the run
    bool m_documentIsFresh = false; // its path has just been chosen
    JobHost m_search;               // searches added folders for images; checks the output folder
    JobHost m_jobs;                 // last member: its worker is stopped first
};
