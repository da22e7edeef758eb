#pragma once

#import <UIKit/UIKit.h>

#include "Screen/Canvas.h"

namespace qvdevice {

/// The screen that is being drawn.
struct Scene {
  Canvas &canvas;
  CGSize size;
  bool isPad;
  /// What an extension's own process has drawn of itself; nil for one that gave no picture.
  UIImage *extension;

  bool isLandscape() const { return size.width > size.height; }
  CGRect bounds() const { return CGRectMake(0, 0, size.width, size.height); }
};

/// How much of the screen's lower edge a phone without a button keeps for itself.
inline constexpr CGFloat kHomeArea = 34;

/// Draws a view with all that is in it, in the coordinates of what it lies in.
void drawView(Scene &scene, UIView *view);

// One kind of view each, in the view's own coordinates and without its background.
void drawLabel(Scene &scene, UILabel *label);
void drawButton(Scene &scene, UIButton *button);
void drawTextField(Scene &scene, UITextField *field);
void drawVisualEffect(Scene &scene, UIVisualEffectView *view);

// What a controller shows that its views do not, above them.
void drawNavigationBar(Scene &scene, UINavigationController *controller);
void drawShareSheet(Scene &scene, UIActivityViewController *sheet);
void drawRemoteView(Scene &scene, CGRect rect);

// The system's own, in the coordinates of the screen.
void drawStatusBar(Scene &scene);
void drawHomeIndicator(Scene &scene);
void drawHomeScreen(Scene &scene);
void drawKeyboard(Scene &scene);
void drawEditMenu(Scene &scene);
void drawOpenInMenu(Scene &scene);

} // namespace qvdevice
