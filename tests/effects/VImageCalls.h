// What is asked of vImage. The program's own functions of these names come before the device's; they note the call,
// fail when they are told to, and otherwise pass it on.
#pragma once

#import <Accelerate/Accelerate.h>

#include <cstdint>
#include <map>
#include <string>
#include <vector>

struct VImageCalls {
  /// In order: "InitWithCGImage 8/32 8194 flags 256 -> A", "Init 4x3 32 flags 0 -> B", "BoxConvolve A>B 3x3 flags 8",
  /// "MatrixMultiply A>B /256 flags 0", "CreateCGImage A flags 512". Buffers have letters in the order in which they
  /// come; passes with temporary memory have a "+".
  std::vector<std::string> calls;
  std::vector<int16_t> matrix;

  /// The error to answer, by a call's first word and how often it has come before: {"Init", 0}.
  std::map<std::pair<std::string, int>, vImage_Error> failures;
  /// Nothing is computed: a box is only noted.
  bool boxesAreOnlyNoted = false;

  /// Memory that vImage has handed out, or been given to work in, and what became of it.
  int buffersMade = 0;
  int buffersFreed = 0;
  int temporariesSeen = 0;
  int temporariesFreed = 0;
};

/// Forgets what has been, and begins to take notes.
VImageCalls& takeNotes();
