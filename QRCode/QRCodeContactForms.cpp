// SPDX-License-Identifier: GPL-3.0-or-later
#include "QRCode/QRCodeContactForms.h"

#include "QRCode/Settings.h"
#include "QRCode/engine/FieldChecks.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>

#include <memory>

using namespace Qt::StringLiterals;
using qr::FieldChecks;
using qr::PayloadForm;
namespace stored = qr::stored;

namespace
{

qr::WifiType typeOf(const QComboBox *type)
{
    return type->currentIndex() == 0 ? qr::WifiType::Wep : qr::WifiType::Wpa;
}

} // namespace

QRCodeWifiForm::QRCodeWifiForm(QWidget *parent) : PayloadForm({}, parent)
{
    m_network = addLine(tr("Network Name:"), "networkNameLineEdit", stored::wifiName,
                        [this] { return FieldChecks::wifiName(m_network->text()); });
    m_type =
        addChoice(tr("Network Type:"), "networkTypeComboBox", {u"WEP"_s, u"WPA/WPA2"_s}, stored::wifiType);
    m_password = addLine(
        tr("Password:"), "passwordLineEdit", stored::wifiPassword,
        [this] { return FieldChecks::wifiPassword(typeOf(m_type), m_password->text()); },
        [this] { return !m_forget->isChecked(); });
    m_forget = addBox(tr("Do not keep the password"), "forgetPasswordCheckBox", stored::wifiForgetPassword);
    addHint(tr("The code shows the password to everyone who scans it. What is kept is not encrypted."));
    m_hidden = addBox(tr("Hidden"), "hiddenCheckBox", stored::wifiHidden);
}

QString QRCodeWifiForm::payload() const
{
    return qr::wifiPayload(m_network->text(), typeOf(m_type), m_password->text(), m_hidden->isChecked());
}

QLineEdit *QRCodeVCardForm::addPart(const QString &label, const char *name, const settings::Text &setting,
                                    QString (*check)(const QString &))
{
    // The check needs the line edit, which is created by the same call.
    const auto line = std::make_shared<QLineEdit *>(nullptr);
    *line = addLine(label, name, setting, [line, check] { return check((*line)->text()); });
    return *line;
}

QRCodeVCardForm::QRCodeVCardForm(QWidget *parent) : PayloadForm({}, parent)
{
    constexpr auto text = &FieldChecks::contactText;
    constexpr auto phone = &FieldChecks::contactPhone;
    m_firstName = addPart(tr("First Name"), "firstNameLineEdit", stored::vcardFirstName, text);
    m_lastName = addPart(tr("Last Name"), "lastNameLineEdit", stored::vcardLastName, text);
    m_phone = addPart(tr("Phone Number:"), "phoneNumberLineEdit", stored::vcardPhone, phone);
    m_mobile = addPart(tr("Mobile:"), "mobileLineEdit", stored::vcardMobile, phone);
    m_fax = addPart(tr("Fax:"), "faxLineEdit", stored::vcardFax, phone);
    m_email =
        addPart(tr("Email Address:"), "emailAddressLineEdit", stored::vcardEmail, &FieldChecks::contactMail);
    m_website = addPart(tr("Website URL:"), "websiteLineEdit", stored::vcardWebsite, text);
    m_company = addPart(tr("Company:"), "companyLineEdit", stored::vcardCompany, text);
    m_jobTitle = addPart(tr("Job Title:"), "jobTitleLineEdit", stored::vcardJobTitle, text);
    m_address = addText(tr("Address:"), "addressPlainTextEdit", stored::vcardAddress,
                        [this] { return FieldChecks::contactText(m_address->toPlainText()); });
    m_city = addPart(tr("City:"), "cityLineEdit", stored::vcardCity, text);
    m_postCode = addPart(tr("Post Code:"), "postCodeLineEdit", stored::vcardPostCode, text);
    m_country = addPart(tr("Country:"), "countryLineEdit", stored::vcardCountry, text);
}

QString QRCodeVCardForm::payload() const
{
    return qr::contactPayload({.firstName = m_firstName->text(),
                               .lastName = m_lastName->text(),
                               .phone = m_phone->text(),
                               .mobile = m_mobile->text(),
                               .fax = m_fax->text(),
                               .email = m_email->text(),
                               .website = m_website->text(),
                               .company = m_company->text(),
                               .jobTitle = m_jobTitle->text(),
                               .address = m_address->toPlainText(),
                               .city = m_city->text(),
                               .postCode = m_postCode->text(),
                               .country = m_country->text()});
}
