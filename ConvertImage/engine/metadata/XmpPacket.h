// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QByteArray>

// XMP as text: edits, and the split into the two parts in which a JPEG stores a long packet.
namespace conversion
{

// See adaptedMetadata(). Empty if it is not XMP.
// Avoids QRegularExpression: for a long text it allocates a JIT stack per thread, and with this compiler the
// thread's exit frees that stack after the allocator that owns it.
QByteArray adaptedXmp(const QByteArray &xmp, bool keepPlace);

// A packet of at most `maxBytes`, and its extension with the longest properties. The packet references the
// extension by its digest.
struct SplitXmp {
    QByteArray packet; // empty if it cannot be split or is not XMP
    QByteArray extension;
    QByteArray digest; // MD5 of the extension, 32 upper-case hex digits
};
SplitXmp splitXmp(const QByteArray &xmp, qsizetype maxBytes);

// The digest of the extension that a packet references; empty if there is none.
QByteArray extensionDigest(const QByteArray &packet);
// Merges both, without the digest; returns the packet unchanged if that fails.
QByteArray mergedXmp(const QByteArray &packet, const QByteArray &extension);

} // namespace conversion
