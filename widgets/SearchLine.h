// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLineEdit>
#include <QTimer>

// A search field for the content below it. Escape clears it.
class SearchLine : public QLineEdit
{
    Q_OBJECT

public:
    explicit SearchLine(QWidget *parent = nullptr);

signals:
    // Emitted a moment after the last key press.
    void searched(const QString &text);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    QTimer m_pause;
};
