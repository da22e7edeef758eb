#import <Foundation/Foundation.h>

/// Writes the notes where other apps may fetch them. Works on any queue.
@interface NoteExporter : NSObject

- (void)exportNotes:(NSArray *)notes;

@end
