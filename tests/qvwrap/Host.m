// An app as its maker would build it, of nothing but what the runtime and UIKit export.
__attribute__((objc_root_class))
@interface NSObject
@end

@interface HostDelegate : NSObject
- (int)launches;
@end

@implementation HostDelegate {
  int launches_;
}
- (int)launches {
  return ++launches_;
}
@end

int UIApplicationMain(int argc, char **argv, id principal, id delegate);

int main(int argc, char **argv) { return UIApplicationMain(argc, argv, (id)0, (id)0); }
