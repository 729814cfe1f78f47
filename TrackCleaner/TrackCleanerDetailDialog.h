// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "TrackCleaner/engine/Traces.h"

#include <QDialog>

#include <memory>
#include <vector>

class QLabel;
class QVBoxLayout;
class ResultTable;
class NoticeBar;
class TracesModel;

// "Results": everything found for one item, with check marks for what will be cleared. Changes apply at once;
// there is nothing to confirm.
class TrackCleanerDetailDialog : public QDialog
{
    Q_OBJECT

public:
    TrackCleanerDetailDialog(std::shared_ptr<const tracks::ScanResult> found, tracks::Item item,
                             std::vector<bool> leftOut, QWidget *parent = nullptr);

signals:
    void leftOutChanged(tracks::Item item, const std::vector<bool> &leftOut);

private:
    void buildTexts(QVBoxLayout *layout);
    void buildTable(QVBoxLayout *layout);
    void buildButtons(QVBoxLayout *layout);
    void showChoice();

    std::shared_ptr<const tracks::ScanResult> m_found;
    tracks::Item m_item;
    TracesModel *m_model;
    NoticeBar *m_notice;
    ResultTable *m_table;
    QLabel *m_choice;
};
