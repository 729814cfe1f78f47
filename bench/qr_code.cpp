// SPDX-License-Identifier: GPL-3.0-or-later

// From a key press to the preview on the screen while a text grows by single letters, beside what encoding
// alone takes; and the longest stall of the interface while the largest code with a logo and rounded shapes
// is typed, read back and copied.

#include "QRCode/Preview.h"
#include "QRCode/QrCodeGenForm.h"
#include "QRCode/StylePanel.h"
#include "bench/Heartbeat.h"
#include "core/QrEncoder.h"

#include <QComboBox>
#include <QKeyEvent>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QTemporaryDir>
#include <QToolButton>

using bench::Heartbeat, bench::measured, bench::settle, bench::spin;
using qr::StylePanel;

namespace
{

constexpr int keyTotal = 100;

// Says when the code of a text of so many characters was painted.
class Painted : public QObject
{
public:
    explicit Painted(QrCodeGenForm &form) : m_preview(form.findChild<QRCodePreview *>())
    {
        m_preview->installEventFilter(this);
    }
    void await(qsizetype length)
    {
        m_end = QStringLiteral(" %1 characters").arg(length);
        m_done = false;
        while (!m_done)
            QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    }
    bool eventFilter(QObject *, QEvent *event) override
    {
        m_done = m_done || (event->type() == QEvent::Paint && m_preview->facts().endsWith(m_end));
        return false;
    }

private:
    QRCodePreview *m_preview;
    QString m_end;
    bool m_done = false;
};

QString words(int length)
{
    return QStringLiteral("A text of words, as people write it. ").repeated(100).left(length);
}

// Milliseconds, one for each key.
std::vector<double> typeKeys(QrCodeGenForm &form, QPlainTextEdit *text)
{
    Painted painted(form);
    std::vector<double> times;
    for (int i = 0; i < keyTotal; ++i) {
        spin(20); // a fast typist gives it more
        times.push_back(1000 * bench::seconds([&] {
                            QKeyEvent press(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier, QStringLiteral("a"));
                            QApplication::sendEvent(text, &press);
                            painted.await(text->toPlainText().size());
                        }));
    }
    return times;
}

void keyToPreview(QrCodeGenForm &form, QPlainTextEdit *text, int length)
{
    text->setPlainText(words(length - keyTotal / 2));
    text->moveCursor(QTextCursor::End);
    spin(settle);
    const Heartbeat heart; // wakes spin()
    const double work = bench::workDone();
    std::vector<double> times = typeKeys(form, text);
    const std::string what = std::to_string(length) + " characters, ";
    bench::report(what + "work of the interface thread a key", (bench::workDone() - work) / keyTotal, "ms");
    bench::report(what + "key to preview, median", bench::median(times), "ms");
    std::ranges::sort(times);
    bench::report(what + "key to preview, slowest of " + std::to_string(keyTotal), times.back(), "ms");
    std::vector<double> bare;
    for (int i = 0; i < keyTotal; ++i)
        bare.push_back(
            1000 * bench::seconds([&] { core::encodeQr(text->toPlainText(), core::QrCorrection::Medium); }));
    bench::report(what + "encoding alone, median", bench::median(bare), "ms");
}

void largestCode(QrCodeGenForm &form, QPlainTextEdit *text)
{
    QTemporaryDir folder;
    QImage logo(800, 600, QImage::Format_RGB32);
    logo.fill(Qt::darkRed);
    logo.save(folder.filePath(QStringLiteral("logo.png")));
    form.findChild<StylePanel *>()->setLogo(folder.filePath(QStringLiteral("logo.png")));
    form.findChild<QComboBox *>(QStringLiteral("correctionComboBox"))->setCurrentIndex(3);
    form.findChild<QComboBox *>(QStringLiteral("bodyShapeComboBox"))->setCurrentIndex(1);
    form.findChild<QSpinBox *>(QStringLiteral("imageSizeSpinBox"))->setValue(4000);
    spin(settle);
    Heartbeat heart;
    text->setPlainText(words(1200));
    spin(5000);
    measured("largest code, shown and read back", heart);
    keyToPreview(form, text, 1200);
    spin(settle);
    heart.take();
    form.findChild<QPushButton *>(QStringLiteral("copyButton"))->click();
    while (form.isBusy())
        QApplication::processEvents(QEventLoop::WaitForMoreEvents);
    spin(settle);
    measured("largest code, copied as 4000 pixels", heart);
}

} // namespace

int main(int argc, char **argv)
{
    QApplication application(argc, argv);
    QrCodeGenForm form;
    form.resize(1200, 800);
    form.show();
    form.findChild<QToolButton *>(QStringLiteral("toolButtonText"))->click();
    auto *text = form.findChild<QPlainTextEdit *>(QStringLiteral("textPlainTextEdit"));
    text->setFocus();
    spin(settle);
    keyToPreview(form, text, 300);
    largestCode(form, text);
    return 0;
}
