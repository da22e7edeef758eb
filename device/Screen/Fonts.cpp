#include "Screen/Fonts.h"

#include <cairo-ft.h>
#include <ft2build.h>
#include FT_FREETYPE_H

#include <array>
#include <map>
#include <string>

namespace qvdevice {

namespace {

// Where Debian's packages fonts-inter and fonts-dejavu-core put them.
constexpr std::array kFiles{
    "/usr/share/fonts/opentype/inter/Inter-Regular.otf", "/usr/share/fonts/opentype/inter/Inter-Medium.otf",
    "/usr/share/fonts/opentype/inter/Inter-SemiBold.otf", "/usr/share/fonts/opentype/inter/Inter-Bold.otf"};
constexpr const char* kOtherScripts = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

/// A typeface, kept as long as the process.
struct Face {
  FT_Face letters = nullptr;
  cairo_font_face_t* drawn = nullptr;
  std::map<double, std::shared_ptr<cairo_scaled_font_t>> sizes;

  bool has(char32_t letter) const { return FT_Get_Char_Index(letters, letter) != 0; }
};

FT_Library freeType() {
  static const FT_Library library = [] {
    FT_Library made = nullptr;
    FT_Init_FreeType(&made);
    return made;
  }();
  return library;
}

Face& face(const char* file) {
  static std::map<std::string, Face>& faces = *new std::map<std::string, Face>;
  Face& found = faces[file];
  if (found.drawn == nullptr && FT_New_Face(freeType(), file, 0, &found.letters) == 0) {
    found.drawn = cairo_ft_font_face_create_for_ft_face(found.letters, 0);
  }
  return found;
}

const std::shared_ptr<cairo_scaled_font_t>& scaled(Face& face, double size) {
  std::shared_ptr<cairo_scaled_font_t>& found = face.sizes[size];
  if (!found) {
    cairo_matrix_t letters;
    cairo_matrix_t points;
    cairo_matrix_init_scale(&letters, size, size);
    cairo_matrix_init_identity(&points);
    cairo_font_options_t* const options = cairo_font_options_create();
    cairo_font_options_set_hint_style(options, CAIRO_HINT_STYLE_NONE);
    cairo_font_options_set_hint_metrics(options, CAIRO_HINT_METRICS_OFF);
    cairo_font_options_set_antialias(options, CAIRO_ANTIALIAS_GRAY);
    found.reset(cairo_scaled_font_create(face.drawn, &letters, &points, options), &cairo_scaled_font_destroy);
    cairo_font_options_destroy(options);
  }
  return found;
}

Face& faceOf(const Font& font) { return face(kFiles.at(static_cast<std::size_t>(font.weight))); }

} // namespace

Line setLine(const std::u32string& text, const Font& font) {
  Face& usual = faceOf(font);
  Line line;
  for (const char32_t letter : text) {
    Face& other = usual.has(letter) ? usual : face(kOtherScripts);
    Face& chosen = other.has(letter) ? other : usual;
    const auto& drawn = scaled(chosen, font.size);
    if (line.pieces.empty() || line.pieces.back().font != drawn) {
      line.pieces.push_back({drawn, {}});
    }
    cairo_glyph_t glyph{FT_Get_Char_Index(chosen.letters, letter), line.width, 0};
    line.pieces.back().glyphs.push_back(glyph);
    cairo_text_extents_t extents;
    cairo_scaled_font_glyph_extents(drawn.get(), &glyph, 1, &extents);
    line.width += extents.x_advance;
  }
  return line;
}

Extent extentOf(const Font& font) {
  cairo_font_extents_t extents;
  cairo_scaled_font_extents(scaled(faceOf(font), font.size).get(), &extents);
  return {extents.ascent, extents.descent};
}

std::string missingTypeface() {
  for (const char* const file : kFiles) {
    if (face(file).drawn == nullptr) {
      return file;
    }
  }
  return face(kOtherScripts).drawn == nullptr ? kOtherScripts : "";
}

} // namespace qvdevice
