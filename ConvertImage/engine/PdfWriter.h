// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "ConvertImage/engine/Options.h"

#include <QIODevice>
#include <QSize>

#include <memory>

class QPainter;
class QPdfWriter;

namespace conversion
{

// The box that images are fitted into, in dots: that of A4, whatever the paper size. On smaller sheets an
// image may be cut off, see cutOffOn().
QSize pdfBox(int logicalDpiX, int logicalDpiY);

// The size of an image scaled up or down to fit the box; keeps the aspect ratio apart from rounding. Empty
// for an empty image.
QSize pdfImageSize(const QSize &picture, const QSize &box);

// Whether part of the box lies outside of this paper.
bool cutOffOn(PaperSize paper);

// A document with one page per image.
class PdfDocument
{
public:
    PdfDocument(QIODevice &device, PaperSize paper);
    ~PdfDocument();

    // Adds a page; it is blank if the image is null. Returns an empty string, or the reason of a failure.
    QString addPage(const QImage &picture);
    // Finishes the document. False if a write failed.
    bool finish();

private:
    class Output;

    std::unique_ptr<Output> m_output;
    std::unique_ptr<QPdfWriter> m_writer;
    std::unique_ptr<QPainter> m_painter;
    QSize m_box;
    bool m_isFirst = true;
};

} // namespace conversion
