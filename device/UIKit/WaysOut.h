// Where an app's data go when they leave it: to another app, onto paper, to a service. Each leaves a file on the device
// and a line in the trace.
#pragma once

#import <Foundation/Foundation.h>

/// What an item of a share sheet, an open-in menu or a printer comes to: a name for a file, and bytes. A text, data, or
/// a URL: a file's contents, any other address as text. What is none of these, or cannot be read, has no bytes.
NSString *QVDeviceItemName(id item);
NSData *QVDeviceItemBytes(id item);

/// Into the app's inbox (`Apps/IDENTIFIER/Documents/Inbox`).
void QVDeviceHandToApp(NSString *identifier, NSArray *items);
/// Onto paper (`Print`).
void QVDevicePrint(NSArray *items);
/// To one of the system's own services, or to a service that takes what an activity of that type sends
/// (`Outbox/TYPE`).
void QVDeviceSend(NSString *activityType, NSArray *items);
/// Onto the general pasteboard.
void QVDeviceCopy(NSArray *items);
