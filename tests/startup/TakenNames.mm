// A library that is in the process before ours and already has, on two classes, a method of the name that ours would
// give its replacement, with another signature.
#import <Foundation/Foundation.h>

@interface NSArray (TakenNames)
@end
@implementation NSArray (TakenNames)
- (void)sb_writeToFile:(NSString *)path atomically:(BOOL)atomically {
}
@end

@interface NSString (TakenNames)
@end
@implementation NSString (TakenNames)
- (NSInteger)sb_writeToURL:(NSURL *)url
                atomically:(BOOL)atomically
                  encoding:(NSStringEncoding)encoding
                     error:(NSError **)error {
  return 0;
}
@end
