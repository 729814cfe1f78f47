// SPDX-License-Identifier: GPL-3.0-or-later
#include "tests/support/FakeDialogs.h"

#include <QTest>

namespace tests
{

template <class Answer>
Answer FakeDialogs::next(QQueue<Answer> &queue, const Answer &harmless, const QString &what)
{
    if (whileOpen)
        whileOpen();
    if (!queue.isEmpty())
        return queue.dequeue();
    QTest::qFail(qPrintable(QStringLiteral("No answer queued for: ") + what), __FILE__, __LINE__);
    return harmless;
}

int FakeDialogs::messageBox(const QString &text, const QString &caption, unsigned flags)
{
    questions.append({caption, text, flags});
    return next(nextMessageBox, platform::idNo, text);
}

QMessageBox::StandardButton FakeDialogs::ask(QWidget *parent, const QString &title, const QString &text,
                                             QMessageBox::StandardButtons buttons,
                                             QMessageBox::StandardButton)
{
    questions.append({title, text, 0, parent});
    const QMessageBox::StandardButton harmless =
        buttons.testFlag(QMessageBox::Cancel) ? QMessageBox::Cancel : QMessageBox::No;
    const QMessageBox::StandardButton answer = next(nextAnswer, harmless, text);
    if (!buttons.testFlag(answer))
        QTest::qFail(qPrintable(QStringLiteral("The answer has no button in: ") + text), __FILE__, __LINE__);
    return answer;
}

void FakeDialogs::inform(QWidget *parent, const QString &title, const QString &text)
{
    notes.append({title, text, 0, parent});
    if (whileOpen)
        whileOpen();
}

void FakeDialogs::warn(QWidget *parent, const QString &title, const QString &text)
{
    warnings.append({title, text, 0, parent});
    if (whileOpen)
        whileOpen();
}

QString FakeDialogs::chooseFolder(QWidget *parent, const QString &title, const QString &start)
{
    fileDialogs.append({title, start, 0, parent});
    return next(nextFolder, QString(), title);
}

QString FakeDialogs::chooseFileToSave(QWidget *parent, const QString &title, const QString &suggested,
                                      const QString &)
{
    fileDialogs.append({title, suggested, 0, parent});
    return next(nextFileToSave, QString(), title);
}

QStringList FakeDialogs::chooseFilesToOpen(QWidget *parent, const QString &title, const QString &start,
                                           const QString &)
{
    fileDialogs.append({title, start, 0, parent});
    return next(nextFilesToOpen, QStringList(), title);
}

} // namespace tests
