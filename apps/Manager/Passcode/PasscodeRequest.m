#import "PasscodeRequest.h"

#include <dispatch/dispatch.h>

static NSString *const kTypeEnding = @"passcodeextension.data";

static NSString *TypeOf(NSItemProvider *provider) {
  for (NSString *type in [provider registeredTypeIdentifiers])
    if ([type hasSuffix:kTypeEnding]) return type;
  return nil;
}

static NSItemProvider *ProviderIn(NSExtensionContext *context) {
  for (NSExtensionItem *item in [context inputItems])
    for (NSItemProvider *provider in [item attachments])
      if (TypeOf(provider)) return provider;
  return nil;
}

void LoadPasscodeRequest(NSExtensionContext *context, void (^handler)(NSDictionary *request)) {
  NSItemProvider *provider = ProviderIn(context);
  if (!provider) {
    dispatch_async(dispatch_get_main_queue(), ^{
      handler(nil);
    });
    return;
  }
  [provider loadItemForTypeIdentifier:TypeOf(provider) options:nil completionHandler:^(id item, NSError *error) {
    if (error) NSLog(@"The request cannot be read: %@", error);
    NSDictionary *request = [item isKindOfClass:[NSDictionary class]] ? item : nil;
    dispatch_async(dispatch_get_main_queue(), ^{
      handler(request);
    });
  }];
}

static NSString *SizeOf(id value) {
  if (!value) return @"none";
  if ([value isKindOfClass:[NSData class]])
    return [NSString stringWithFormat:@"%lu bytes", (unsigned long)[value length]];
  if ([value isKindOfClass:[NSString class]])
    return [NSString stringWithFormat:@"%lu characters", (unsigned long)[value length]];
  return [NSString stringWithFormat:@"a %@", [value class]];
}

NSString *InWords(NSDictionary *request) {
  NSString *name = [request objectForKey:@"AppName"];
  NSString *identifier = [request objectForKey:@"BundleId"];
  return [NSString stringWithFormat:@"FK %@, ActivityPasteboardKey %@, AppName %@, AppIcon %@, BundleId %@",
                                    SizeOf([request objectForKey:@"FK"]),
                                    SizeOf([request objectForKey:@"ActivityPasteboardKey"]), name ? name : @"none",
                                    SizeOf([request objectForKey:@"AppIcon"]), identifier ? identifier : @"none"];
}
