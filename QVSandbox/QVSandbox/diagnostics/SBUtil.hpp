// Texts for log lines: the SDK's states and policies, and what a class's methods look like.
#pragma once

#include "../platform/Foundation/NSString.hpp"

namespace qvsb {

class SBUtil : public NSObject {
  QVSB_HANDLE(SBUtil, NSObject)

  /// Constant texts; an unknown value has one too.
  QVSB_CLASS_METHOD(NSString, stringForAuthState, "stringForAuthState:", NSInteger)
  QVSB_CLASS_METHOD(NSString, stringForOpenInPolicy, "stringForOpenInPolicy:", NSInteger)
  QVSB_CLASS_METHOD(NSString, stringForPrintPolicy, "stringForPrintPolicy:", NSInteger)
  QVSB_CLASS_METHOD(NSString, stringForPasteboardPolicy, "stringForPasteboardPolicy:", NSInteger)

  /// See typeName(). Null counts as empty.
  QVSB_CLASS_METHOD(NSString, stringForTypeEncoding, "stringForTypeEncoding:", const char*)

  /// One line at level 4 for each method: `-(void)setValue:(id) forKey:(id)` where the prefix is "-".
  QVSB_CLASS_METHOD(void, logMethods_count_withPrefix, "logMethods:count:withPrefix:", Method*, unsigned int, NSString)

  /// Says at level 0 that there is no such class; with one that there is, does what `logClass:` does.
  QVSB_CLASS_METHOD(void, logClassFromString, "logClassFromString:", const char*)

  /// Nothing, on purpose: whoever calls them goes on working and fills no log.
  QVSB_CLASS_METHOD(void, logClass, "logClass:", Class)
  QVSB_CLASS_METHOD(void, logMessagesForClass, "logMessagesForClass:", Class)
  QVSB_CLASS_METHOD(void, logHierarchyForClass, "logHierarchyForClass:", Class)
  QVSB_CLASS_METHOD(void, logVariablesForClass, "logVariablesForClass:", Class)
  QVSB_CLASS_METHOD(void, logSymbolInfo, "logSymbolInfo:", const void*)
};

Class registerSBUtil();

} // namespace qvsb
