#import "WaysOut.h"

#import <QVDevice/QVDevice.h>
#import <UIKit/UIPasteboard.h>

#include <string>

#include "container/DeviceFiles.h"

namespace {

std::string textOf(NSString *string) { return string ? std::string([string UTF8String]) : std::string(); }

void trace(NSString *way, NSString *to, NSString *name, const std::string &path) {
  QVDeviceTrace(@{
    @"kind" : @"out",
    @"way" : way,
    @"to" : to ? to : (id)[NSNull null],
    @"name" : name,
    @"path" : path.empty() ? (id)[NSNull null] : [NSString stringWithUTF8String:path.c_str()]
  });
}

void leave(NSString *way, NSString *to, const std::string &folder, NSArray *items) {
  for (id item in items) {
    NSData *const bytes = QVDeviceItemBytes(item);
    if (!bytes) continue;
    NSString *const name = QVDeviceItemName(item);
    trace(
        way, to, name,
        qvdevice::putDeviceFile(folder, textOf(name),
                                {static_cast<const char *>([bytes bytes]), static_cast<std::size_t>([bytes length])}));
  }
}

} // namespace

NSString *QVDeviceItemName(id item) {
  if ([item isKindOfClass:[NSURL class]] && [item isFileURL]) return [[item path] lastPathComponent];
  return [item isKindOfClass:[NSData class]] ? @"data" : @"text.txt";
}

NSData *QVDeviceItemBytes(id item) {
  if ([item isKindOfClass:[NSString class]]) return [item dataUsingEncoding:NSUTF8StringEncoding];
  if ([item isKindOfClass:[NSData class]]) return item;
  if (![item isKindOfClass:[NSURL class]]) return nil;
  return [item isFileURL] ? [NSData dataWithContentsOfFile:[item path]]
                          : [[item absoluteString] dataUsingEncoding:NSUTF8StringEncoding];
}

void QVDeviceHandToApp(NSString *identifier, NSArray *items) {
  leave(@"app", identifier, "Apps/" + textOf(identifier) + "/Documents/Inbox", items);
}

void QVDevicePrint(NSArray *items) { leave(@"print", nil, "Print", items); }

void QVDeviceSend(NSString *activityType, NSArray *items) {
  leave(@"service", activityType, "Outbox/" + textOf(activityType), items);
}

void QVDeviceCopy(NSArray *items) {
  NSMutableArray *const copied = [NSMutableArray array];
  for (id item in items) {
    NSData *const bytes = QVDeviceItemBytes(item);
    NSString *const text = [[[NSString alloc] initWithData:bytes encoding:NSUTF8StringEncoding] autorelease];
    if (!bytes) continue;
    [copied addObject:text ? @{@"public.utf8-plain-text" : text} : @{@"public.data" : bytes}];
    trace(@"pasteboard", nil, QVDeviceItemName(item), {});
  }
  [[UIPasteboard generalPasteboard] setItems:copied];
}
