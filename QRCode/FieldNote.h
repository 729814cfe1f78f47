// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QWidget>

class QLabel;
class WrappedLabel;

namespace qr
{

// A note with an icon below a field; takes no room while empty.
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

} // namespace qr
