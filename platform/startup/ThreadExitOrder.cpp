// SPDX-License-Identifier: GPL-3.0-or-later
//
// Makes destructors of thread_local objects run before the memory of these objects is freed.
//
// With GCC for Windows both are implemented by keys of winpthreads, and a thread's keys are cleaned up in the
// order in which the process created them. The first access to a thread_local variable creates the key for
// the memory. The destructors, whose key is created later, would then read freed memory: Qt, for example,
// keeps a regular expression stack per thread in this way. A destructor that crashes may leave a lock held,
// on which the process then waits forever at exit. So the key of the destructors is created first, before any
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
