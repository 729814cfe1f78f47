// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>
#include <QStringList>

#include <memory>
#include <vector>

class QComboBox;
class QLabel;
class QTableWidget;

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
                        std::shared_ptr<imaging::DecoderPool> decoders, QWidget *parent = nullptr);
    ~OverwriteFileDialog() override;

    // After it was accepted. A row that the user did not touch is skipped.
    std::vector<Answer> answers() const;

private:
    void buildLayout(const QStringList &outputs);
    void addRow(int row, const QString &output, const QString &source, bool isSource);
    void fillIn(int row, int column, const QString &path);
    void answerAll(int answer);

    QTableWidget *m_table;
    QComboBox *m_all;
    std::vector<QComboBox *> m_answers;
    std::shared_ptr<imaging::DecoderPool> m_decoders;
    struct Looks;
    std::unique_ptr<Looks> m_looks; // the thread that reads the pictures
};
