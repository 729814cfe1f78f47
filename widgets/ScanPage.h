// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QElapsedTimer>
#include <QTimer>
#include <QWidget>

class ElidedLabel;
class QLabel;
class QProgressBar;
class QPushButton;

// What is shown while a scan runs: what it does, where it is, how far, how many items in what time, and a
// button that cancels it. The window's button on the task bar shows how far it is. Modules derive their own
// scan pages from it.
class ScanPage : public QWidget
{
    Q_OBJECT

public:
    explicit ScanPage(QWidget *parent = nullptr);

    // Starts from zero; the number of steps is not known yet.
    void begin(const QString &title, const QString &root);
    void setTitle(const QString &title);
    void setPath(const QString &path);
    void setTotalSteps(int total); // one step is as good as none: the bar does not move until complete()
    void addStep();                // cheap: the bar follows when the event loop runs again
    void setItems(int items);
    // Cancel was asked for: the end is near. Disables the button.
    void showStopping(const QString &title);
    // Fills the bar, which excluded and unreadable folders leave short.
    void complete();
    qint64 elapsed() const { return m_clock.elapsed(); }

signals:
    void scanCancel();

protected:
    void hideEvent(QHideEvent *event) override;
    void showEvent(QShowEvent *event) override;

private:
    // A number and what it is, for the eye in two labels, for a screen reader in one text.
    struct Figure {
        QLabel *value;
        QString name;

        void show(const QString &text) const;
    };

    void buildLayout();
    void showSteps();
    void showTimes();
    void showOnTaskbar();

    QLabel *m_title;
    ElidedLabel *m_path;
    QProgressBar *m_bar;
    Figure m_items;
    Figure m_time;
    Figure m_rate;
    QPushButton *m_cancel;
    QElapsedTimer m_clock;
    QTimer m_ticker;
    QTimer m_stepTimer; // single-shot: steps were added that the bar does not show
    int m_steps = 0;
    int m_itemCount = 0;
};
