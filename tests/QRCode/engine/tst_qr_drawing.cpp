// SPDX-License-Identifier: GPL-3.0-or-later
// Codes as they are drawn, read back by two decoders that share no code with each other or with the encoder.
#include "QRCode/engine/Check.h"
#include "QRCode/engine/Reader.h"

#include <QGuiApplication>
#include <QPainter>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::StringLiterals;
using qr::Reason;

namespace
{

const QString longText = u"Gr\u00fc\u00dfe aus K\u00f6ln, 0123456789. "_s.repeated(10);

qr::Drawing drawingOf(const QString &text, const qr::Style &style)
{
    return {core::encodeQr(text, style.correction).matrix.value(), style};
}

QImage redLogo()
{
    QImage logo(64, 48, QImage::Format_ARGB32);
    logo.fill(Qt::red);
    return logo;
}

qr::Verdict verdictOf(const QString &text, const qr::Style &style)
{
    const qr::Drawing drawing = drawingOf(text, style);
    return qr::check(drawing, drawing.image(), text);
}

} // namespace

class TestQrDrawing : public QObject
{
    Q_OBJECT

private slots:
    void scans_data();
    void scans();
    void reasons_data();
    void reasons();
    void largestCode();
    void otherTextIsNotRead();
    void modulesOfWholePixels();
#ifdef Q_OS_LINUX // the programs that judge are the build machine's
    void otherDecoder();
#endif
};

void TestQrDrawing::scans_data()
{
    QTest::addColumn<int>("body");
    QTest::addColumn<int>("eye");
    QTest::addColumn<int>("fill");
    for (int body = 0; body < 6; ++body)
        QTest::addRow("body %d", body) << body << body % 4 << body % 5;
    QTest::addRow("leaves") << 1 << 3 << 4;
}

void TestQrDrawing::scans()
{
    QFETCH(int, body);
    QFETCH(int, eye);
    QFETCH(int, fill);
    qr::Style style;
    style.body = qr::BodyShape(body);
    style.eyeFrame = style.eyeCentre = qr::EyeShape(eye);
    style.fill = qr::Fill(fill);
    style.correction = core::QrCorrection::Quartile;
    style.logo.image = redLogo();
    for (const QString &text : {u"https://example.org/"_s, longText})
        QCOMPARE(verdictOf(text, style), (qr::Verdict{true, {}}));
}

void TestQrDrawing::reasons_data()
{
    QTest::addColumn<qr::Style>("style");
    QTest::addColumn<bool>("scans");
    QTest::addColumn<QList<Reason>>("reasons");
    const auto row = [](const char *name, bool scans, const QList<Reason> &reasons, auto change) {
        qr::Style style;
        change(style);
        QTest::newRow(name) << style << scans << reasons;
    };
    row("plain", true, {}, [](qr::Style &) {});
    row("white on black", false, {Reason::LightOnDark}, [](qr::Style &style) {
        style.color = Qt::white;
        style.background = Qt::black;
    });
    row("white on white", false, {Reason::Contrast}, [](qr::Style &style) { style.color = Qt::white; });
    row("pale end of a gradient", true, {Reason::Contrast}, [](qr::Style &style) {
        style.fill = qr::Fill::Vertical;
        style.color2 = QColor(0xA0, 0xA0, 0xA0);
    });
    row("no margin", true, {Reason::Margin}, [](qr::Style &style) { style.margin = 0; });
    row("no background", true, {Reason::SeeThrough}, [](qr::Style &style) { style.transparent = true; });
    row("large logo", false, {Reason::Logo}, [](qr::Style &style) {
        style.correction = core::QrCorrection::Low;
        style.logo.image = redLogo();
        style.logo.size = 35;
        style.logo.backSize = 50;
    });
    row("picture smaller than its modules", false, {Reason::TooSmall},
        [](qr::Style &style) { style.imageSize = 60; });
}

void TestQrDrawing::reasons()
{
    QFETCH(qr::Style, style);
    const qr::Verdict verdict = verdictOf(longText, style);
    QTEST(verdict.scans, "scans");
    QTEST(verdict.reasons, "reasons");
}

void TestQrDrawing::largestCode()
{
    qr::Style style;
    style.correction = core::QrCorrection::Low;
    style.imageSize = 185 * 4;
    const QString text = u"abcdefghijk"_s.repeated(268);
    const qr::Drawing drawing = drawingOf(text, style);
    QCOMPARE(drawing.side(), 185);
    QVERIFY(qr::reads(drawing.image(), text, 4));
}

void TestQrDrawing::otherTextIsNotRead()
{
    const QImage picture = drawingOf(u"one"_s, {}).image();
    QVERIFY(qr::reads(picture, u"one"_s, 20));
    QVERIFY(!qr::reads(picture, u"on"_s, 20));
    QVERIFY(!qr::reads({}, u"one"_s, 20));
    QImage blank = picture;
    blank.fill(Qt::white);
    QVERIFY(!qr::reads(blank, u"one"_s, 20));
}

// What is left of the size is margin, in equal parts, and no module is grey at its edges.
void TestQrDrawing::modulesOfWholePixels()
{
    qr::Style style;
    style.imageSize = 331;
    const qr::Drawing drawing = drawingOf(u"A"_s, style); // 21 modules of 11 pixels
    const QImage picture = drawing.image();
    QCOMPARE(picture.size(), QSize(331, 331));
    QCOMPARE(picture.pixelColor(49, 49), QColor(Qt::white));
    QCOMPARE(picture.pixelColor(50, 50), QColor(Qt::black));
    QCOMPARE(picture.pixelColor(50 + 7 * 11 - 1, 50), QColor(Qt::black));
    QCOMPARE(picture.pixelColor(50 + 7 * 11, 50), QColor(Qt::white));
    QVERIFY(drawing.image(28).isNull());
    style.transparent = true;
    QCOMPARE(drawingOf(u"A"_s, style).image().pixelColor(0, 0).alpha(), 0);
}

#ifdef Q_OS_LINUX
// PNG, SVG and PDF, the latter two drawn by programs of others.
void TestQrDrawing::otherDecoder()
{
    for (const QString &program : {u"ZXingReader"_s, u"rsvg-convert"_s, u"pdftoppm"_s})
        QVERIFY2(!QStandardPaths::findExecutable(program).isEmpty(),
                 qPrintable(program + " is not installed"_L1));
    QTemporaryDir folder;
    const auto run = [&](const QString &program, const QStringList &arguments) {
        QProcess process;
        process.setWorkingDirectory(folder.path());
        process.start(program, arguments);
        process.waitForFinished(60'000);
        return process.readAllStandardOutput();
    };
    const auto write = [&](const QString &name, const QByteArray &bytes) {
        QFile file(folder.filePath(name));
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(bytes), bytes.size());
    };
    qr::Style style;
    style.logo.image = redLogo();
    style.correction = core::QrCorrection::High;
    style.fill = qr::Fill::Diagonal;
    style.body = qr::BodyShape::Rounded;
    style.eyeFrame = qr::EyeShape::Rounded;
    const qr::Drawing drawing = drawingOf(longText, style);
    QVERIFY(drawing.image().save(folder.filePath(u"code.png"_s)));
    write(u"vector.svg"_s, drawing.svg());
    write(u"page.pdf"_s, drawing.pdf());
    run(u"rsvg-convert"_s, {u"-o"_s, u"svg.png"_s, u"vector.svg"_s});
    run(u"pdftoppm"_s, {u"-r"_s, u"200"_s, u"-png"_s, u"-singlefile"_s, u"page.pdf"_s, u"pdf"_s});
    for (const QString &file : {u"code.png"_s, u"svg.png"_s, u"pdf.png"_s}) {
        QVERIFY2(run(u"ZXingReader"_s, {u"-bytes"_s, file}) == longText.toUtf8(), qPrintable(file));
        const QImage picture(folder.filePath(file));
        QVERIFY2(qr::reads(picture, longText, picture.width() / drawing.side()), qPrintable(file));
    }
}
#endif

int main(int argc, char *argv[])
{
#ifndef Q_OS_WIN
    qputenv("QT_QPA_PLATFORM", "offscreen"); // the build machine may have no display
#endif
    QGuiApplication application(argc, argv);
    TestQrDrawing test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_qr_drawing.moc"
