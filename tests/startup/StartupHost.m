// An app of the smallest kind: says that its own code has begun, and ends.
#import <Foundation/Foundation.h>

int main(void) {
  NSAutoreleasePool *pool = [[NSAutoreleasePool alloc] init];
  printf("main of the host\n");
  [pool drain];
  return 0;
}
