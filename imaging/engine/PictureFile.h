// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QIODevice>

#include <memory>

namespace imaging
{

// A picture file that is open for reading, for a decoder. PNG files are given from memory, and refused (null)
// when one of their chunks claims more bytes than the file has: Qt's reader asks the file for its size with
// every byte of some chunks, and allocates what a chunk claims before it reads, up to two gigabytes for a
// file of fifty bytes. Any thread.
std::unique_ptr<QIODevice> guardedPicture(std::unique_ptr<QIODevice> file);

} // namespace imaging
