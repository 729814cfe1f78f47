// SPDX-License-Identifier: GPL-3.0-or-later
#include "QRCode/QrCodeGenForm.h"

#include "QRCode/BatchPage.h"
#include "QRCode/FieldNote.h"
#include "QRCode/Preview.h"
#include "QRCode/QRCodeContactForms.h"
#include "QRCode/QRCodePhoneForms.h"
#include "QRCode/QRCodeTextForms.h"
#include "QRCode/StylePanel.h"
#include "core/QrEncoder.h"
#include "widgets/FLTabWidget.h"
#include "widgets/NoticeBar.h"
#include "widgets/PageHeader.h"
#include "widgets/ScanPage.h"
#include "widgets/Theme.h"

#include <QAction>
#include <QButtonGroup>
#include <QHBoxLayout>
#include <QPushButton>
#include <QScrollArea>
#include <QStackedWidget>
#include <QToolButton>
#include <QVBoxLayout>

using qr::FieldNote;
using qr::StylePanel;

namespace
{

// Delay after the last key press before the code is checked.
constexpr int settleTime = 250; // ms

} // namespace

QrCodeGenForm::QrCodeGenForm(QWidget *parent) : FLWidget(parent)
{
    m_pages = new QStackedWidget(this);
    auto *layout = new QVBoxLayout(this);
    layout->setContentsMargins({});
    layout->addWidget(m_pages);
    m_main = new QWidget(m_pages);
    m_pages->addWidget(m_main);
    m_settle.setSingleShot(true);
    m_settle.setInterval(settleTime);
    connect(&m_settle, &QTimer::timeout, this, &QrCodeGenForm::check);
    buildPage(m_main);

    m_progress = new ScanPage(m_pages);
    m_batch = new QRCodeBatchPage(
        &m_jobs, m_progress, [this] { return m_style->style(); }, m_pages);
    m_pages->addWidget(m_batch);
    m_pages->addWidget(m_progress);
    connect(m_batch, &QRCodeBatchPage::back, this, [this] { m_pages->setCurrentWidget(m_main); });
    connect(m_batch, &QRCodeBatchPage::jobStarted, this, [this] { showJob(true); });
    connect(m_batch, &QRCodeBatchPage::jobEnded, this, [this] { showJob(false); });
    connect(m_progress, &ScanPage::scanCancel, &m_jobs, &JobHost::cancel);

    connect(m_style, &StylePanel::changed, this, &QrCodeGenForm::encode);
    connect(m_preview, &QRCodePreview::sizeChanged, this, &QrCodeGenForm::draw);
    addKinds();
    orderFocus();
}

QrCodeGenForm::~QrCodeGenForm()
{
    saveFields();
}

void QrCodeGenForm::buildPage(QWidget *page)
{
    auto *column = new QVBoxLayout(page);
    column->setContentsMargins(theme::pageMargin, theme::pageMargin, theme::pageMargin, theme::pageMargin);
    column->setSpacing(theme::space);
    auto *header = new PageHeader(PageHeader::Kind::Start, page);
    header->setTitle(tr("QR Code Creator"));
    header->setText(tr("Create QR Code for text, link, email, Whatsapp, SMS, Call, Wifi."));
    QToolButton *many =
        header->addToolButton({"manyButton", "Documents24", tr("Many at Once"), tr("Codes from a CSV file")});
    connect(many, &QToolButton::clicked, this, [this] { m_pages->setCurrentWidget(m_batch); });
    m_notice = new NoticeBar(page);
    m_saveAnyway = new QAction(tr("Save Anyway"), this);
    connect(m_saveAnyway, &QAction::triggered, this, &QrCodeGenForm::saveRefused);
    auto *row = new QHBoxLayout;
    row->setSpacing(theme::spaceWide);
    row->addWidget(buildKinds());
    row->addWidget(buildInput(), 3);
    row->addWidget(buildResult(), 3);
    column->addWidget(header);
    column->addWidget(m_notice);
    column->addLayout(row, 1);
}

template <class Form, class Signal, class Slot>
void QrCodeGenForm::addKind(const controls::Button &kind, Signal signal, Slot slot)
{
    auto *form = new Form(m_content->widget());
    form->hide();
    m_forms->addWidget(form);
    connect(form, signal, this, slot);
    QToolButton *button = controls::toolButton(this, kind, true);
    button->setCheckable(true);
    button->setFocusPolicy(Qt::StrongFocus);
    button->setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Fixed);
    m_kinds->addWidget(button);
    m_kindGroup->addButton(button);
    connect(button, &QToolButton::clicked, this, [this, form] { showKind(form); });
    if (!m_form) {
        button->setChecked(true);
        showKind(form);
    }
}

void QrCodeGenForm::addKinds()
{
    using Self = QrCodeGenForm;
    addKind<QRCodeLinkForm>({"toolButtonLink", "Link24", tr("Link")}, &QRCodeLinkForm::updateQRCode_Link,
                            &Self::OnUpdateQRCode_Link);
    addKind<QRCodeTextForm>({"toolButtonText", "Text24", tr("Text")}, &QRCodeTextForm::updateQRCode_Text,
                            &Self::OnUpdateQRCode_Text);
    addKind<QRCodeEmailForm>({"toolButtonEmail", "Mail24", tr("Email")}, &QRCodeEmailForm::updateQRCode_Email,
                             &Self::OnUpdateQRCode_Email);
    addKind<QRCodeCallForm>({"toolButtonCall", "Call24", tr("Call")}, &QRCodeCallForm::updateQRCode_Call,
                            &Self::OnUpdateQRCode_Call);
    addKind<QRCodeSMSForm>({"toolButtonSMS", "Message24", tr("SMS")}, &QRCodeSMSForm::updateQRCode_SMS,
                           &Self::OnUpdateQRCode_SMS);
    addKind<QRCodeWhatsappForm>({"toolButtonWhatsapp", "PhoneChat24", tr("Whatsapp")},
                                &QRCodeWhatsappForm::updateQRCode_Whatsapp, &Self::OnUpdateQRCode_Whatsapp);
    addKind<QRCodeVCardForm>({"toolButtonVCard", "ContactCard24", tr("V-Card")},
                             &QRCodeVCardForm::updateQRCode_VCard, &Self::OnUpdateQRCode_Call);
    addKind<QRCodeWifiForm>({"toolButtonWifi", "Wifi24", tr("WI-FI")}, &QRCodeWifiForm::updateQRCode_Wifi,
                            &Self::OnUpdateQRCode_Wifi);
    addKind<QRCodePaypalForm>({"toolButtonPaypal", "Payment24", tr("Paypal")},
                              &QRCodePaypalForm::updateQRCode_Paypal, &Self::OnUpdateQRCode_Paypal);
    m_kinds->addStretch();
}

// Tab order follows the visual order, whatever the order of creation.
void QrCodeGenForm::orderFocus()
{
    QList<QWidget *> order{findChild<QToolButton *>(QStringLiteral("manyButton"))};
    for (QAbstractButton *kind : m_kindGroup->buttons())
        order.append(kind);
    order.append(m_tabs->findChildren<QWidget *>());
    for (QPushButton *button : m_saveButtons)
        order.append(button);
    // Parts of a compound field use the field as their focus proxy.
    order.removeIf([](const QWidget *widget) {
        return (widget->focusPolicy() & Qt::TabFocus) == 0 || widget->focusProxy();
    });
    for (qsizetype i = 1; i < order.size(); ++i)
        setTabOrder(order[i - 1], order[i]);
}

QWidget *QrCodeGenForm::buildKinds()
{
    auto *kinds = new QWidget(this);
    kinds->setObjectName(QStringLiteral("kinds"));
    m_kindGroup = new QButtonGroup(this);
    m_kinds = new QVBoxLayout(kinds);
    m_kinds->setContentsMargins({});
    m_kinds->setSpacing(theme::spaceTight);
    QScrollArea *area = controls::scrollArea(kinds, this);
    area->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Expanding);
    return area;
}

QWidget *QrCodeGenForm::buildInput()
{
    m_tabs = new FLTabWidget(this);
    m_tabs->setObjectName(QStringLiteral("inputTabWidget"));
    auto *forms = new QWidget;
    m_forms = new QVBoxLayout(forms);
    m_forms->setContentsMargins({});
    m_content = controls::scrollArea(forms, m_tabs);
    m_style = new StylePanel;
    m_tabs->addTab(m_content, tr("Content"));
    m_tabs->addTab(controls::scrollArea(m_style, m_tabs), tr("Design"));
    m_tabs->setAccessibleName(tr("Content and design"));
    m_tabs->setMinimumWidth(240);
    return m_tabs;
}

QPushButton *QrCodeGenForm::addSave(QVBoxLayout *column, const char *name, const QString &text,
                                    qr::Format format)
{
    const bool isFirst = format == qr::Format::Png;
    auto *button = controls::pushButton(
        this, {name, "Save24", text, {}, isFirst ? QKeySequence(QKeySequence::Save) : QKeySequence()},
        isFirst ? controls::Rank::Primary : controls::Rank::Secondary);
    connect(button, &QPushButton::clicked, this, [this, format] { save(format); });
    m_saveButtons.append(button);
    if (column)
        column->addWidget(button);
    return button;
}

QWidget *QrCodeGenForm::buildResult()
{
    auto *result = new QWidget(this);
    result->setMinimumWidth(220);
    auto *column = new QVBoxLayout(result);
    column->setContentsMargins({});
    column->setSpacing(theme::spaceSnug);
    m_preview = new QRCodePreview(result);
    m_preview->setObjectName(QStringLiteral("qrCodePreview"));
    m_note = new FieldNote(result);
    m_note->setObjectName(QStringLiteral("verdictNote"));
    column->addWidget(m_preview, 1);
    column->addWidget(m_note);
    addSave(column, "savePngButton", tr("Save Picture"), qr::Format::Png);
    auto *others = new QHBoxLayout;
    others->setSpacing(theme::spaceSnug);
    others->addWidget(addSave(nullptr, "saveSvgButton", tr("SVG"), qr::Format::Svg), 1);
    others->addWidget(addSave(nullptr, "savePdfButton", tr("PDF"), qr::Format::Pdf), 1);
    auto *copyButton = controls::pushButton(result, {"copyButton", "Copy24", tr("Copy")});
    connect(copyButton, &QPushButton::clicked, this, &QrCodeGenForm::copy);
    m_saveButtons.append(copyButton);
    others->addWidget(copyButton, 1);
    column->addLayout(others);
    return result;
}
