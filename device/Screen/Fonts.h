#pragma once

#include <cairo.h>

#include <memory>
#include <string>
#include <vector>

namespace qvdevice {

enum class Weight { kRegular, kMedium, kSemibold, kBold };

/// Letters of one kind, and how large, in points.
struct Font {
  double size = 17;
  Weight weight = Weight::kRegular;
};

/// The letters of a line, from left to right; each piece is of one typeface.
struct Line {
  struct Piece {
    std::shared_ptr<cairo_scaled_font_t> font;
    std::vector<cairo_glyph_t> glyphs; // from the start of the line, on its base line
  };
  std::vector<Piece> pieces;
  double width = 0;
};

/// How far letters reach above the base line and below it.
struct Extent {
  double above = 0;
  double below = 0;
};

/// Sets one line. The typefaces are named files, so that a picture does not depend on what else a machine has; what the
/// first lacks comes from the second, and what both lack is drawn as a box. Nothing is joined or turned: of scripts
/// that need that, the letters stand one by one. The typefaces must be there. Main thread.
Line setLine(const std::u32string& text, const Font& font);
Extent extentOf(const Font& font);

/// The file of the first typeface that is not there; empty when all are.
std::string missingTypeface();

} // namespace qvdevice
