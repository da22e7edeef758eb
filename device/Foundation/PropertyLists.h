// Property lists as files.
#pragma once

#import "FileWriting.h"

namespace qvdevice {

bool isPropertyList(id object);

// The XML form; nil when `object` holds anything that a property list cannot.
NSData *propertyListData(id object);

template <class Target> BOOL writePropertyList(id object, Target *target, BOOL atomically) {
  NSData *const data = propertyListData(object);
  return data ? writeFile(data, target, {.atomically = atomically != NO}, NULL) : NO;
}

} // namespace qvdevice
