#include "Diagnostics.h"

#include <cstdio>

void QVSayWhy(const char *function, const char *why) { std::fprintf(stderr, "%s: %s\n", function, why); }
