// What a command from outside says besides what is to be done.
#pragma once

#import <Foundation/Foundation.h>

// nil when the command holds nothing but "do" and these keys; otherwise what is wrong.
NSString *QVDeviceUnexpectedArgument(NSDictionary *command, NSArray *keys);

// A text that must be there and must not be empty. nil, with the reason in `problem`, when it is not.
NSString *QVDeviceTextArgument(NSDictionary *command, NSString *key, NSString **problem);

// What may be missing: null counts as that.
id QVDeviceOptionalArgument(NSDictionary *command, NSString *key);
