// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "FindDuplicate/engine/Categories.h"

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;

// Edits a user-defined file type: a name and extensions.
class CustomFileTypeDialog : public QDialog
{
    Q_OBJECT

public:
    // `others` are the other types; the first `before` of them precede this one in a search, and take
    // precedence for shared extensions.
    CustomFileTypeDialog(const duplicates::CustomFileType &type, duplicates::CategorySelection others,
                         std::size_t before, QWidget *parent = nullptr);

    // The entered type; nullopt if it cannot be stored.
    std::optional<duplicates::CustomFileType> entered() const;

signals:
    void typeEntered(const duplicates::CustomFileType &type);

private:
    void buildLayout();
    QString problem() const;
    bool isTaken(const QString &name) const;
    // A warning about an extension that never matches; empty if there is none.
    QString remark(const QStringList &extensions) const;
    void checkInput();
    void accept() override;

    const duplicates::CategorySelection m_others;
    const std::size_t m_before;
    QLineEdit *m_name;
    QLineEdit *m_extensions;
    QLabel *m_problem;
    QPushButton *m_ok;
    QPushButton *m_cancel;
};
