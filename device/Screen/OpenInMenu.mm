// The other apps that can open a document, on a sheet from below.
#include "Screen/Scene.h"

#import "UIKit/OpenInMenu.h"
#import "UIKit/OtherApps.h"

#include "Screen/Sheet.h"

namespace qvdevice {

void drawOpenInMenu(Scene &scene) {
  UIDocumentInteractionController *const menu = [UIDocumentInteractionController qvdevice_shown];
  if (!menu) return;
  std::vector<SheetTile> tiles;
  for (LSApplicationProxy *app in [menu qvdevice_offered])
    tiles.push_back({[app localizedName], SheetTile::Kind::kApp});
  drawSheet(scene, {.title = @"Open in", .subtitle = [[menu URL] lastPathComponent], .tiles = tiles, .rows = {}});
}

} // namespace qvdevice
