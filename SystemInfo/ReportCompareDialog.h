// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SystemInfo/engine/Comparison.h"

#include <QDialog>
#include <QStandardItemModel>

#include <array>

class JobHost;
class NoticeBar;
class QCheckBox;
class QPushButton;
class ResultTable;

// Compares two saved reports side by side; differences first by default.
class ReportCompareDialog : public QDialog
{
    Q_OBJECT

public:
    explicit ReportCompareDialog(QWidget *parent = nullptr);
    ~ReportCompareDialog() override;

private:
    struct Side {
        QPushButton *button = nullptr;
        std::optional<systeminfo::Report> report;
    };

    void buildLayout();
    void choose(std::size_t side);
    void take(std::size_t side, const QString &file, std::optional<systeminfo::Report> report);
    void compare();
    void fill();

    std::array<Side, 2> m_sides;
    std::vector<systeminfo::Difference> m_differences;
    QStandardItemModel m_rows;
    NoticeBar *m_notice;
    QCheckBox *m_onlyChanges;
    ResultTable *m_table;
    JobHost *m_jobs;
};
