// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "SecureDelete/ReportFile.h"

#include <QWidget>

class NoticeBar;
class PageHeader;
class QCheckBox;
class ResultTable;

// What was destroyed, and what was left and why.
class SecureDeleteReportPage : public QWidget
{
    Q_OBJECT

public:
    // `method` is the display text, including the passes.
    SecureDeleteReportPage(securedelete::ShredResult result, const QString &method,
                           QWidget *parent = nullptr);
    ~SecureDeleteReportPage() override;

    const securedelete::Records &records() const { return m_records; }
    void showNotice(bool good, const QString &text);

signals:
    void back();
    // The user has chosen a file; the owner of the page writes it.
    void saveRequested(const QString &file, const securedelete::ReportOptions &options);

private slots:
    void on_saveReportButton_clicked();

private:
    void buildLayout(const securedelete::ShredResult &result, const QString &method);

    securedelete::Records m_records;
    QString m_title; // title of the saved report
    PageHeader *m_header;
    NoticeBar *m_notice;
    QCheckBox *m_withNames;
    ResultTable *m_list;
};
