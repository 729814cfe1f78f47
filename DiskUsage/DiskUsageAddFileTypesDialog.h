// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;

// Asks for one file extension.
class DiskUsageAddFileTypesDialog : public QDialog
{
    Q_OBJECT

public:
    explicit DiskUsageAddFileTypesDialog(QWidget *parent = nullptr);

signals:
    // With the leading dot, in lower case.
    void newExtension(const QString &extension);

private slots:
    void on_OKButton_clicked();
    void on_CancelButton_clicked();

private:
    void buildLayout();
    void checkInput();

    QLineEdit *m_edit;
    QLabel *m_problem;
    QPushButton *m_ok;
    QPushButton *m_cancel;
};
