#pragma once

#import <Foundation/Foundation.h>
#import <UIKit/UIKitDefines.h>

typedef NSString *UIPasteboardName;

/// The general pasteboard, which all apps of the device share.
UIKIT_EXTERN UIPasteboardName const UIPasteboardNameGeneral;

/// The types under which texts and URLs are looked for; the first is the one under which they are put.
UIKIT_EXTERN NSArray *UIPasteboardTypeListString;
UIKIT_EXTERN NSArray *UIPasteboardTypeListURL;

/// Posted on the main thread, with the pasteboard as its object: at once when this app has changed the contents, and
/// when the app becomes active after others have.
UIKIT_EXTERN NSNotificationName const UIPasteboardChangedNotification;
/// In its user info: arrays of the types that the pasteboard holds now and did not before, and the other way round.
UIKIT_EXTERN NSString *const UIPasteboardChangedTypesAddedKey;
UIKIT_EXTERN NSString *const UIPasteboardChangedTypesRemovedKey;

/// Posted on the main thread just before a pasteboard is removed.
UIKIT_EXTERN NSNotificationName const UIPasteboardRemovedNotification;

/// Items are dictionaries from type to value; values are strings, data, URLs, numbers, dates, and arrays and
/// dictionaries of these. What is put and what is taken are copies. Anything else raises NSInvalidArgumentException and
/// changes nothing. Any thread.
///
/// A pasteboard with a name of its own belongs to the process that made it, and ends with it.
@interface UIPasteboard : NSObject {
@private
  NSString *_name;
  // As this process last knew the pasteboard.
  long long _knownChangeCount;
  NSSet *_knownTypes;
  BOOL _isRemoved;
}

+ (UIPasteboard *)generalPasteboard;
/// Always the same object for a name; nil for one that nobody has made, unless it is to be made.
+ (UIPasteboard *)pasteboardWithName:(UIPasteboardName)name create:(BOOL)create;
+ (UIPasteboard *)pasteboardWithUniqueName;
/// The general pasteboard stays.
+ (void)removePasteboardWithName:(UIPasteboardName)name;

@property (nonatomic, readonly) UIPasteboardName name;
/// How often the contents have changed, whichever app did it.
@property (nonatomic, readonly) NSInteger changeCount;

@property (nonatomic, readonly) NSInteger numberOfItems;
@property (nonatomic, copy) NSArray *items;
- (void)addItems:(NSArray *)items;

@end

@interface UIPasteboard (UIPasteboardRepresentations)

// Of the first item.
- (NSArray *)pasteboardTypes;
- (BOOL)containsPasteboardTypes:(NSArray *)types;
/// A text is its UTF-8, a URL too; data are themselves, and what is none of these is a property list.
- (NSData *)dataForPasteboardType:(NSString *)type;
/// Data under a type for texts or for URLs become what the type is for.
- (id)valueForPasteboardType:(NSString *)type;

// The one item from now on.
- (void)setValue:(id)value forPasteboardType:(NSString *)type;
- (void)setData:(NSData *)data forPasteboardType:(NSString *)type;

// Of the items with these indexes; of all, without. An index beyond the last has no item.
- (NSArray *)pasteboardTypesForItemSet:(NSIndexSet *)itemSet;
- (BOOL)containsPasteboardTypes:(NSArray *)types inItemSet:(NSIndexSet *)itemSet;
/// The items that have one of the types.
- (NSIndexSet *)itemSetWithPasteboardTypes:(NSArray *)types;
- (NSArray *)valuesForPasteboardType:(NSString *)type inItemSet:(NSIndexSet *)itemSet;
- (NSArray *)dataForPasteboardType:(NSString *)type inItemSet:(NSIndexSet *)itemSet;

@end

@interface UIPasteboard (UIPasteboardObjects)

/// The first item's, nil when it has none. Set, each becomes the pasteboard's one item; nil empties it.
@property (nonatomic, copy) NSString *string;
@property (nonatomic, copy) NSURL *URL;
/// Those of all items, nil when there are none. Set, each becomes an item.
@property (nonatomic, copy) NSArray *strings;
@property (nonatomic, copy) NSArray *URLs;

@property (nonatomic, readonly) BOOL hasStrings;
@property (nonatomic, readonly) BOOL hasURLs;

@end
