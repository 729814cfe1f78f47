// SPDX-License-Identifier: GPL-3.0-or-later
#include "QRCode/BatchPage.h"
#include "QRCode/FieldNote.h"
#include "QRCode/Preview.h"
#include "QRCode/QRCodeContactForms.h"
#include "QRCode/QrCodeGenForm.h"
#include "QRCode/Settings.h"
#include "QRCode/StylePanel.h"
#include "QRCode/engine/Reader.h"
#include "tests/support/FakeDialogs.h"
#include "tests/support/RegistryTest.h"
#include "widgets/FLColorWidget.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSignalSpy>
#include <QStackedWidget>
#include <QTemporaryDir>
#include <QTest>
#include <QToolButton>

using namespace Qt::StringLiterals;
using qr::FieldNote;
using qr::StylePanel;
namespace stored = qr::stored;

namespace
{

constexpr int patience = 20'000; // ms

template <class Widget>
Widget *find(const QWidget &in, const char *name)
{
    auto *widget = in.findChild<Widget *>(QLatin1String(name));
    if (!widget)
        qFatal("no widget %s", name);
    return widget;
}

void choose(QrCodeGenForm &form, const char *kind)
{
    find<QToolButton>(form, kind)->click();
}

// A field of the form of that class.
template <class Field>
Field *field(const QrCodeGenForm &form, const char *formClass, const char *name)
{
    for (auto *found : form.findChildren<Field *>(QLatin1String(name))) {
        if (found->parentWidget()->inherits(formClass))
            return found;
    }
    qFatal("no field %s of %s", name, formClass);
}

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

class QrCodeFormTest : public tests::RegistryTest
{
    Q_OBJECT

private slots:
    void everyKindReachesTheCode();
    void fieldsAreKept();
    void passwordIsForgotten();
    void warnsBesideTheField();
    void tooLong();
    void styleIsKeptAndChecked();
    void savesWhatScans();
    void manyAtOnce();
};

void QrCodeFormTest::everyKindReachesTheCode()
{
    QrCodeGenForm form;
    const auto expect = [&](const char *kind, const QString &payload) {
        choose(form, kind);
        QCOMPARE(form.payload(), payload);
    };
    field<QLineEdit>(form, "QRCodeLinkForm", "linkLineEdit")->setText(u"https://a.org/"_s);
    field<QPlainTextEdit>(form, "QRCodeTextForm", "textPlainTextEdit")->setPlainText(u"a\nb"_s);
    field<QLineEdit>(form, "QRCodeEmailForm", "emailAddressLineEdit")->setText(u"a@b"_s);
    for (const char *phone : {"QRCodeCallForm", "QRCodeSMSForm", "QRCodeWhatsappForm"}) {
        field<QComboBox>(form, phone, "countryCodeComboBox")->setCurrentIndex(0);
        field<QLineEdit>(form, phone, "phoneNumberLineEdit")->setText(u"12"_s);
    }
    field<QLineEdit>(form, "QRCodeWifiForm", "networkNameLineEdit")->setText(u"n"_s);
    field<QLineEdit>(form, "QRCodePaypalForm", "userNameLineEdit")->setText(u"me"_s);
    expect("toolButtonLink", u"https://a.org/"_s);
    expect("toolButtonText", u"a\nb"_s);
    expect("toolButtonEmail", u"MATMSG:TO:a@b;SUB:;BODY:,;;"_s);
    expect("toolButtonCall", u"tel:+9312"_s);
    expect("toolButtonSMS", u"SMSTO:+9312:"_s);
    expect("toolButtonWhatsapp", u"https://wa.me/9312/?text="_s);
    expect("toolButtonWifi", u"WIFI:S:n;T:WEP;P:;H:false;;"_s);
    expect("toolButtonPaypal", u"https://paypal.me/me"_s);
    choose(form, "toolButtonVCard");
    QCOMPARE(form.payload().count(u'\n'), 12);
    QCOMPARE(form.metaObject()->indexOfSlot("OnUpdateQRCode_VCard(QString)"), -1);
    QVERIFY(form.metaObject()->indexOfSlot("OnUpdateQRCode_Call(QString)") >= 0);
}

// Stored when the form is left, and when the page goes; not before.
void QrCodeFormTest::fieldsAreKept()
{
    {
        QrCodeGenForm form;
        choose(form, "toolButtonCall");
        field<QComboBox>(form, "QRCodeCallForm", "countryCodeComboBox")->setCurrentIndex(5);
        field<QLineEdit>(form, "QRCodeCallForm", "phoneNumberLineEdit")->setText(u"1"_s);
        QVERIFY(stored::callNumber.read().isEmpty());
        choose(form, "toolButtonWifi");
        QCOMPARE(stored::callNumber.read(), u"1"_s);
        field<QCheckBox>(form, "QRCodeWifiForm", "hiddenCheckBox")->setChecked(true);
        field<QComboBox>(form, "QRCodeWifiForm", "networkTypeComboBox")->setCurrentIndex(1);
    }
    QCOMPARE(stored::callCountry.read(), 5);
    QVERIFY(stored::wifiHidden.read());
    settings::writeDword(stored::key, u"optionsSMSCountryIndex", 100'000);
    QrCodeGenForm again;
    QCOMPARE(field<QComboBox>(again, "QRCodeCallForm", "countryCodeComboBox")->currentIndex(), 5);
    QCOMPARE(field<QComboBox>(again, "QRCodeWifiForm", "networkTypeComboBox")->currentIndex(), 1);
    QVERIFY(field<QComboBox>(again, "QRCodeSMSForm", "countryCodeComboBox")->currentIndex() >= 0);
}

void QrCodeFormTest::passwordIsForgotten()
{
    QrCodeGenForm form;
    choose(form, "toolButtonWifi");
    field<QLineEdit>(form, "QRCodeWifiForm", "passwordLineEdit")->setText(u"12345678"_s);
    QVERIFY(form.mayLeave());
    QCOMPARE(stored::wifiPassword.read(), u"12345678"_s);
    field<QCheckBox>(form, "QRCodeWifiForm", "forgetPasswordCheckBox")->setChecked(true);
    QVERIFY(form.mayLeave());
    QVERIFY(settings::valueExists(stored::key, u"optionsWifiPassword"));
    QCOMPARE(stored::wifiPassword.read(), QString());
}

void QrCodeFormTest::warnsBesideTheField()
{
    QrCodeGenForm form;
    choose(form, "toolButtonWifi");
    const auto *note = field<FieldNote>(form, "QRCodeWifiForm", "passwordLineEditNote");
    QVERIFY(note->isHidden());
    field<QLineEdit>(form, "QRCodeWifiForm", "networkNameLineEdit")->setText(u"n"_s);
    field<QLineEdit>(form, "QRCodeWifiForm", "passwordLineEdit")->setText(u"a;b"_s);
    QVERIFY(!note->isHidden() && note->text().contains(u';'));
    QVERIFY(form.payload().contains("P:a;b;"_L1));
}

void QrCodeFormTest::tooLong()
{
    QrCodeGenForm form;
    choose(form, "toolButtonText");
    field<QPlainTextEdit>(form, "QRCodeTextForm", "textPlainTextEdit")
        ->setPlainText(u"a"_s.repeated(2331 + 12));
    QTRY_VERIFY(find<QRCodePreview>(form, "qrCodePreview")->text().contains(u"12"_s));
    QVERIFY(!find<QPushButton>(form, "savePngButton")->isEnabled());
}

void QrCodeFormTest::styleIsKeptAndChecked()
{
    stored::margin.write(2);
    settings::writeDword(stored::key, u"qrCodeBodyShape", 99);
    {
        QrCodeGenForm form;
        const auto *style = form.findChild<StylePanel *>();
        QCOMPARE(style->style().margin, 2);
        QCOMPARE(style->style().body, qr::BodyShape::Squares);
        find<FLColorWidget>(form, "colorWidget")->setColor(QColor(0xFA, 0xFA, 0xFA));
        QCOMPARE(stored::color.read(), 0xFAFAFA);
        QSignalSpy checked(&form, &QrCodeGenForm::checked);
        field<QLineEdit>(form, "QRCodeLinkForm", "linkLineEdit")->setText(u"https://a.org/"_s);
        QVERIFY(checked.wait(patience));
        QCOMPARE(form.verdict(), (qr::Verdict{false, {qr::Reason::Contrast}}));
        QVERIFY(find<FieldNote>(form, "verdictNote")->text().contains(u"colour"_s));
    }
}

void QrCodeFormTest::savesWhatScans()
{
    QTemporaryDir folder;
    tests::FakeDialogs dialogs;
    QrCodeGenForm form;
    const QString text = u"https://a.org/"_s;
    field<QLineEdit>(form, "QRCodeLinkForm", "linkLineEdit")->setText(text);
    QTRY_VERIFY(find<QPushButton>(form, "savePngButton")->isEnabled());
    QSignalSpy saved(&form, &QrCodeGenForm::saved);
    const QString png = folder.filePath(u"a.png"_s);
    dialogs.nextFileToSave.enqueue(png);
    find<QPushButton>(form, "savePngButton")->click();
    QVERIFY(saved.wait(patience));
    const QImage picture(png);
    QCOMPARE(picture.width(), 600);
    QVERIFY(qr::reads(picture, text, picture.width() / 33));
    const QString svg = folder.filePath(u"a.svg"_s);
    dialogs.nextFileToSave.enqueue(svg);
    find<QPushButton>(form, "saveSvgButton")->click();
    QVERIFY(saved.wait(patience));
    QVERIFY(contents(svg).startsWith("<?xml"));

    // What does not scan leaves the old file alone.
    const QByteArray before = contents(png);
    qr::Style white;
    white.color = Qt::white;
    const qr::Saved refused = qr::save({text, white, qr::Format::Png, png});
    QCOMPARE(refused.outcome, qr::Saved::Outcome::DoesNotScan);
    QCOMPARE(contents(png), before);
}

void QrCodeFormTest::manyAtOnce()
{
    QTemporaryDir folder;
    const QString list = folder.filePath(u"list.csv"_s);
    QFile file(list);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("text;name\none;first\ntwo;\n" + QByteArray(3000, 'x') + ";long\n");
    file.close();
    QVERIFY(QFile::copy(list, folder.filePath(u"first.png"_s)));
    tests::FakeDialogs dialogs;
    QrCodeGenForm form;
    auto *page = form.findChild<QRCodeBatchPage *>();
    const auto *model = page->findChild<QRCodeBatchModel *>();
    QSignalSpy ended(page, &QRCodeBatchPage::jobEnded);
    page->readList(list);
    QVERIFY(ended.wait(patience));
    QCOMPARE(model->rows().size(), 3);
    dialogs.nextFolder.enqueue(folder.path());
    find<QPushButton>(form, "createAllButton")->click();
    QVERIFY(ended.wait(patience));
    QVERIFY(qr::reads(QImage(folder.filePath(u"first (2).png"_s)), u"one"_s, 20));
    QVERIFY(qr::reads(QImage(folder.filePath(u"002.png"_s)), u"two"_s, 20));
    QVERIFY(!QFile::exists(folder.filePath(u"long.png"_s)));
    QVERIFY(model->data(model->index(2, 2), Qt::DisplayRole).toString().contains(u"669"_s));
}

QTEST_MAIN(QrCodeFormTest)
#include "tst_qr_code_form.moc"
