// SPDX-License-Identifier: GPL-3.0-or-later
#include "QRCode/engine/Batch.h"
#include "tests/fuzz/FuzzText.h"

#include <QSet>

using tests::require;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QByteArray bytes(reinterpret_cast<const char *>(data), static_cast<qsizetype>(size));
    QSet<QString> names;
    int line = 0;
    for (const qr::BatchRow &row : qr::parseBatch(bytes).rows) {
        require(!row.text.isEmpty(), "rows without a text are left out");
        require(row.line > line, "rows begin on lines of their own");
        line = row.line;
        require(!row.name.isEmpty() && row.name.size() < 100, "names are short");
        require(!row.name.contains(u'/') && !row.name.contains(u'\\') && !row.name.contains(u':'),
                "names are no paths");
        require(!row.name.endsWith(u'.') && !row.name.endsWith(u' '), "Windows keeps the end of a name");
        names.insert(row.name.toCaseFolded());
    }
    require(names.size() == qr::parseBatch(bytes).rows.size(), "no two rows have the same name");
    return 0;
}
