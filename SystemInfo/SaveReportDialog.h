// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

class QCheckBox;
class QComboBox;
class QRadioButton;

// Asks what a report holds and where it goes.
class SaveReportDialog : public QDialog
{
    Q_OBJECT

public:
    // `page` is the title of the page on the screen; empty when it is not there yet.
    explicit SaveReportDialog(const QString &page, QWidget *parent = nullptr);

    bool onlyThisPage() const;
    bool includesPrivateValues() const;
    const QString &file() const { return m_file; } // after it was accepted; its ending names the format

    void accept() override;

private:
    QRadioButton *m_thisPage;
    QRadioButton *m_allPages;
    QComboBox *m_format;
    QCheckBox *m_private;
    QString m_file;
};
