// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

class QCheckBox;
class QComboBox;
class QRadioButton;

// Asks what to include in a report and where to save it.
class SaveReportDialog : public QDialog
{
    Q_OBJECT

public:
    // `page` is the title of the current page; empty if it is not loaded yet.
    explicit SaveReportDialog(const QString &page, QWidget *parent = nullptr);

    bool onlyThisPage() const;
    bool includesPrivateValues() const;
    const QString &file() const
    {
        return m_file;
    } // valid after it was accepted; the suffix selects the format

    void accept() override;

private:
    QRadioButton *m_thisPage;
    QRadioButton *m_allPages;
    QComboBox *m_format;
    QCheckBox *m_private;
    QString m_file;
};
