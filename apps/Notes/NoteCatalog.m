#import "NoteCatalog.h"

#import <UIKit/UIKit.h>

@implementation NoteCatalog

- (id)initWithFolder:(NSString *)folder {
  self = [super init];
  if (self) {
    _folder = [folder copy];
    NSManagedObjectModel *model = [[[NSManagedObjectModel alloc] init] autorelease];
    _coordinator = [[NSPersistentStoreCoordinator alloc] initWithManagedObjectModel:model];
  }
  return self;
}

- (void)dealloc {
  [_folder release];
  [_coordinator release];
  [super dealloc];
}

- (BOOL)open {
  NSError *error = nil;
  NSURL *url = [NSURL fileURLWithPath:[_folder stringByAppendingPathComponent:@"Catalog.sqlite"]];
  // The catalog is brought up to date in the background, also while the device is locked.
  NSDictionary *options = [NSDictionary dictionaryWithObject:NSFileProtectionNone
                                                      forKey:NSPersistentStoreFileProtectionKey];
  if (![_coordinator addPersistentStoreWithType:NSSQLiteStoreType configuration:nil URL:url options:options
                                          error:&error]) {
    NSLog(@"Could not open the catalog: %@", [error localizedDescription]);
    return NO;
  }
  NSLog(@"Opened the store Catalog.sqlite, asking for no protection.");
  return YES;
}

@end
