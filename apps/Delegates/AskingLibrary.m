#import "AskingLibrary.h"

#import <UIKit/UIKit.h>
#import <objc/runtime.h>

const char *ClassOfTheDelegate(void) { return object_getClassName([[UIApplication sharedApplication] delegate]); }
