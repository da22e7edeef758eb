#pragma once

#include <vector>

#include "Screen/Scene.h"

namespace qvdevice {

/// Something to choose that is shown as a picture with a name below.
struct SheetTile {
  enum class Kind { kSystem, kApp };
  NSString *title;
  Kind kind;
};

/// What the user chooses from.
struct Sheet {
  NSString *title;
  NSString *subtitle;
  /// Side by side, as many as there is room for.
  std::vector<SheetTile> tiles;
  /// Below, one a line.
  std::vector<NSString *> rows;
};

/// Darkens the screen and lays the sheet over its lower part; on a pad, in its middle.
void drawSheet(Scene &scene, const Sheet &sheet);

} // namespace qvdevice
