// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <QStringList>

#include <memory>
#include <vector>

class ExistingFileModel;
class FLTableView;
class NoticeBar;

namespace imaging
{
class DecoderPool;
}

// Asks what to do with outputs that exist already. Each row shows the existing image and the one to convert,
// with a warning if the existing file is itself a source.
class OverwriteFileDialog : public QDialog
{
    Q_OBJECT

public:
    enum class Answer { Replace, KeepBoth, Skip };

    // Both lists have one entry per row. `allSources` are those of the whole run.
    OverwriteFileDialog(const QStringList &outputs, const QStringList &sources, const QStringList &allSources,
                        const std::shared_ptr<imaging::DecoderPool> &decoders, QWidget *parent = nullptr);

    // Valid after it was accepted. Rows without an answer are skipped.
    const std::vector<Answer> &answers() const;

    // For the selected rows, or for all. "All" never replaces sources: those must be selected individually.
    void answerSelected(Answer answer);
    void answerAll(Answer answer);

private:
    void buildTable();
    class QHBoxLayout *makeAnswers();
    void buildLayout(const QString &question);

    ExistingFileModel *m_model;
    FLTableView *m_table;
    NoticeBar *m_notice;
};
