#import <Foundation/NSExtensionMain.h>

int main(int argc, char *argv[]) { return NSExtensionMain(argc, argv); }
