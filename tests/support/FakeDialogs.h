// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "platform/Dialogs.h"

#include <QList>
#include <QQueue>

#include <functional>

namespace tests
{

// Takes the place of all boxes and file dialogs while it lives. A test queues the next answers; a box that
// finds no answer queued fails the test and gets the answer that changes nothing.
class FakeDialogs : public platform::Dialogs
{
public:
    struct Shown {
        QString title; // or caption
        QString text;
        unsigned flags = 0;        // messageBox() only
        QWidget *parent = nullptr; // null for messageBox(); may be gone by now
    };

    FakeDialogs() { platform::setDialogs(this); }
    ~FakeDialogs() override { platform::setDialogs(nullptr); }

    int messageBox(const QString &text, const QString &caption, unsigned flags) override;
    QMessageBox::StandardButton ask(QWidget *parent, const QString &title, const QString &text,
                                    QMessageBox::StandardButtons buttons,
                                    QMessageBox::StandardButton preset) override;
    void inform(QWidget *parent, const QString &title, const QString &text) override;
    void warn(QWidget *parent, const QString &title, const QString &text) override;
    QString chooseFolder(QWidget *parent, const QString &title, const QString &start) override;
    QString chooseFileToSave(QWidget *parent, const QString &title, const QString &suggested,
                             const QString &filter) override;
    QStringList chooseFilesToOpen(QWidget *parent, const QString &title, const QString &start,
                                  const QString &filter) override;

    // The next answers. inform() and warn() need none.
    QQueue<int> nextMessageBox; // platform::idYes, platform::idNo
    QQueue<QMessageBox::StandardButton> nextAnswer;
    QQueue<QString> nextFolder; // an empty text cancels, here and below
    QQueue<QString> nextFileToSave;
    QQueue<QStringList> nextFilesToOpen;

    // What was shown, in order: questions and boxes; notes; warnings; the start values of file dialogs as
    // `text`.
    QList<Shown> questions;
    QList<Shown> notes;
    QList<Shown> warnings;
    QList<Shown> fileDialogs;

    // Called while a box or dialog "is open", to let something happen behind it.
    std::function<void()> whileOpen;

private:
    template <class Answer>
    Answer next(QQueue<Answer> &queue, const Answer &harmless, const QString &what);
};

} // namespace tests
