#import <Foundation/Foundation.h>

@class Note;

/// The folder that the notes lie in, in each form in which this app keeps them.
@interface NoteFolder : NSObject {
  NSString *_path;
}

@property (nonatomic, readonly) NSString *path;

- (id)initWithPath:(NSString *)path;

- (void)saveText:(Note *)note;
- (void)savePlainData:(Note *)note;
/// For a widget that reads the note while the device is locked.
- (void)saveUnprotectedData:(Note *)note;
/// For a note that nobody shall read while the device is locked.
- (void)savePrivate:(Note *)note;
- (void)savePropertyList:(Note *)note;
- (void)saveTitles:(NSArray *)notes;
- (void)saveArchive:(NSArray *)notes;
- (void)saveStateWithOpenNote:(NSString *)title;

- (void)createArchiveFoldersForYear:(NSString *)year month:(NSString *)month;
- (void)createAttachmentNamed:(NSString *)name;
- (void)makePublic:(Note *)note;

/// Where a file of that name lies.
- (NSString *)pathOf:(NSString *)name;

@end
