#pragma once

#import <UIKit/UIKit.h>

#include <vector>

struct Panel {
  UIImage *image;
  const char *label; // what drawText can write
};

/// The panels side by side, three in a row, each with its label below it. Large images are shown smaller. Nil without
/// memory.
UIImage *contactSheet(const std::vector<Panel> &panels);
