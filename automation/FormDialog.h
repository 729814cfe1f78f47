// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QDialog>

class QFormLayout;
class QLabel;
class QLineEdit;
class QPushButton;
class QToolButton;

// A dialog of labelled fields, one below the other, with a notice under them, Save and Cancel. A derived
// class makes its fields, adds a row for each, and then the buttons: Tab goes through them in that order.
class FormDialog : public QDialog
{
    Q_OBJECT

protected:
    struct Row {
        QLabel *label;
        QWidget *field; // with its button

        void setVisible(bool visible) const;
    };

    // `smallestWidth`: of the dialog, in pixels that do not depend on the scaling.
    FormDialog(int smallestWidth, QWidget *parent);

    template <class Widget>
    static Widget *named(Widget *widget, const char *name, const QString &accessible = {})
    {
        widget->setObjectName(QLatin1String(name));
        widget->setAccessibleName(accessible);
        return widget;
    }

    // Above the fields.
    void setHeadline(const QString &text);
    // `buddy` gets the focus by the label's key; without one, `field` does.
    Row addRow(const QString &text, QWidget *field, QWidget *buddy = nullptr);
    Row addRow(const QString &text, QLineEdit *field, QToolButton *button);
    void addButtons();

    // Of two lines, without the dialog growing.
    void setNotice(const QString &text);
    // There after addButtons().
    QPushButton *saveButton() const { return m_save; }
    // Fills the field with a folder that the user selects.
    void chooseFolder(QLineEdit *field, const QString &title);

private:
    QLabel *m_headline;
    QFormLayout *m_form;
    QLabel *m_notice;
    QPushButton *m_save = nullptr;
};
