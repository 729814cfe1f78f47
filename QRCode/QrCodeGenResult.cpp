// SPDX-License-Identifier: GPL-3.0-or-later
// What the form does with a payload: shows it, checks it, and saves or copies it.
#include "QRCode/BatchPage.h"
#include "QRCode/FieldNote.h"
#include "QRCode/PayloadForm.h"
#include "QRCode/Preview.h"
#include "QRCode/QrCodeGenForm.h"
#include "QRCode/StylePanel.h"
#include "core/QrEncoder.h"
#include "platform/Dialogs.h"
#include "widgets/Controls.h"
#include "widgets/FLTabWidget.h"
#include "widgets/NoticeBar.h"
#include "widgets/ScanPage.h"

#include <QAction>
#include <QClipboard>
#include <QDir>
#include <QGuiApplication>
#include <QPainter>
#include <QPushButton>
#include <QScrollArea>
#include <QScrollBar>
#include <QStackedWidget>

#include <algorithm>

using qr::PayloadForm;
using qr::Saved;

namespace
{

// Counts code points, as the limit does.
qsizetype characterCount(const QString &text)
{
    return text.size() - std::ranges::count_if(text, [](QChar c) { return c.isLowSurrogate(); });
}

// Smoothed if modules are smaller than a pixel.
QImage previewOf(const qr::Drawing &drawing, int pixels)
{
    QImage picture = drawing.image(pixels);
    if (!picture.isNull())
        return picture;
    picture = QImage(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    drawing.paint(painter, picture.rect());
    return picture;
}

} // namespace

void QrCodeGenForm::showKind(PayloadForm *form)
{
    saveFields();
    if (m_form)
        m_form->hide();
    m_form = form;
    form->show();
    m_content->verticalScrollBar()->setValue(0);
    m_tabs->setCurrentWidget(m_content);
    form->refresh();
}

// Only the current form: the others were stored when they were left.
void QrCodeGenForm::saveFields()
{
    if (m_form)
        m_form->save();
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
    // Disabled until the next result: hiding it would make the preview jump on every key press.
    m_note->setEnabled(false);
    // The offer to save refers to a code that is no longer shown.
    if (m_refused.has_value()) {
        m_refused.reset();
        m_notice->hide();
    }
    draw();
}

struct QrCodeGenForm::Made {
    QString text;
    qsizetype tooLongBy = 0;
    std::optional<qr::Drawing> drawing;
    QImage picture; // null if not requested, or if a module would be smaller than a pixel
};

// Any thread. Does not render the image.
QrCodeGenForm::Made QrCodeGenForm::made(const QString &text, const qr::Style &style)
{
    const core::QrCode code = core::encodeQr(text, style.correction);
    Made made{.text = text, .tooLongBy = code.tooLongBy};
    if (code.matrix)
        made.drawing.emplace(*code.matrix, style);
    return made;
}

// Runs one at a time and always shows the result, so that the preview keeps updating even if keys come faster
// than dense codes can be made.
void QrCodeGenForm::draw()
{
    if (m_text.isEmpty()) {
        m_making.forget();
        m_makeAgain = false;
        showNothing(tr("The code appears here as soon as there is something to encode."));
        return;
    }
    m_makeAgain = m_making.isWaiting();
    if (m_makeAgain)
        return;
    m_making.ask(
        [text = m_text, style = m_style->style(), pixels = m_preview->wantedPixels()](const core::Asking &) {
            Made answer = made(text, style);
            if (answer.drawing)
                answer.picture = previewOf(*answer.drawing, pixels);
            return answer;
        },
        [this](const Made &made) { showMade(made); }, [this](const QString &error) { showNothing(error); });
}

void QrCodeGenForm::showMade(const Made &made)
{
    if (made.drawing) {
        m_drawing = made.drawing;
        m_preview->showCode(made.picture, made.drawing->style().transparent,
                            tr("QR code of: %1").arg(made.text.left(200)),
                            tr("%1 × %1 modules, %2 characters")
                                .arg(made.drawing->matrix().size())
                                .arg(characterCount(made.text)));
        setUsable(true);
    } else {
        showTooLong(made);
    }
    if (m_makeAgain)
        draw();
    else if (m_drawing)
        m_settle.start();
}

void QrCodeGenForm::showTooLong(const Made &made)
{
    QString text = tr("The text is too long by %1 characters. Only the first %2 would fit.")
                       .arg(made.tooLongBy)
                       .arg(characterCount(made.text) - made.tooLongBy);
    if (m_style->style().correction != core::QrCorrection::Low)
        text += QStringLiteral("\n\n") + tr("A lower error correction, under Design, leaves more room.");
    showNothing(text);
}

void QrCodeGenForm::showNothing(const QString &why)
{
    m_drawing.reset();
    m_note->setWarning({});
    m_preview->showText(why);
    setUsable(false);
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
    m_note->setEnabled(true);
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
    if (m_text.isEmpty() || m_jobs.isBusy())
        return;
    qr::SaveOrder order{.text = m_text, .style = m_style->style(), .format = format};
    const QString ending = qr::suffix(format);
    order.file =
        platform::dialogs().chooseFileToSave(window(), tr("Save QR Code"), tr("QR code") + u'.' + ending,
                                             QStringLiteral("%1 (*.%2)").arg(ending.toUpper(), ending));
    // The dialog ran an event loop, so the state may have changed.
    if (!order.file.isEmpty() && !m_jobs.isBusy())
        run(order);
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

// Rendering a large image of a dense code takes a moment.
void QrCodeGenForm::copy()
{
    if (m_text.isEmpty() || m_jobs.isBusy())
        return;
    m_jobs.run(
        {.busyText = tr("copying the code")},
        [text = m_text, style = m_style->style()](const core::JobControl &) {
            Made copy = made(text, style);
            if (copy.drawing)
                copy.picture = copy.drawing->image();
            return copy;
        },
        [this](auto &job) {
            const Made copy = job.takeResult().value_or(Made());
            const QString error =
                copy.drawing ? tr("The picture is too small for this code: it needs %1 pixels at least.")
                                   .arg(copy.drawing->side())
                             : job.error();
            showCopied(copy.picture, error);
        });
}

void QrCodeGenForm::showCopied(const QImage &picture, const QString &error)
{
    if (picture.isNull()) {
        m_notice->showNotice(NoticeBar::Kind::Error, error);
        return;
    }
    QGuiApplication::clipboard()->setImage(picture);
    m_notice->showNotice(NoticeBar::Kind::Info, tr("The picture was copied."));
}

// The page that shows the jobs of the batch list.
void QrCodeGenForm::showJob(bool runs)
{
    m_pages->setCurrentWidget(runs ? static_cast<QWidget *>(m_progress) : static_cast<QWidget *>(m_batch));
}
