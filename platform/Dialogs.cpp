// SPDX-License-Identifier: GPL-3.0-or-later
#include "platform/Dialogs.h"

#include "platform/Text.h"

#include <QDir>
#include <QFileDialog>

#include <windows.h>

namespace platform
{

static_assert(yesNoWarning == (MB_YESNO | MB_ICONEXCLAMATION) && idYes == IDYES && idNo == IDNO);

namespace
{

class WindowsDialogs : public Dialogs
{
public:
    int messageBox(const QString &text, const QString &caption, unsigned flags) override
    {
        return MessageBoxW(nullptr, wide(text), wide(caption), flags);
    }

    QMessageBox::StandardButton ask(QWidget *parent, const QString &title, const QString &text,
                                    QMessageBox::StandardButtons buttons,
                                    QMessageBox::StandardButton preset) override
    {
        return box(parent, QMessageBox::Question, title, text, buttons, preset);
    }

    void inform(QWidget *parent, const QString &title, const QString &text) override
    {
        box(parent, QMessageBox::Information, title, text, QMessageBox::Ok, QMessageBox::Ok);
    }

    void warn(QWidget *parent, const QString &title, const QString &text) override
    {
        box(parent, QMessageBox::Warning, title, text, QMessageBox::Ok, QMessageBox::Ok);
    }

    QString chooseFolder(QWidget *parent, const QString &title, const QString &start) override
    {
        return QDir::toNativeSeparators(QFileDialog::getExistingDirectory(parent, title, start));
    }

    QString chooseFileToSave(QWidget *parent, const QString &title, const QString &suggested,
                             const QString &filter) override
    {
        return QDir::toNativeSeparators(QFileDialog::getSaveFileName(parent, title, suggested, filter));
    }

    QStringList chooseFilesToOpen(QWidget *parent, const QString &title, const QString &start,
                                  const QString &filter) override
    {
        QStringList files = QFileDialog::getOpenFileNames(parent, title, start, filter);
        for (QString &file : files)
            file = QDir::toNativeSeparators(file);
        return files;
    }

private:
    static QMessageBox::StandardButton box(QWidget *parent, QMessageBox::Icon icon, const QString &title,
                                           const QString &text, QMessageBox::StandardButtons buttons,
                                           QMessageBox::StandardButton preset)
    {
        QMessageBox message(icon, title, text, buttons, parent);
        message.setTextFormat(Qt::PlainText); // a file name may look like markup
        message.setDefaultButton(preset);
        return static_cast<QMessageBox::StandardButton>(message.exec());
    }
};

Dialogs *replaced = nullptr;

} // namespace

Dialogs &dialogs()
{
    static WindowsDialogs real;
    return replaced ? *replaced : real;
}

void setDialogs(Dialogs *replacement)
{
    replaced = replacement;
}

} // namespace platform
