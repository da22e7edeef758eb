// What EmptyApp reports to StartUp.
#pragma once

#include <time.h>

struct BenchReport {
  struct timespec ready;     // by the clock that both processes read
  struct timespec processor; // the processor time that the app had taken by then
};
