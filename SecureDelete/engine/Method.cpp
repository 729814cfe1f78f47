// SPDX-License-Identifier: GPL-3.0-or-later
#include "SecureDelete/engine/Method.h"

#include <algorithm>
#include <array>
#include <new>

namespace securedelete
{

namespace
{

using Content = Pass::Content;

Pass gutmannPass(int pass)
{
    // Only the first byte of the published three-byte patterns: this method is defined that way here.
    static constexpr std::array<quint8, 27> fixed{0x55, 0xAA, 0x92, 0x49, 0x24, 0x00, // passes 5 to 10
                                                  0x11, 0x22, 0x33, 0x44, 0x55, 0x66, 0x77, 0x88,
                                                  0x99, 0xAA, 0xBB, 0xCC, 0xDD, 0xEE, 0xFF, // to 25
                                                  0x92, 0x49, 0x24, 0x6D, 0xB6, 0xDB};      // to 31
    constexpr int firstFixed = 5;
    if (pass < firstFixed || pass >= firstFixed + static_cast<int>(fixed.size()))
        return {};
    return {Content::FixedByte, fixed[static_cast<std::size_t>(pass - firstFixed)]};
}

Pass dodPass(int pass)
{
    if (pass == 1)
        return {Content::RandomByte};
    return pass == 2 ? Pass{Content::ComplementOfRandomByte} : Pass{};
}

// Seeds the passes of this method from the clock and the previous byte.
quint32 dodSeed(int pass, quint32 seconds, quint8 lastByte)
{
    switch (pass) {
    case 1:
        return seconds + 100 + lastByte;
    case 2:
        return seconds + lastByte;
    case 3:
        return 5194U - lastByte + seconds;
    default:
        return seconds + 48 + lastByte;
    }
}

} // namespace

int passCount(Method method, int randomPasses)
{
    switch (method) {
    case Method::Gutmann:
        return 35;
    case Method::Dod7:
        return 7;
    case Method::Dod3:
        return 3;
    case Method::Random:
        break;
    }
    return std::max(randomPasses, 1);
}

Pass passOf(Method method, int pass)
{
    switch (method) {
    case Method::Gutmann:
        return gutmannPass(pass);
    case Method::Dod7:
    case Method::Dod3:
        return dodPass(pass);
    case Method::Random:
        break;
    }
    return {};
}

PassBuffers::PassBuffers(Randomness &randomness, Allocate allocate)
    : m_randomness(randomness),
      m_allocate(std::move(allocate))
{
}

const char *PassBuffers::data(Method method, int pass)
{
    Buffers &buffers = m_buffers[static_cast<int>(method)];
    if (method == Method::Random) {
        if (buffers.empty())
            buffers.push_back(newBuffer());
        m_randomness.seed(m_randomness.seconds());
        fill(buffers[0].get(), {});
        return buffers[0].get();
    }
    if (buffers.empty()) {
        if (method == Method::Gutmann)
            buildGutmann();
        else
            buildDod(method);
    }
    return buffers[static_cast<std::size_t>(pass - 1)].get();
}

std::shared_ptr<char[]> PassBuffers::newBuffer()
{
    std::shared_ptr<char[]> buffer = m_allocate(size);
    if (!buffer)
        throw std::bad_alloc();
    return buffer;
}

void PassBuffers::buildGutmann()
{
    Buffers built;
    m_randomness.seed(m_randomness.seconds());
    for (int pass = 1; pass <= passCount(Method::Gutmann, 1); ++pass) {
        built.push_back(newBuffer());
        fill(built.back().get(), gutmannPass(pass));
    }
    m_buffers[static_cast<int>(Method::Gutmann)] = std::move(built);
}

void PassBuffers::buildDod(Method method)
{
    Buffers built;
    for (int pass = 1; pass <= passCount(method, 1); ++pass) {
        built.push_back(newBuffer());
        m_randomness.seed(dodSeed(pass, m_randomness.seconds(), m_lastByte));
        fill(built.back().get(), dodPass(pass));
    }
    m_buffers[static_cast<int>(method)] = std::move(built);
}

void PassBuffers::fill(char *buffer, const Pass &pass)
{
    switch (pass.content) {
    case Content::RandomBytes:
        std::generate_n(buffer, size, [this] { return static_cast<char>(m_randomness.byte()); });
        break;
    case Content::FixedByte:
        std::fill_n(buffer, size, static_cast<char>(pass.byte));
        break;
    case Content::RandomByte:
        std::fill_n(buffer, size, static_cast<char>(m_randomness.byte()));
        break;
    case Content::ComplementOfRandomByte:
        std::fill_n(buffer, size, static_cast<char>(~m_randomness.byte()));
        break;
    }
    m_lastByte = static_cast<quint8>(buffer[size - 1]);
}

} // namespace securedelete
