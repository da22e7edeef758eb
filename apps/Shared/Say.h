// What the small apps, and the libraries that they carry, tell whoever runs them.
#import <Foundation/Foundation.h>

// An app and its library each have their own: a library's code runs before the app's is ready.
#pragma GCC visibility push(hidden)

/// Writes one line to standard output, at once.
void Say(NSString *format, ...) NS_FORMAT_FUNCTION(1, 2);

/// A dictionary on one line, sorted by its keys; "none" for nil.
NSString *OnOneLine(NSDictionary *dictionary);

#pragma GCC visibility pop
