// A library that is in the process before ours and already has, on every class that ours hooks, one method of the name
// that ours would give its replacement, with another signature.
#import <CoreData/CoreData.h>
#import <UIKit/UIKit.h>

#define TAKEN(CLASS, KIND, ...)                                                                                        \
  @interface CLASS (TakenNames)                                                                                        \
  @end                                                                                                                 \
  @implementation CLASS (TakenNames)                                                                                   \
  KIND(float)                                                                                                          \
  __VA_ARGS__ { return 0; }                                                                                            \
  @end

// clang-format off: selectors in their own layout
TAKEN(UIView, -, sb_targetForAction:(SEL)a)
TAKEN(UIMenuController, -, sb_setMenuItems:(id)a)
TAKEN(UIDocumentInteractionController, -, sb__applications:(BOOL)a)
TAKEN(UIPrintInteractionController, +, sb_isPrintingAvailable)
TAKEN(UIActivityViewController, -, sb_initWithActivityItems:(id)a applicationActivities:(id)b)
TAKEN(NSArray, -, sb_writeToFile:(id)a atomically:(BOOL)b)
TAKEN(NSData, -, sb_writeToFile:(id)a atomically:(BOOL)b)
TAKEN(NSDictionary, -, sb_writeToFile:(id)a atomically:(BOOL)b)
TAKEN(NSFileManager, -, sb_createFileAtPath:(id)a contents:(id)b attributes:(id)c)
TAKEN(NSFileWrapper, -, sb_writeToURL:(id)a options:(NSUInteger)b originalContentsURL:(id)c error:(id *)d)
TAKEN(NSKeyedArchiver, +, sb_archiveRootObject:(id)a toFile:(id)b)
TAKEN(NSPersistentStoreCoordinator, -,
      sb_addPersistentStoreWithType:(id)a configuration:(id)b URL:(id)c options:(id)d error:(id *)e)
TAKEN(NSString, -, sb_writeToURL:(id)a atomically:(BOOL)b encoding:(NSUInteger)c error:(id *)d)
TAKEN(UIDocument, -, sb_saveToURL:(id)a forSaveOperation:(NSInteger)b completionHandler:(id)c)
