// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

class QLineEdit;
class QPushButton;

// Product, version, licences, and the installation folder that contains the companions. Deletes itself when
// closed.
class AboutDialog : public QDialog
{
    Q_OBJECT

public:
    explicit AboutDialog(QWidget *parent = nullptr);

private:
    QLayout *buildHeader();
    QWidget *buildLicences();
    QLayout *buildFolder();
    QWidget *buildButtons();
    void resetFolder();
    void showFolder();

    QLineEdit *m_folder = nullptr;
    QPushButton *m_reset = nullptr;
};
