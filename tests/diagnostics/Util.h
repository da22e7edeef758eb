// SBUtil as Objective-C code sees it: found by name, its methods by selector.
#pragma once

#include "support/Support.h"

#include <objc/runtime.h>

@interface NSObject (SBUtil)
+ (NSString *)stringForAuthState:(NSInteger)state;
+ (NSString *)stringForOpenInPolicy:(NSInteger)policy;
+ (NSString *)stringForPrintPolicy:(NSInteger)policy;
+ (NSString *)stringForPasteboardPolicy:(NSInteger)policy;
+ (NSString *)stringForTypeEncoding:(const char *)encoding;
+ (void)logMethods:(Method *)methods count:(unsigned int)count withPrefix:(NSString *)prefix;
+ (void)logClassFromString:(const char *)name;
+ (void)logClass:(Class)cls;
+ (void)logMessagesForClass:(Class)cls;
+ (void)logHierarchyForClass:(Class)cls;
+ (void)logVariablesForClass:(Class)cls;
+ (void)logSymbolInfo:(const void *)symbol;
@end

inline Class util() { return objc_getClass("SBUtil"); }
