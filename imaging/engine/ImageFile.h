// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIODevice>

#include <memory>

namespace imaging
{

// Wraps an image file for a decoder. PNG files are read into memory, and rejected (null) if a chunk claims
// more bytes than the file has: Qt's reader queries the file size for every byte of some chunks, and
// allocates the claimed size before reading, up to two gigabytes for a file of fifty bytes. Any thread.
std::unique_ptr<QIODevice> guardedImage(std::unique_ptr<QIODevice> file);

} // namespace imaging
