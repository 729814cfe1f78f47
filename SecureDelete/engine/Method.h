// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

// Destroys files: overwrites them with a method, renames and deletes them.
namespace securedelete
{

// Stored in the settings; the numbers are not in order of the pass count.
enum class Method { Gutmann = 0, Dod7 = 1, Dod3 = 2, Random = 3 };

constexpr int maxRandomPasses = 99;

// `randomPasses` applies to Method::Random only; returns at least 1.
int passCount(Method method, int randomPasses);

// What a pass writes.
struct Pass {
    enum class Content { RandomBytes, RandomByte, ComplementOfRandomByte, FixedByte };
    Content content = Content::RandomBytes;
    quint8 byte = 0; // for FixedByte
};

// `pass` is 1 to passCount().
Pass passOf(Method method, int pass);

// The C library's random generator and the clock that seeds it, replaceable by tests. The generator's state
// is per thread: seed and draw on the same thread.
class Randomness
{
public:
    virtual ~Randomness() = default;
    virtual quint32 seconds() = 0; // since 1970, UTC
    virtual void seed(quint32 value) = 0;
    virtual quint8 byte() = 0; // low byte of one rand() call
};

// The data of the passes, 64 KiB each. Passes of the fixed methods are generated once per process and reused
// for all chunks and files, even if the method is changed meanwhile: their random bytes are the same
// everywhere. Passes of the random method are generated anew for each pass of each chunk, seeded with the
// current second, so two passes within one second write the same data. One thread at a time.
class PassBuffers
{
public:
    static constexpr std::size_t size = 65'536;

    // Allocates that many bytes; null on failure.
    using Allocate = std::function<std::shared_ptr<char[]>(std::size_t bytes)>;
    PassBuffers(Randomness &randomness, Allocate allocate);

    // Valid until the next call. Throws std::bad_alloc.
    const char *data(Method method, int pass);

private:
    using Buffers = std::vector<std::shared_ptr<char[]>>;

    std::shared_ptr<char[]> newBuffer();
    void buildGutmann();
    void buildDod(Method method);
    void fill(char *buffer, const Pass &pass);

    Randomness &m_randomness;
    Allocate m_allocate;
    Buffers m_buffers[4];  // by method
    quint8 m_lastByte = 0; // last byte of the buffer generated last
};

} // namespace securedelete
