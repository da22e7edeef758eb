// Counts how often methods are called, for whoever started the process: the counters lie in memory that is shared with
// it (QVDEVICE_COUNTERS_FD), so that they are there however the process ends. What counts is a few instructions that
// leave all registers and the stack as they are and go on to the method: nobody finds a frame of it, or another return
// address than without it.
#pragma once

#include <objc/objc.h>

#include <cstdint>

namespace qvdevice {

/// What is called in the place of an implementation, and the number of its counter.
struct CountedCall {
  IMP implementation;
  int counter;
};

/// Counts from now on in memory of that descriptor, of at least 64 KiB, which may be closed then: a number of 64 bits a
/// counter. False, with errno, when it cannot be mapped.
bool countCallsIn(int descriptor);

/// Whether somebody wants calls counted.
bool areCallsCounted();

/// Gives the implementation a counter. Without one (-1) it stays what it is: nobody wants it, or all are taken. Not on
/// two threads at once.
CountedCall counted(IMP implementation);

/// The implementation that is counted; any other as it is.
IMP uncounted(IMP implementation);

/// Of the calls that were counted on this thread, the last one that came with this return address and, when the caller
/// goes on, this stack pointer: its counter, or -1. A method that calls another in its last act is found by this,
/// though it has left no frame.
int counterOfCall(std::uintptr_t returnAddress, std::uintptr_t stackPointer);

} // namespace qvdevice
