// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QLabel;
class WrappedLabel;

// A sentence below what it speaks of, with an icon; takes no room while there is none.
class FieldNote : public QWidget
{
    Q_OBJECT

public:
    explicit FieldNote(QWidget *parent = nullptr);

    void setNote(const QIcon &icon, const QString &text);
    void setWarning(const QString &text);
    QString text() const;

private:
    QLabel *m_icon;
    WrappedLabel *m_text;
};
