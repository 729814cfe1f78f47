// SPDX-License-Identifier: GPL-3.0-or-later
#include "QRCode/QRCodePhoneForms.h"

#include "QRCode/Settings.h"
#include "QRCode/engine/Countries.h"
#include "QRCode/engine/FieldChecks.h"

#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>

using qr::FieldChecks;
using qr::PayloadForm;
namespace stored = qr::stored;

namespace
{

int codeOf(const QComboBox *country)
{
    return qr::diallingCode(country->currentIndex());
}

} // namespace

QRCodeCallForm::QRCodeCallForm(QWidget *parent)
    : PayloadForm(tr("Scanning the QR code will call this number."), parent)
{
    m_country = addCountry(stored::callCountry);
    m_number = addLine(tr("Phone Number:"), "phoneNumberLineEdit", stored::callNumber,
                       [this] { return FieldChecks::phone(codeOf(m_country), m_number->text()); });
}

QString QRCodeCallForm::payload() const
{
    return qr::callPayload(codeOf(m_country), m_number->text());
}

QRCodeSMSForm::QRCodeSMSForm(QWidget *parent)
    : PayloadForm(tr("Scanning the QR code will send message to the phone number."), parent)
{
    m_country = addCountry(stored::smsCountry);
    m_number = addLine(tr("Phone Number:"), "phoneNumberLineEdit", stored::smsNumber,
                       [this] { return FieldChecks::phone(codeOf(m_country), m_number->text()); });
    m_message = addText(tr("Message:"), "messagePlainTextEdit", stored::smsMessage);
}

QString QRCodeSMSForm::payload() const
{
    return qr::smsPayload(codeOf(m_country), m_number->text(), m_message->toPlainText());
}

QRCodeWhatsappForm::QRCodeWhatsappForm(QWidget *parent)
    : PayloadForm(tr("Scanning the QR code will send whatsapp message to the phone number."), parent)
{
    m_country = addCountry(stored::whatsappCountry);
    m_number = addLine(tr("Phone Number:"), "phoneNumberLineEdit", stored::whatsappNumber,
                       [this] { return FieldChecks::phone(codeOf(m_country), m_number->text()); });
    m_message = addText(tr("Message:"), "messagePlainTextEdit", stored::whatsappMessage,
                        [this] { return FieldChecks::chatMessage(m_message->toPlainText()); });
}

QString QRCodeWhatsappForm::payload() const
{
    return qr::whatsappPayload(codeOf(m_country), m_number->text(), m_message->toPlainText());
}
