// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

class QFormLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QToolButton;

namespace automation
{

// A dialog of labelled fields in a column, with a notice, Save and Cancel below. A derived class creates its
// fields, adds a row for each, then calls addButtons(): that is also the tab order.
class FormDialog : public QDialog
{
    Q_OBJECT

protected:
    struct Row {
        QLabel *label;
        QWidget *field; // including its button

        void setVisible(bool visible) const;
    };

    // `minWidth` in device-independent pixels.
    FormDialog(int minWidth, QWidget *parent);

    template <class Widget>
    static Widget *named(Widget *widget, const char *name, const QString &accessible = {})
    {
        widget->setObjectName(QLatin1String(name));
        widget->setAccessibleName(accessible);
        return widget;
    }

    // Shown above the fields.
    void setHeadline(const QString &text);
    // The label's mnemonic focuses `buddy`, or `field` if there is none.
    Row addRow(const QString &text, QWidget *field, QWidget *buddy = nullptr);
    Row addRow(const QString &text, QLineEdit *field, QToolButton *button);
    void addButtons();

    // Up to two lines, without resizing the dialog.
    void setNotice(const QString &text);
    // Valid after addButtons().
    QPushButton *saveButton() const { return m_save; }
    // Lets the user choose a folder and puts it into the field.
    void chooseFolder(QLineEdit *field, const QString &title);

private:
    QLabel *m_headline;
    QFormLayout *m_form;
    QLabel *m_notice;
    QPushButton *m_save = nullptr;
};

} // namespace automation
