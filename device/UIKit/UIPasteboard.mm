#import <UIKit/UIApplication.h>
#import <UIKit/UIPasteboard.h>
#import <dispatch/dispatch.h>

#import <QVDevice/QVDevice.h>

#include <cstdio>

#import "PasteboardItems.h"
#include "PasteboardStore.h"
#include "container/DeviceFolder.h"

using namespace qvdevice;

UIPasteboardName const UIPasteboardNameGeneral = @"com.apple.UIKit.pboard.general";

NSNotificationName const UIPasteboardChangedNotification = @"UIPasteboardChangedNotification";
NSString *const UIPasteboardChangedTypesAddedKey = @"UIPasteboardChangedTypesAddedKey";
NSString *const UIPasteboardChangedTypesRemovedKey = @"UIPasteboardChangedTypesRemovedKey";
NSNotificationName const UIPasteboardRemovedNotification = @"UIPasteboardRemovedNotification";

namespace {

void refused(const std::string &sentence) {
  std::fprintf(stderr, "QVDevice: %s\n", sentence.c_str());
  NSString *const text = [NSString stringWithUTF8String:sentence.c_str()];
  QVDeviceTrace(@{@"kind" : @"pasteboard", @"event" : @"refused", @"reason" : text ? text : @""});
}

PasteboardStore &devicesStore() {
  static PasteboardStore &store =
      *new PasteboardStore(deviceFolder().empty() ? std::string() : deviceFolder() + "/pasteboard.db", refused);
  return store;
}

PasteboardStore &processesStore() {
  static PasteboardStore &store = *new PasteboardStore({}, refused);
  return store;
}

void onMainThread(void (^work)(void)) {
  if ([NSThread isMainThread])
    work();
  else
    dispatch_async(dispatch_get_main_queue(), work);
}

PasteboardStore &storeOf(NSString *name) {
  return [name isEqual:UIPasteboardNameGeneral] ? devicesStore() : processesStore();
}

/// The pasteboards of this process by name.
NSMutableDictionary *known() {
  static NSMutableDictionary *const all = [[NSMutableDictionary alloc] init];
  return all;
}

} // namespace

@interface UIPasteboard (QVDevice)
- (instancetype)qvdevice_initWithName:(NSString *)name;
- (void)qvdevice_putItems:(NSArray *)items keepingOthers:(BOOL)keep for:(SEL)caller;
- (void)qvdevice_lookForChanges;
- (void)qvdevice_changedFrom:(NSSet *)before to:(NSSet *)after count:(long long)count;
- (void)qvdevice_remove;
@end

@implementation UIPasteboard

+ (UIPasteboard *)generalPasteboard {
  return [self pasteboardWithName:UIPasteboardNameGeneral create:YES];
}

+ (UIPasteboard *)pasteboardWithName:(UIPasteboardName)name create:(BOOL)create {
  if (![name UTF8String]) return nil;
  @synchronized(known()) {
    UIPasteboard *pasteboard = [known() objectForKey:name];
    if (!pasteboard && (create || [name isEqual:UIPasteboardNameGeneral])) {
      pasteboard = [[[UIPasteboard alloc] qvdevice_initWithName:name] autorelease];
      [known() setObject:pasteboard forKey:name];
    }
    return [[pasteboard retain] autorelease];
  }
}

+ (UIPasteboard *)pasteboardWithUniqueName {
  return [self pasteboardWithName:[[NSUUID UUID] UUIDString] create:YES];
}

+ (void)removePasteboardWithName:(UIPasteboardName)name {
  if (!name || [name isEqual:UIPasteboardNameGeneral]) return;
  UIPasteboard *const pasteboard = [self pasteboardWithName:name create:NO];
  onMainThread(^{
    if (pasteboard) [pasteboard qvdevice_remove];
  });
}

- (void)dealloc {
  [[NSNotificationCenter defaultCenter] removeObserver:self];
  [_name release];
  [_knownTypes release];
  [super dealloc];
}

- (UIPasteboardName)name {
  return _name;
}

- (NSInteger)changeCount {
  return storeOf(_name).summary([_name UTF8String]).changeCount;
}

- (NSInteger)numberOfItems {
  return static_cast<NSInteger>([[self items] count]);
}

- (NSArray *)items {
  NSArray *const items = itemsFrom(storeOf(_name).items([_name UTF8String]));
  if (!items) storeOf(_name).refuseContents([_name UTF8String]);
  return items ? items : @[];
}

- (void)setItems:(NSArray *)items {
  [self qvdevice_putItems:items keepingOthers:NO for:_cmd];
}

- (void)addItems:(NSArray *)items {
  [self qvdevice_putItems:items keepingOthers:YES for:_cmd];
}

@end

@implementation UIPasteboard (QVDevice)

- (instancetype)qvdevice_initWithName:(NSString *)name {
  if ((self = [super init])) {
    _name = [name copy];
    const PasteboardSummary summary = storeOf(_name).summary([_name UTF8String]);
    _knownChangeCount = summary.changeCount;
    _knownTypes = [setOfTypes(summary.types) retain];
    [[NSNotificationCenter defaultCenter] addObserver:self selector:@selector(qvdevice_lookForChanges)
                                                 name:UIApplicationDidBecomeActiveNotification
                                               object:nil];
  }
  return self;
}

- (void)qvdevice_putItems:(NSArray *)items keepingOthers:(BOOL)keep for:(SEL)caller {
  const std::vector<PasteboardItem> encoded = encodedItems(items, caller);
  if (_isRemoved) return;
  const std::string name([_name UTF8String]);
  PasteboardChange change;
  const bool changed =
      keep ? storeOf(_name).addItems(name, encoded, change) : storeOf(_name).replaceItems(name, encoded, change);
  if (!changed) return;
  NSSet *const before = setOfTypes(change.before.types);
  NSSet *const after = setOfTypes(change.after.types);
  const long long count = change.after.changeCount;
  onMainThread(^{
    [self qvdevice_changedFrom:before to:after count:count];
  });
}

// What another app has done meanwhile is told of when this one is used again.
- (void)qvdevice_lookForChanges {
  const PasteboardSummary summary = storeOf(_name).summary([_name UTF8String]);
  if (summary.changeCount != _knownChangeCount)
    [self qvdevice_changedFrom:_knownTypes to:setOfTypes(summary.types) count:summary.changeCount];
}

- (void)qvdevice_changedFrom:(NSSet *)before to:(NSSet *)after count:(long long)count {
  NSMutableSet *const added = [NSMutableSet setWithSet:after];
  [added minusSet:before];
  NSMutableSet *const removed = [NSMutableSet setWithSet:before];
  [removed minusSet:after];
  NSSet *const forgotten = _knownTypes;
  _knownTypes = [after copy];
  [forgotten autorelease];
  _knownChangeCount = count;
  QVDeviceTrace(@{
    @"kind" : @"pasteboard",
    @"event" : @"changed",
    @"name" : _name,
    @"changeCount" : [NSNumber numberWithLongLong:count],
    @"types" : [[after allObjects] sortedArrayUsingSelector:@selector(compare:)],
  });
  [[NSNotificationCenter defaultCenter] postNotificationName:UIPasteboardChangedNotification object:self userInfo:@{
    UIPasteboardChangedTypesAddedKey : [added allObjects],
    UIPasteboardChangedTypesRemovedKey : [removed allObjects],
  }];
}

- (void)qvdevice_remove {
  @synchronized(known()) {
    if (_isRemoved) return;
    [[self retain] autorelease];
    [known() removeObjectForKey:_name];
  }
  [[NSNotificationCenter defaultCenter] postNotificationName:UIPasteboardRemovedNotification object:self];
  _isRemoved = YES;
  [[NSNotificationCenter defaultCenter] removeObserver:self];
  storeOf(_name).remove([_name UTF8String]);
}

@end
