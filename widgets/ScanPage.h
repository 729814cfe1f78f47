// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "core/ScanProgress.h"

#include <QElapsedTimer>
#include <QList>
#include <QTimer>
#include <QWidget>

class ElidedLabel;
class QLabel;
class QProgressBar;
class QPushButton;

// Shows a running job: its title, current path, progress, figures chosen by the module, and a cancel button;
// also the progress on the window's taskbar button. Modules derive their own scan pages from it. A JobHost
// starts, updates and completes it.
class ScanPage : public QWidget
{
    Q_OBJECT

public:
    enum class Figure {
        Items,    // entries seen
        Steps,    // "3 of 17"
        Bytes,    // "1.20 GB of 3.00 GB"
        Time,     // since begin()
        Rate,     // bytes per second if Bytes is shown, otherwise items
        TimeLeft, // estimated from the finished share; "-" while unknown
    };

    explicit ScanPage(QWidget *parent = nullptr,
                      const QList<Figure> &figures = {Figure::Items, Figure::Time, Figure::Rate});

    // Resets the page; the number of steps is not known yet.
    void begin(const QString &title, const QString &subject);
    // Updates everything; an empty path keeps the current one.
    void showProgress(const core::ScanProgress &progress);
    void setTitle(const QString &title);
    void setPath(const QString &path);
    void setTotalSteps(int total); // with a single step the bar does not move until complete()
    void setSteps(int steps);
    void setItems(int items);
    // A cancel was requested: disables the button.
    void showStopping(const QString &title);
    // Fills the bar, which excluded and unreadable folders may leave incomplete.
    void complete();
    qint64 elapsed() const { return m_clock.elapsed(); } // ms since begin()

signals:
    void scanCancel();

protected:
    void hideEvent(QHideEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    // A figure and its caption: two labels on screen, one text for screen readers.
    struct Shown {
        Figure figure;
        QLabel *value;
        QString name;

        void show(const QString &text) const;
    };

    void buildLayout(const QList<Figure> &figures);
    void showBar();
    void showFigures();
    void showOnTaskbar();
    void leaveTaskbar();
    QString figureText(Figure figure) const;
    QString rateText(qint64 milliseconds) const;
    QString timeLeftText(qint64 milliseconds) const;
    bool shows(Figure figure) const;

    QLabel *m_title;
    ElidedLabel *m_path;
    QProgressBar *m_bar;
    QList<Shown> m_figures;
    QPushButton *m_cancel;
    QElapsedTimer m_clock;
    QTimer m_ticker;
    core::ScanProgress m_progress;
    bool m_running = false; // between begin() and complete()
};
