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

// The box that pictures are fitted into, in dots: that of an A4 sheet, whatever the paper. On smaller sheets
// a picture may be cut off, see cutOffOn().
QSize pdfBox(int logicalDpiX, int logicalDpiY);

// A picture fitted into the box, enlarged or made smaller, its shape kept but for what rounding takes. Empty
// for an empty picture.
QSize pdfPictureSize(const QSize &picture, const QSize &box);

// Whether a part of the box lies beyond what this paper has room for.
bool cutOffOn(PaperSize paper);

// One document, a page for each picture.
class PdfDocument
{
public:
    PdfDocument(QIODevice &device, PaperSize paper);
    ~PdfDocument();

    // The next page; empty where the picture is null. Empty, or the reason of a failure.
    QString addPage(const QImage &picture);
    // Ends the document. False when not all of it could be written.
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
