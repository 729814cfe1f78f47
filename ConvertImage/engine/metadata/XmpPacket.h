// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

// XMP as text: what is changed in it, and the two parts that a JPEG keeps of a long one.
namespace conversion
{

// See adaptedMetadata(). Empty for what is no XMP.
//
// Nothing here uses QRegularExpression: a long text makes it take a stack of its own on each thread, and with
// this compiler the end of such a thread frees that stack after the memory that knew of it.
QByteArray adaptedXmp(const QByteArray &xmp, bool keepPlace);

// A packet of `maxBytes` at most, and its extension, to which the longest properties were moved. The packet
// names the extension by its digest.
struct SplitXmp {
    QByteArray packet; // empty: this is no XMP that can be split
    QByteArray extension;
    QByteArray digest; // MD5 of the extension, as 32 digits, A to F
};
SplitXmp splitXmp(const QByteArray &xmp, qsizetype maxBytes);

// The digest of the extension that a packet names; empty where it names none.
QByteArray extensionDigest(const QByteArray &packet);
// The two as one, without the digest; the packet as it is where they cannot be put together.
QByteArray mergedXmp(const QByteArray &packet, const QByteArray &extension);

} // namespace conversion
