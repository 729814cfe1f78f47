// SPDX-License-Identifier: GPL-3.0-or-later
#include "automation/engine/WallpaperJob.h"
#include "tests/fuzz/FuzzText.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    using namespace automation;
    if (size == 0)
        return 0;
    const QByteArray bytes(reinterpret_cast<const char *>(data) + 1, static_cast<qsizetype>(size) - 1);
    const auto source = static_cast<ImageSource>(*data % 2);
    if (const auto listing = parseListing({}, source, bytes)) {
        tests::require(listing->pictures.size() <= maxDayImages, "no more than asked for");
        for (const DayImage &picture : listing->pictures) {
            tests::require(!picture.addresses.isEmpty(), "a picture has an address");
            for (const QUrl &address : picture.addresses)
                tests::require(isSecureAddress(address), "which is secure");
            tests::require(picture.title.size() <= 200 && !picture.title.contains(u'\n'), "and a title");
            for (const QChar character : picture.key)
                tests::require(character == u'-' || character.isLetterOrNumber(), "its key names a file");
        }
    }
    if (const auto to = redirected(QUrl(QStringLiteral("https://a.example/")), bytes, isSecureAddress))
        tests::require(isSecureAddress(*to), "nothing leads out of it");
    if (const auto answer = parseAnswer(bytes))
        tests::require(parseAnswer(answerText(*answer)).has_value(), "what is written can be read");
    if (const auto request = parseRequest(bytes))
        tests::require(parseRequest(requestText(*request)) == request, "what is written reads the same");
    return 0;
}
