// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imaging/engine/Examination.h"
#include "platform/PipedProcess.h"

#include <QByteArray>
#include <QImage>
#include <QString>

#include <optional>

// The protocol between the application and the decoder. Both are built together and run on one machine, so
// numbers are sent in their in-memory form; a decoder of another build is recognised by its greeting.
//
//     decoder      greeting, once
//     application  request
//     decoder      Needs and the size of the decoded image in bytes     (at most once)
//     application  one byte: continue
//     decoder      Done and the result; Failed; or, for Wish::Source only, TooLarge
//
// A decoder may have been compromised by a malicious file: every number it sends is checked before use.
namespace decoder
{

inline constexpr quint32 greeting = 0x4c4b4434; // "LKD4"; changes with the messages

enum class Wish : quint8 {
    Examine, // an imaging::Examination
    Picture, // the picture itself, for the screen
    Source   // the image as stored, for a conversion
};
enum class Reply : quint8 { Failed, Needs, Done, TooLarge };

struct Request {
    Wish wish = Wish::Examine;
    QString path;
};

// As imaging::LoadedImage, 32 bits per pixel.
struct Picture {
    QByteArray format;
    QImage image;
};

// Limit for both sides of an examination's thumbnail; imaging::ThumbnailSpool stores no larger ones.
inline constexpr int maxThumbnailSide = 1024;

// All of these return false or nullopt if the connection has ended or the data is invalid.
bool writeRequest(platform::ByteChannel &to, const Request &request);
std::optional<Request> readRequest(platform::ByteChannel &from);
bool writeExamination(platform::ByteChannel &to, const imaging::Examination &examination);
std::optional<imaging::Examination> readExamination(platform::ByteChannel &from);
bool writePicture(platform::ByteChannel &to, const Picture &picture);
std::optional<Picture> readPicture(platform::ByteChannel &from);

// The same for Wish::Source: with colour table or up to 16 bits per channel, resolution and colour profile.
// CMYK is converted to RGB, using the profile if there is one.
bool writeSource(platform::ByteChannel &to, const Picture &picture);
std::optional<Picture> readSource(platform::ByteChannel &from);

template <class Number>
bool writeNumber(platform::ByteChannel &to, Number number)
{
    return to.write(&number, sizeof number);
}
template <class Number>
std::optional<Number> readNumber(platform::ByteChannel &from)
{
    Number number{};
    return from.read(&number, sizeof number) ? std::optional(number) : std::nullopt;
}

} // namespace decoder
