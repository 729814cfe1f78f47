// SPDX-License-Identifier: GPL-3.0-or-later
// What the form does with a payload: shows it, has it read back, and hands it out.
#include "QRCode/BatchPage.h"
#include "QRCode/FieldNote.h"
#include "QRCode/PayloadForm.h"
#include "QRCode/Preview.h"
#include "QRCode/QrCodeGenForm.h"
#include "QRCode/StylePanel.h"
#include "core/QrEncoder.h"
#include "platform/Dialogs.h"
#include "widgets/Controls.h"
#include "widgets/NoticeBar.h"
#include "widgets/ScanPage.h"

#include <QAction>
#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QLabel>
#include <QPushButton>
#include <QStackedWidget>

using qr::Saved;

void QrCodeGenForm::showKind(PayloadForm *form)
{
    saveFields();
    m_forms->setCurrentWidget(form);
    // The page scrolls as far as this form asks for, not the longest.
    for (int i = 0; i < m_forms->count(); ++i) {
        QWidget *each = m_forms->widget(i);
        each->setSizePolicy(QSizePolicy::Preferred,
                            each == form ? QSizePolicy::Preferred : QSizePolicy::Ignored);
    }
    form->refresh();
}

// Of the form on show alone: the others were stored when they were left.
void QrCodeGenForm::saveFields()
{
    if (const auto *form = static_cast<PayloadForm *>(m_forms->currentWidget()))
        form->save();
}

bool QrCodeGenForm::mayLeave()
{
    saveFields();
    return true;
}

void QrCodeGenForm::requestStop()
{
    saveFields();
    FLWidget::requestStop();
}

void QrCodeGenForm::setPayload(const QString &payload)
{
    m_text = payload;
    encode();
}

void QrCodeGenForm::encode()
{
    m_checking.forget();
    m_settle.stop();
    m_verdict = {};
    m_drawing.reset();
    m_note->setWarning({});
    const core::QrCode code = core::encodeQr(m_text, m_style->style().correction);
    setUsable(code.matrix.has_value());
    if (!code.matrix) {
        m_preview->showText(m_text.isEmpty()
                                ? tr("The code appears here as soon as there is something to encode.")
                                : tr("The text is too long by %1 characters.").arg(code.tooLongBy));
        const bool canSayMore = !m_text.isEmpty() && m_style->style().correction != core::QrCorrection::Low;
        m_facts->setText(canSayMore ? tr("A lower error correction leaves more room.") : QString());
        return;
    }
    m_drawing.emplace(*code.matrix, m_style->style());
    m_preview->showCode(*m_drawing, tr("QR code of: %1").arg(m_text.left(200)));
    m_facts->setText(tr("%1 × %1 modules, %2 characters").arg(code.matrix->size()).arg(m_text.size()));
    m_settle.start();
}

void QrCodeGenForm::check()
{
    if (!m_drawing)
        return;
    m_checking.ask([drawing = *m_drawing, text = m_text](
                       const core::Asking &) { return qr::check(drawing, drawing.image(), text); },
                   [this](const qr::Verdict &verdict) { showVerdict(verdict); });
}

void QrCodeGenForm::showVerdict(const qr::Verdict &verdict)
{
    m_verdict = verdict;
    QStringList lines;
    for (const qr::Reason reason : verdict.reasons)
        lines.append(qr::reasonText(reason));
    lines.prepend(verdict.scans ? tr("Scans: a second decoder read it back.") : tr("Does not scan."));
    const char *image = !verdict.scans ? "Error16" : verdict.reasons.isEmpty() ? "Checkmark16" : "Warning16";
    m_note->setNote(controls::image(image), lines.join(u' '));
    emit checked();
}

void QrCodeGenForm::setUsable(bool usable)
{
    for (QPushButton *button : m_saveButtons)
        button->setEnabled(usable);
}

void QrCodeGenForm::save(qr::Format format)
{
    if (!m_drawing || m_jobs.isBusy())
        return;
    const QString ending = qr::suffix(format);
    const QString file =
        platform::dialogs().chooseFileToSave(window(), tr("Save QR Code"), tr("QR code") + u'.' + ending,
                                             QStringLiteral("%1 (*.%2)").arg(ending.toUpper(), ending));
    // The dialog let the world go on.
    if (!file.isEmpty() && m_drawing && !m_jobs.isBusy())
        run({.drawing = *m_drawing, .text = m_text, .format = format, .file = file});
}

void QrCodeGenForm::saveRefused()
{
    if (!m_refused || m_jobs.isBusy())
        return;
    qr::SaveOrder order = *m_refused;
    order.evenIfUnreadable = true;
    run(order);
}

void QrCodeGenForm::run(const qr::SaveOrder &order)
{
    m_notice->hide();
    m_refused.reset();
    m_jobs.run(
        {.busyText = tr("saving the code")}, [order](const core::JobControl &) { return qr::save(order); },
        [this, order](auto &job) {
            Saved failed;
            failed.error = job.error();
            showSaved(job.takeResult().value_or(failed), order);
        });
}

void QrCodeGenForm::showSaved(const Saved &result, const qr::SaveOrder &order)
{
    using Kind = NoticeBar::Kind;
    if (result.outcome == Saved::Outcome::Written) {
        m_notice->showNotice(result.verdict.scans ? Kind::Success : Kind::Warning,
                             tr("%1: %2").arg(result.text(), QDir::toNativeSeparators(order.file)));
        emit saved(order.file);
        return;
    }
    m_jobs.keepOpen();
    const QString text = tr("The code was not saved. %1").arg(result.text());
    if (result.outcome == Saved::Outcome::DoesNotScan) {
        m_refused = order;
        m_notice->showNotice(Kind::Warning, text, m_saveAnyway);
    } else {
        m_notice->showNotice(Kind::Error, text);
    }
}

void QrCodeGenForm::copy()
{
    if (!m_drawing)
        return;
    const QImage picture = m_drawing->image();
    if (picture.isNull()) {
        m_notice->showNotice(NoticeBar::Kind::Error,
                             tr("The picture is too small for this code: it needs %1 pixels at least.")
                                 .arg(m_drawing->side()));
        return;
    }
    QGuiApplication::clipboard()->setImage(picture);
    m_notice->showNotice(NoticeBar::Kind::Info, tr("The picture was copied."));
}

// Pages of the list's jobs.
void QrCodeGenForm::showJob(bool runs)
{
    m_pages->setCurrentWidget(runs ? static_cast<QWidget *>(m_progress) : static_cast<QWidget *>(m_batch));
}
