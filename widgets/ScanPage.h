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

// What is shown while a job runs: what it does, where it is, how far, the figures that its module chooses,
// and a button that cancels it. The window's button on the task bar shows how far it is. Modules derive their
// own scan pages from it. A JobHost begins it, shows the progress on it and completes it.
class ScanPage : public QWidget
{
    Q_OBJECT

public:
    enum class Figure {
        Items,    // entries seen
        Steps,    // "3 of 17"
        Bytes,    // "1.20 GB of 3.00 GB"
        Time,     // since begin()
        Rate,     // bytes a second when Bytes is shown, else items
        TimeLeft, // from the share that is done, "-" while that is not known
    };

    explicit ScanPage(QWidget *parent = nullptr,
                      const QList<Figure> &figures = {Figure::Items, Figure::Time, Figure::Rate});

    // Starts from zero; the number of steps is not known yet.
    void begin(const QString &title, const QString &subject);
    // All of it at once; an empty path leaves the one that is shown.
    void showProgress(const core::ScanProgress &progress);
    void setTitle(const QString &title);
    void setPath(const QString &path);
    void setTotalSteps(int total); // with a single step the bar does not move until complete()
    void setSteps(int steps);
    void setItems(int items);
    // Cancel was asked for: the end is near. Disables the button.
    void showStopping(const QString &title);
    // Fills the bar, which excluded and unreadable folders leave short.
    void complete();
    qint64 elapsed() const { return m_clock.elapsed(); } // ms since begin()

signals:
    void scanCancel();

protected:
    void hideEvent(QHideEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    // A number and what it is, for the eye in two labels, for a screen reader in one text.
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
    bool m_running = false; // from begin() to complete()
};
