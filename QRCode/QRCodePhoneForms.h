// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "QRCode/PayloadForm.h"

class QRCodeCallForm : public qr::PayloadForm
{
    Q_OBJECT

public:
    explicit QRCodeCallForm(QWidget *parent = nullptr);
    QString payload() const override;

signals:
    void updateQRCode_Call(QString payload);

protected:
    void emitPayload(const QString &payload) override { emit updateQRCode_Call(payload); }

private:
    QComboBox *m_country;
    QLineEdit *m_number;
};

class QRCodeSMSForm : public qr::PayloadForm
{
    Q_OBJECT

public:
    explicit QRCodeSMSForm(QWidget *parent = nullptr);
    QString payload() const override;

signals:
    void updateQRCode_SMS(QString payload);

protected:
    void emitPayload(const QString &payload) override { emit updateQRCode_SMS(payload); }

private:
    QComboBox *m_country;
    QLineEdit *m_number;
    QPlainTextEdit *m_message;
};

class QRCodeWhatsappForm : public qr::PayloadForm
{
    Q_OBJECT

public:
    explicit QRCodeWhatsappForm(QWidget *parent = nullptr);
    QString payload() const override;

signals:
    void updateQRCode_Whatsapp(QString payload);

protected:
    void emitPayload(const QString &payload) override { emit updateQRCode_Whatsapp(payload); }

private:
    QComboBox *m_country;
    QLineEdit *m_number;
    QPlainTextEdit *m_message;
};
