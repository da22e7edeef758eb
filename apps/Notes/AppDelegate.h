#import <UIKit/UIKit.h>

@class NoteCatalog, NoteDocument, NoteFolder;

@interface AppDelegate : UIResponder <UIApplicationDelegate> {
  UIWindow *_window;
  NoteFolder *_folder;
  NoteCatalog *_catalog;
  NSMutableArray *_openDocuments;
}

@property (nonatomic, retain) UIWindow *window;

@end
