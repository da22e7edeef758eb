#pragma once

#import <UIKit/UIKit.h>

/// A picture to try effects on: a sky, hills, full colours, hard edges and fine lines. Nil without memory.
UIImage *samplePicture(void);
