// The method that the benchmark hooks, and the ways in which it is hooked. It has the shape of the platform's file
// writers. C: one of the ways is written in it.
#pragma once

#include <objc/objc.h>

#ifdef __cplusplus
extern "C" {
#endif

/// The class whose objects answer to `writeFile:atomically:`; each way of hooking has a subclass of its own.
#define BENCH_WRITER "QVBenchWriter"
#define BENCH_HOOKED_BY_US "QVBenchHookedWriter"
#define BENCH_HOOKED_BY_HAND "QVBenchHandHookedWriter"

/// Exchanges the method of BENCH_HOOKED_BY_HAND with a replacement that calls through, with the runtime's functions
/// alone.
void benchHookByHand(void);

/// The same with the library's binding, of BENCH_HOOKED_BY_US.
void benchHookByUs(void);

/// How often each replacement saw a write succeed: what makes a replacement more than a jump.
extern unsigned long benchSeenByHand;
extern unsigned long benchSeenByUs;

#ifdef __cplusplus
}
#endif
