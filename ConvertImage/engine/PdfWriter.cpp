// SPDX-License-Identifier: GPL-3.0-or-later
#include "ConvertImage/engine/PdfWriter.h"

#include "ConvertImage/engine/ImageWriter.h"

#include <QPainter>
#include <QPdfWriter>

#include <algorithm>

namespace conversion
{

namespace
{

constexpr int marginDots = 380;    // both sides together
constexpr double sheetWidth = 8.3; // A4, in inches
constexpr double sheetHeight = 11.7;

QPageSize::PageSizeId pageSizeOf(PaperSize paper)
{
    switch (paper) {
    case PaperSize::Letter:
        return QPageSize::Letter;
    case PaperSize::A4:
        return QPageSize::A4;
    case PaperSize::A5:
        return QPageSize::A5;
    case PaperSize::Legal:
        return QPageSize::Legal;
    case PaperSize::Executive:
        break;
    }
    return QPageSize::Executive;
}

} // namespace

QSize pdfBox(int logicalDpiX, int logicalDpiY)
{
    return {static_cast<int>(logicalDpiX * sheetWidth - marginDots),
            static_cast<int>(logicalDpiY * sheetHeight - marginDots)};
}

QSize pdfImageSize(const QSize &picture, const QSize &box)
{
    if (picture.isEmpty() || box.isEmpty())
        return {};
    const double width = picture.width();
    const double height = picture.height();
    const double shareX = width / box.width();
    const double shareY = height / box.height();
    if (shareX < 1.0 && shareY < 1.0) {
        const double factor = std::min(box.width() / width, box.height() / height);
        return {static_cast<int>(width * factor), static_cast<int>(height * factor)};
    }
    const double divisor = std::max(shareX, shareY);
    return {static_cast<int>(width / divisor), static_cast<int>(height / divisor)};
}

bool cutOffOn(PaperSize paper)
{
    // The page area inside QPdfWriter's default margins of 10 points.
    constexpr int dotsPerInch = 1200;
    constexpr double margins = 20.0;
    const QSizeF points =
        QPageSize::definitionSize(pageSizeOf(paper)) *
        (QPageSize(pageSizeOf(paper)).definitionUnits() == QPageSize::Inch ? 72.0 : 72.0 / 25.4);
    const QSize box = pdfBox(dotsPerInch, dotsPerInch);
    return box.width() > (points.width() - margins) / 72.0 * dotsPerInch ||
           box.height() > (points.height() - margins) / 72.0 * dotsPerInch;
}

// QPdfWriter does not check whether its writes succeed.
class PdfDocument::Output : public QIODevice
{
public:
    explicit Output(QIODevice &device) : m_device(device)
    {
        open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    }

    bool failed() const { return m_failed; }

protected:
    qint64 readData(char *, qint64) override { return -1; }
    qint64 writeData(const char *data, qint64 length) override
    {
        m_failed = m_failed || m_device.write(data, length) != length;
        return length;
    }

private:
    QIODevice &m_device;
    bool m_failed = false;
};

PdfDocument::PdfDocument(QIODevice &device, PaperSize paper)
    : m_output(std::make_unique<Output>(device)),
      m_writer(std::make_unique<QPdfWriter>(m_output.get()))
{
    m_writer->setPageSize(QPageSize(pageSizeOf(paper)));
    m_box = pdfBox(m_writer->logicalDpiX(), m_writer->logicalDpiY());
    m_painter = std::make_unique<QPainter>();
}

PdfDocument::~PdfDocument() = default;

QString PdfDocument::addPage(const QImage &picture)
{
    if (m_isFirst ? !m_painter->begin(m_writer.get()) : !m_writer->newPage())
        return QStringLiteral("The document cannot be written");
    m_isFirst = false;
    if (!picture.isNull())
        m_painter->drawImage(QRect({0, 0}, pdfImageSize(picture.size(), m_box)),
                             preparedFor(Target::Pdf, picture));
    return m_output->failed() ? QStringLiteral("The document cannot be written") : QString();
}

bool PdfDocument::finish()
{
    return m_painter->isActive() && m_painter->end() && !m_output->failed();
}

} // namespace conversion
