// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QLineEdit>
#include <QTimer>

// A line to search in what is below it. Escape empties it.
class SearchLine : public QLineEdit
{
    Q_OBJECT

public:
    explicit SearchLine(QWidget *parent = nullptr);

signals:
    // A moment after the last key.
    void searched(const QString &text);

protected:
    void keyPressEvent(QKeyEvent *event) override;

private:
    QTimer m_pause;
};
