// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include "imaging/engine/Examination.h"
#include "platform/PipedProcess.h"

#include <QByteArray>
#include <QImage>
#include <QString>

#include <optional>

// What the application and the decoder say to each other. Both are built together and run on one machine, so
// that numbers travel as they lie in memory; a decoder of another build is told by its greeting.
//
//     decoder      greeting, once
//     application  request
//     decoder      Needs and the bytes that the picture will take     (once, or not at all)
//     application  one byte: go on
//     decoder      Done and what was asked for; Failed; or, to Wish::Source only, TooLarge
//
// A decoder has read a hostile file and may say anything: every number that comes from it is checked before
// it is used.
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
