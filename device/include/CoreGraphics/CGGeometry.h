#pragma once

#import <Foundation/Foundation.h>

// Own structures rather than Foundation's NSPoint and its like: a method's encoding spells the structure's name.
typedef struct CGPoint {
  CGFloat x;
  CGFloat y;
} CGPoint;

typedef struct CGSize {
  CGFloat width;
  CGFloat height;
} CGSize;

typedef struct CGRect {
  CGPoint origin;
  CGSize size;
} CGRect;

static inline CGPoint CGPointMake(CGFloat x, CGFloat y) {
  CGPoint point = {x, y};
  return point;
}

static inline CGSize CGSizeMake(CGFloat width, CGFloat height) {
  CGSize size = {width, height};
  return size;
}

static inline CGRect CGRectMake(CGFloat x, CGFloat y, CGFloat width, CGFloat height) {
  CGRect rect = {{x, y}, {width, height}};
  return rect;
}

static inline BOOL CGPointEqualToPoint(CGPoint a, CGPoint b) { return a.x == b.x && a.y == b.y; }
static inline BOOL CGSizeEqualToSize(CGSize a, CGSize b) { return a.width == b.width && a.height == b.height; }
static inline BOOL CGRectEqualToRect(CGRect a, CGRect b) {
  return CGPointEqualToPoint(a.origin, b.origin) && CGSizeEqualToSize(a.size, b.size);
}
static inline CGFloat CGRectGetWidth(CGRect rect) { return rect.size.width; }
static inline CGFloat CGRectGetHeight(CGRect rect) { return rect.size.height; }
static inline CGFloat CGRectGetMinX(CGRect rect) { return rect.origin.x; }
static inline CGFloat CGRectGetMinY(CGRect rect) { return rect.origin.y; }
static inline CGFloat CGRectGetMaxX(CGRect rect) { return rect.origin.x + rect.size.width; }
static inline CGFloat CGRectGetMaxY(CGRect rect) { return rect.origin.y + rect.size.height; }
static inline CGFloat CGRectGetMidX(CGRect rect) { return rect.origin.x + rect.size.width / 2; }
static inline CGFloat CGRectGetMidY(CGRect rect) { return rect.origin.y + rect.size.height / 2; }
static inline CGRect CGRectInset(CGRect rect, CGFloat dx, CGFloat dy) {
  return CGRectMake(rect.origin.x + dx, rect.origin.y + dy, rect.size.width - 2 * dx, rect.size.height - 2 * dy);
}
static inline CGRect CGRectOffset(CGRect rect, CGFloat dx, CGFloat dy) {
  return CGRectMake(rect.origin.x + dx, rect.origin.y + dy, rect.size.width, rect.size.height);
}

#define CGPointZero CGPointMake(0, 0)
#define CGSizeZero CGSizeMake(0, 0)
#define CGRectZero CGRectMake(0, 0, 0, 0)
