// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/engine/CustomFileType.h"

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;

// Asks for a file type of the user's own: a name and extensions.
class CustomFileTypeDialog : public QDialog
{
    Q_OBJECT

public:
    // `taken` are the names of the other types.
    CustomFileTypeDialog(const duplicates::CustomFileType &type, QStringList taken,
                         QWidget *parent = nullptr);

    // What was entered; empty when it cannot be stored.
    std::optional<duplicates::CustomFileType> entered() const;

signals:
    void typeEntered(const duplicates::CustomFileType &type);

private:
    void buildLayout();
    QString problem() const;
    void checkInput();
    void accept() override;

    QStringList m_taken;
    QLineEdit *m_name;
    QLineEdit *m_extensions;
    QLabel *m_problem;
    QPushButton *m_ok;
    QPushButton *m_cancel;
};
