// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "QRCode/PayloadForm.h"

class QRCodeLinkForm : public qr::PayloadForm
{
    Q_OBJECT

public:
    explicit QRCodeLinkForm(QWidget *parent = nullptr);
    QString payload() const override;

signals:
    void updateQRCode_Link(QString payload);

protected:
    void emitPayload(const QString &payload) override { emit updateQRCode_Link(payload); }

private:
    QLineEdit *m_link;
};

class QRCodeTextForm : public qr::PayloadForm
{
    Q_OBJECT

public:
    explicit QRCodeTextForm(QWidget *parent = nullptr);
    QString payload() const override;

signals:
    void updateQRCode_Text(QString payload);

protected:
    void emitPayload(const QString &payload) override { emit updateQRCode_Text(payload); }

private:
    QPlainTextEdit *m_text;
};

class QRCodeEmailForm : public qr::PayloadForm
{
    Q_OBJECT

public:
    explicit QRCodeEmailForm(QWidget *parent = nullptr);
    QString payload() const override;

signals:
    void updateQRCode_Email(QString payload);

protected:
    void emitPayload(const QString &payload) override { emit updateQRCode_Email(payload); }

private:
    QLineEdit *m_address;
    QLineEdit *m_subject;
    QPlainTextEdit *m_message;
};

// A link to a payment page.
class QRCodePaypalForm : public qr::PayloadForm
{
    Q_OBJECT

public:
    explicit QRCodePaypalForm(QWidget *parent = nullptr);
    QString payload() const override;

signals:
    void updateQRCode_Paypal(QString payload);

protected:
    void emitPayload(const QString &payload) override { emit updateQRCode_Paypal(payload); }

private:
    QLineEdit *m_user;
    QLineEdit *m_amount;
    QComboBox *m_currency;
};
