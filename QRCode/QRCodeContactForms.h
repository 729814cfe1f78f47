// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "QRCode/PayloadForm.h"

class QRCodeWifiForm : public qr::PayloadForm
{
    Q_OBJECT

public:
    explicit QRCodeWifiForm(QWidget *parent = nullptr);
    QString payload() const override;

signals:
    void updateQRCode_Wifi(QString payload);

protected:
    void emitPayload(const QString &payload) override { emit updateQRCode_Wifi(payload); }

private:
    QLineEdit *m_network;
    QComboBox *m_type;
    QLineEdit *m_password;
    QCheckBox *m_hidden;
    QCheckBox *m_forget;
};

class QRCodeVCardForm : public qr::PayloadForm
{
    Q_OBJECT

public:
    explicit QRCodeVCardForm(QWidget *parent = nullptr);
    QString payload() const override;

signals:
    void updateQRCode_VCard(QString payload);

protected:
    void emitPayload(const QString &payload) override { emit updateQRCode_VCard(payload); }

private:
    // A line edit that warns about characters that end a field in this format.
    QLineEdit *addPart(const QString &label, const char *name, const settings::Text &setting,
                       QString (*check)(const QString &));

    QLineEdit *m_firstName;
    QLineEdit *m_lastName;
    QLineEdit *m_phone;
    QLineEdit *m_mobile;
    QLineEdit *m_fax;
    QLineEdit *m_email;
    QLineEdit *m_website;
    QLineEdit *m_company;
    QLineEdit *m_jobTitle;
    QPlainTextEdit *m_address;
    QLineEdit *m_city;
    QLineEdit *m_postCode;
    QLineEdit *m_country;
};
