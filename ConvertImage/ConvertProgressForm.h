// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QElapsedTimer>
#include <QWidget>

class ElidedLabel;
class QLabel;
class QProgressBar;
class QPushButton;

// Shown while images are converted.
class ConvertProgressForm : public QWidget
{
    Q_OBJECT

public:
    explicit ConvertProgressForm(QWidget *parent = nullptr);

    void begin(int files);
    // Cheap; called a few times a second.
    void showProgress(const QString &file, int done, qint64 bytesSaved);
    void showStopping();

signals:
    void cancelRequested();

protected:
    void hideEvent(QHideEvent *event) override;

private:
    QLabel *m_title;
    ElidedLabel *m_file;
    QProgressBar *m_bar;
    QLabel *m_facts;
    QPushButton *m_cancel;
    QElapsedTimer m_clock;
    int m_files = 0;
};
