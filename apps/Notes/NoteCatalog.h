#import <CoreData/CoreData.h>

/// The store that the list of notes is searched in.
@interface NoteCatalog : NSObject {
  NSString *_folder;
  NSPersistentStoreCoordinator *_coordinator;
}

- (id)initWithFolder:(NSString *)folder;
- (BOOL)open;

@end
