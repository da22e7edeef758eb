#pragma once

#import <Foundation/Foundation.h>

#include <string>

/// The name of the exception that `action` raises; empty when it raises none.
template <class Action> std::string raisedBy(const Action &action) {
  @try {
    action();
  } @catch (NSException *exception) {
    return [[exception name] UTF8String];
  }
  return "";
}
