// Writing whole files. Every Foundation method that writes a file ends here rather than in another public method, so
// that one write by the app is one call of one method, as on the phone.
#pragma once

#import <Foundation/Foundation.h>

namespace qvdevice {

struct Writing {
  bool atomically = false;
  bool overwriting = true;
  NSFileProtectionType protection = nil; // nil leaves the class to the item that is there, or to the device
};

BOOL writeFile(NSData *contents, NSString *path, Writing how, NSError **error);
BOOL writeFile(NSData *contents, NSURL *url, Writing how, NSError **error);

// The path of a URL that can be written; else nil, and the error says why.
NSString *writablePath(NSURL *url, NSError **error);

} // namespace qvdevice
