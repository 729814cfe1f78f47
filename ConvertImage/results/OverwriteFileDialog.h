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

// Outputs that exist already: what is to become of each. One row for each, with the picture that is there and
// the one that is to be converted, and a word of warning where the file that is there is itself a source.
class OverwriteFileDialog : public QDialog
{
    Q_OBJECT

public:
    enum class Answer { Replace, KeepBoth, Skip };

    // Both lists have one entry for each row. `allSources` are those of the whole run.
    OverwriteFileDialog(const QStringList &outputs, const QStringList &sources, const QStringList &allSources,
                        const std::shared_ptr<imaging::DecoderPool> &decoders, QWidget *parent = nullptr);

    // After it was accepted. A row that the user did not touch is skipped.
    const std::vector<Answer> &answers() const;

    // For the selected rows, or for all. Of all, sources are not replaced: they are to be chosen one by one.
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
