// SPDX-License-Identifier: GPL-3.0-or-later
#include "QRCode/QRCodeTextForms.h"

#include "QRCode/Settings.h"
#include "QRCode/engine/FieldChecks.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>

using namespace Qt::StringLiterals;
using qr::FieldChecks;
using qr::PayloadForm;
namespace stored = qr::stored;

QRCodeLinkForm::QRCodeLinkForm(QWidget *parent)
    : PayloadForm(tr("Scanning QR code will opening this URL."), parent)
{
    m_link = addLine(tr("Enter URL:"), "linkLineEdit", stored::linkContent,
                     [this] { return FieldChecks::link(m_link->text()); });
    m_link->setPlaceholderText(u"https://www.example.com/"_s);
    addHint(tr("Example: %1").arg("https://www.example.com/"_L1));
}

QString QRCodeLinkForm::payload() const
{
    return m_link->text();
}

QRCodeTextForm::QRCodeTextForm(QWidget *parent)
    : PayloadForm(tr("Scanning the QR code will show this text."), parent)
{
    m_text = addText(tr("Enter text:"), "textPlainTextEdit", stored::textContent);
}

QString QRCodeTextForm::payload() const
{
    return m_text->toPlainText();
}

QRCodeEmailForm::QRCodeEmailForm(QWidget *parent)
    : PayloadForm(tr("Scanning the QR code will send this email."), parent)
{
    m_address = addLine(tr("Email Address:"), "emailAddressLineEdit", stored::emailAddress,
                        [this] { return FieldChecks::mailAddress(m_address->text()); });
    m_subject = addLine(tr("Subject of Email:"), "subjectLineEdit", stored::emailSubject,
                        [this] { return FieldChecks::mailText(m_subject->text()); });
    m_message = addText(tr("Message:"), "messagePlainTextEdit", stored::emailMessage,
                        [this] { return FieldChecks::mailText(m_message->toPlainText()); });
}

QString QRCodeEmailForm::payload() const
{
    return qr::emailPayload(m_address->text(), m_subject->text(), m_message->toPlainText());
}

QRCodePaypalForm::QRCodePaypalForm(QWidget *parent)
    : PayloadForm(tr("Scanning the QR code will open the page on which you are paid."), parent)
{
    // Stored by row number: append new ones at the end.
    static const QStringList currencies{u"EUR"_s, u"USD"_s, u"GBP"_s, u"AUD"_s, u"BRL"_s, u"CAD"_s,
                                        u"CHF"_s, u"CZK"_s, u"DKK"_s, u"HKD"_s, u"HUF"_s, u"ILS"_s,
                                        u"JPY"_s, u"MXN"_s, u"NOK"_s, u"NZD"_s, u"PHP"_s, u"PLN"_s,
                                        u"SEK"_s, u"SGD"_s, u"THB"_s, u"TWD"_s};
    m_user = addLine(tr("User Name:"), "userNameLineEdit", stored::paypalUser,
                     [this] { return FieldChecks::paymentUser(m_user->text()); });
    m_amount = addLine(tr("Amount:"), "amountLineEdit", stored::paypalAmount,
                       [this] { return FieldChecks::paymentAmount(m_amount->text()); });
    m_amount->setPlaceholderText(tr("Any amount"));
    m_currency = addChoice(tr("Currency:"), "currencyComboBox", currencies, stored::paypalCurrency);
}

QString QRCodePaypalForm::payload() const
{
    return qr::paymentPayload(m_user->text(), m_amount->text(), m_currency->currentText());
}
