// SPDX-License-Identifier: GPL-3.0-or-later
//
// Destructors of thread_local objects run before the memory of these objects goes.
//
// With GCC for Windows both hang on keys of winpthreads, and the keys of a thread end in the order in which
// the process made them. Whoever first touches a thread_local variable makes the key of the memory, and so
// the destructors, whose key comes second, would read freed memory: Qt keeps a stack of its regular
// expressions that way in every thread that matches one. What such a destructor breaks leaves a lock behind,
// on which the end of the process waits for ever. So the key of the destructors is made first, before any
// other constructor of the program runs.
#if defined(__MINGW32__)

extern "C" int __cxa_thread_atexit(void (*destructor)(void *), void *object, void *module);
extern "C" void *__dso_handle;

namespace
{

struct DestructorsFirst {
    DestructorsFirst()
    {
        __cxa_thread_atexit([](void *) {}, nullptr, &__dso_handle);
    }
};

constexpr int beforeAllOthers = 101; // the first priority that is not the compiler's own
__attribute__((init_priority(beforeAllOthers))) const DestructorsFirst destructorsFirst;

} // namespace

#endif
