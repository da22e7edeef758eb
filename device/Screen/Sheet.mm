#include "Screen/Sheet.h"

#include <algorithm>
#include <array>

namespace qvdevice {

namespace {

constexpr CGFloat kHeader = 68, kTilesHeight = 112, kRow = 50, kMargin = 16, kRadius = 14;
constexpr CGFloat kTile = 60, kTileStep = 84, kPadWidth = 400, kWidest = 500;
constexpr std::array<Color, 5> kTileColors{Color{0.20, 0.78, 0.35}, Color{0, 0.48, 1}, Color{1, 0.62, 0.04},
                                           Color{0.35, 0.34, 0.84}, Color{1, 0.27, 0.23}};

CGRect placeOf(const Scene &scene, CGFloat width, CGFloat height) {
  const CGFloat x = (scene.size.width - width) / 2;
  if (scene.isPad) return CGRectMake(x, (scene.size.height - height) / 2, width, height);
  // A little taller than it is seen: its lower corners lie outside of the screen.
  return CGRectMake(x, scene.size.height - height - kHomeArea, width, height + kHomeArea + kRadius);
}

void drawHeader(Canvas &canvas, CGRect place, const Sheet &sheet) {
  const CGRect icon = CGRectMake(place.origin.x + kMargin, place.origin.y + 14, 40, 40);
  canvas.fill(icon, palette::kWhite, 8);
  canvas.stroke(icon, palette::kSeparator, 0.5, 8);
  for (const CGFloat y : {12.0, 18.0, 24.0})
    canvas.fill(CGRectMake(icon.origin.x + 10, icon.origin.y + y, y > 20 ? 12 : 20, 2), palette::kPlaceholder, 1);
  const CGFloat x = CGRectGetMaxX(icon) + 12, width = CGRectGetMaxX(place) - x - kMargin;
  canvas.text(sheet.title, CGRectMake(x, icon.origin.y, width, 20), {.font = {16, Weight::kSemibold}});
  canvas.text(sheet.subtitle, CGRectMake(x, icon.origin.y + 20, width, 18),
              {.font = {13}, .color = palette::kSecondaryLabel});
  canvas.hairline(place.origin.x, place.origin.y + kHeader, place.size.width);
}

void drawTile(Canvas &canvas, const SheetTile &tile, CGRect rect, std::size_t index) {
  canvas.fill(rect, kTileColors.at(index % kTileColors.size()), tile.kind == SheetTile::Kind::kApp ? 14 : kTile / 2);
  const std::u32string letters = charactersOf(tile.title, 1);
  NSString *const first =
      letters.empty() ? @"" : [[tile.title substringToIndex:letters[0] > 0xffff ? 2 : 1] uppercaseString];
  canvas.text(first, rect,
              {.font = {26, Weight::kSemibold}, .color = palette::kWhite, .alignment = Alignment::kCenter});
  canvas.text(tile.title,
              CGRectMake(CGRectGetMidX(rect) - kTileStep / 2 + 3, CGRectGetMaxY(rect) + 4, kTileStep - 6, 30),
              {.font = {11}, .alignment = Alignment::kCenter, .mostLines = 2});
}

} // namespace

void drawSheet(Scene &scene, const Sheet &sheet) {
  Canvas &canvas = scene.canvas;
  const CGFloat rows = kRow * static_cast<CGFloat>(sheet.rows.size());
  const CGFloat width = scene.isPad ? kPadWidth : std::min(scene.size.width, kWidest);
  const auto tilesInARow = static_cast<std::size_t>((width - 2 * kMargin) / kTileStep);
  const std::size_t tileRows = (sheet.tiles.size() + tilesInARow - 1) / tilesInARow;
  const CGFloat tiles = kTilesHeight * static_cast<CGFloat>(tileRows);
  const CGFloat height = kHeader + tiles + (sheet.rows.empty() ? 0 : rows + 2 * kMargin);
  const CGRect place = placeOf(scene, width, std::min(height, scene.size.height - 60));
  canvas.fill(scene.bounds(), palette::kDimming);
  canvas.fill(place, palette::kGrouped, kRadius);
  Canvas::State state(canvas);
  state.clip(place, kRadius);
  drawHeader(canvas, place, sheet);
  const CGFloat left = place.origin.x + (width - kTileStep * static_cast<CGFloat>(tilesInARow)) / 2;
  for (std::size_t index = 0; index < sheet.tiles.size(); ++index) {
    const auto column = static_cast<CGFloat>(index % tilesInARow), row = static_cast<CGFloat>(index / tilesInARow);
    drawTile(canvas, sheet.tiles[index],
             CGRectMake(left + kTileStep * column + (kTileStep - kTile) / 2,
                        place.origin.y + kHeader + kTilesHeight * row + 14, kTile, kTile),
             index);
  }
  if (sheet.rows.empty()) return;
  const CGRect list = CGRectMake(place.origin.x + kMargin, place.origin.y + kHeader + tiles + kMargin,
                                 place.size.width - 2 * kMargin, rows);
  canvas.fill(list, palette::kWhite, 10);
  CGRect line = CGRectMake(list.origin.x + kMargin, list.origin.y, list.size.width - 2 * kMargin, kRow);
  for (NSString *title : sheet.rows) {
    canvas.text(title, line, {});
    line.origin.y += kRow;
    if (CGRectGetMinY(line) < CGRectGetMaxY(list) - 1)
      canvas.hairline(line.origin.x, line.origin.y, list.size.width - kMargin);
  }
}

} // namespace qvdevice
