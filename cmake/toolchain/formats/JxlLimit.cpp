// SPDX-License-Identifier: GPL-3.0-or-later
// Linked into the JPEG XL plugin in front of libjxl (see --wrap in CMakeLists.txt): its decoder gets a memory
// manager with an upper bound. The plugin itself asks QImageReader's limit only for the finished picture, and
// what the decoder keeps beside it depends on the file.
#include <QImageReader>

#include <jxl/decode.h>

#include <atomic>
#include <cstdlib>
#include <map>
#include <memory>
#include <mutex>

extern "C" JxlDecoder *__real_JxlDecoderCreate(const JxlMemoryManager *manager);
extern "C" void __real_JxlDecoderDestroy(JxlDecoder *decoder);

namespace
{

// A lossless picture takes four bytes a sample while it is decoded, which is four times what comes out.
constexpr size_t timesTheLimit = 4;

// Before every block stands its size; 16 bytes keep the block aligned.
constexpr size_t headBytes = 16;

struct Budget {
    size_t limit;
    std::atomic<size_t> used = 0;
};

void *take(void *opaque, size_t size)
{
    auto *budget = static_cast<Budget *>(opaque);
    if (size > budget->limit)
        return nullptr;
    if (budget->used.fetch_add(size) > budget->limit - size) {
        budget->used -= size;
        return nullptr;
    }
    auto *block = static_cast<char *>(std::malloc(size + headBytes));
    if (!block) {
        budget->used -= size;
        return nullptr;
    }
    *reinterpret_cast<size_t *>(block) = size;
    return block + headBytes;
}

void giveBack(void *opaque, void *address)
{
    if (!address)
        return;
    char *block = static_cast<char *>(address) - headBytes;
    static_cast<Budget *>(opaque)->used -= *reinterpret_cast<size_t *>(block);
    std::free(block);
}

std::mutex mutex;
std::map<JxlDecoder *, std::unique_ptr<Budget>> budgets;

} // namespace

extern "C" JxlDecoder *__wrap_JxlDecoderCreate(const JxlMemoryManager *)
{
    const auto limit = static_cast<size_t>(QImageReader::allocationLimit()) << 20;
    if (limit == 0)
        return __real_JxlDecoderCreate(nullptr);
    auto budget = std::make_unique<Budget>(timesTheLimit * limit);
    const JxlMemoryManager manager = {budget.get(), take, giveBack};
    JxlDecoder *decoder = __real_JxlDecoderCreate(&manager);
    if (decoder) {
        const std::lock_guard lock(mutex);
        budgets[decoder] = std::move(budget);
    }
    return decoder;
}

// The budget outlives the decoder, which gives back its own memory last.
extern "C" void __wrap_JxlDecoderDestroy(JxlDecoder *decoder)
{
    std::unique_ptr<Budget> budget;
    {
        const std::lock_guard lock(mutex);
        if (auto found = budgets.extract(decoder))
            budget = std::move(found.mapped());
    }
    __real_JxlDecoderDestroy(decoder);
}
