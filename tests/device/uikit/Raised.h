#pragma once

#import <Foundation/Foundation.h>

#include <string>

// The name of the Objective-C exception that `work` raises; empty when it raises none.
template <class Work> std::string raisedBy(Work work) {
  @try {
    work();
  } @catch (NSException *exception) {
    return [[exception name] UTF8String];
  }
  return "";
}
