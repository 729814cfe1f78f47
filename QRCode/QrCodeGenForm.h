// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "QRCode/Export.h"
#include "core/LatestAnswer.h"
#include "widgets/Controls.h"
#include "widgets/FLWidget.h"
#include "widgets/JobHost.h"

#include <QTimer>

class FLTabWidget;
class NoticeBar;
class QButtonGroup;
class QPushButton;
class QRCodeBatchPage;
class QRCodePreview;
class QScrollArea;
class QStackedWidget;
class QVBoxLayout;
class ScanPage;

namespace qr
{
class FieldNote;
class PayloadForm;
class StylePanel;
} // namespace qr

// The QR code creator: content on the left, design beside it, and the code itself, which is updated on every
// key press and read back by an independent decoder.
class QrCodeGenForm : public FLWidget
{
    Q_OBJECT

public:
    explicit QrCodeGenForm(QWidget *parent = nullptr);
    ~QrCodeGenForm() override;

    bool mayLeave() override;
    void requestStop() override;
    // The encoded text and the result of the check, for observers outside the form (tests).
    QString payload() const { return m_text; }
    const qr::Verdict &verdict() const { return m_verdict; }

public slots:
    void OnUpdateQRCode_Link(QString payload) { setPayload(payload); }
    void OnUpdateQRCode_Email(QString payload) { setPayload(payload); }
    void OnUpdateQRCode_Text(QString payload) { setPayload(payload); }
    // Also used by contacts.
    void OnUpdateQRCode_Call(QString payload) { setPayload(payload); }
    void OnUpdateQRCode_SMS(QString payload) { setPayload(payload); }
    void OnUpdateQRCode_Whatsapp(QString payload) { setPayload(payload); }
    void OnUpdateQRCode_Wifi(QString payload) { setPayload(payload); }
    void OnUpdateQRCode_Paypal(QString payload) { setPayload(payload); }

signals:
    // The check has finished.
    void checked();
    void saved(const QString &file);

private:
    void buildPage(QWidget *page);
    QWidget *buildKinds();
    QWidget *buildInput();
    QWidget *buildResult();
    QPushButton *addSave(QVBoxLayout *column, const char *name, const QString &text, qr::Format format);
    template <class Form, class Signal, class Slot>
    void addKind(const controls::Button &kind, Signal signal, Slot slot);
    void addKinds();
    void orderFocus();
    void showKind(qr::PayloadForm *form);
    void saveFields();
    void setPayload(const QString &payload);
    void encode();
    void draw();
    struct Made;
    static Made made(const QString &text, const qr::Style &style);
    void showMade(const Made &made);
    void showTooLong(const Made &made);
    void showNothing(const QString &why);
    void check();
    void showVerdict(const qr::Verdict &verdict);
    void setUsable(bool usable);
    void save(qr::Format format);
    void saveRefused();
    void run(const qr::SaveOrder &order);
    void showSaved(const qr::Saved &result, const qr::SaveOrder &order);
    void copy();
    void showCopied(const QImage &picture, const QString &error);
    void showJob(bool runs);

    QStackedWidget *m_pages;
    QWidget *m_main;
    QRCodeBatchPage *m_batch;
    ScanPage *m_progress;
    NoticeBar *m_notice;
    QVBoxLayout *m_kinds;
    QButtonGroup *m_kindGroup;
    FLTabWidget *m_tabs;
    QScrollArea *m_content;
    QVBoxLayout *m_forms;
    qr::PayloadForm *m_form = nullptr; // the current one
    qr::StylePanel *m_style;
    QRCodePreview *m_preview;
    qr::FieldNote *m_note;
    QList<QPushButton *> m_saveButtons;
    QAction *m_saveAnyway;
    std::optional<qr::SaveOrder> m_refused; // not saved, because it does not scan

    QString m_text;
    std::optional<qr::Drawing> m_drawing; // shown; may be older than m_text while m_making is running
    qr::Verdict m_verdict;
    core::LatestAnswer m_making;
    bool m_makeAgain = false; // something changed while it was running
    QTimer m_settle;          // waits for a pause in typing
    core::LatestAnswer m_checking;
    JobHost m_jobs{this};
};
