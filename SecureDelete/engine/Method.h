// SPDX-License-Identifier: GPL-3.0-or-later
#pragma once

#include <QtGlobal>

#include <cstddef>
#include <functional>
#include <memory>
#include <vector>

// Destroys files: overwrites them by a method, takes their names and removes them.
namespace securedelete
{

// The numbers are those of the stored setting: they do not rise with the number of passes.
enum class Method { Gutmann = 0, Dod7 = 1, Dod3 = 2, Random = 3 };

constexpr int maxRandomPasses = 99;

// `randomPasses` counts for Method::Random only; at least one pass.
int passCount(Method method, int randomPasses);

// What a pass writes.
struct Pass {
    enum class Content { RandomBytes, RandomByte, ComplementOfRandomByte, FixedByte };
    Content content = Content::RandomBytes;
    quint8 byte = 0; // of FixedByte
};

// `pass` is 1 to passCount().
Pass passOf(Method method, int pass);

// The generator of the C library and the clock that seeds it, so that a test can follow both. The generator's
// state belongs to the thread: it is seeded on the thread that draws from it.
class Randomness
{
public:
    virtual ~Randomness() = default;
    virtual quint32 seconds() = 0; // since 1970
    virtual void seed(quint32 value) = 0;
    virtual quint8 byte() = 0; // the low byte of one call
};

// What the passes write, 64 KiB each. The passes of the fixed methods are filled once and serve every chunk
// and file of the process after that, also when the method is changed meanwhile: their random bytes are the
// same for all. Those of the random method are filled anew for every pass of every chunk, seeded with the
// second, so that two passes within one second write the same. One thread at a time.
class PassBuffers
{
public:
    static constexpr std::size_t size = 65'536;

    // Memory of that size, or null.
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
    quint8 m_lastByte = 0; // of the buffer that was filled last
};

} // namespace securedelete
