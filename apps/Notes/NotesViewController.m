#import "NotesViewController.h"

@implementation NotesViewController

- (id)initWithNotes:(NSArray *)notes {
  self = [super initWithNibName:nil bundle:nil];
  if (self) {
    _notes = [notes copy];
    self.title = @"Notes";
  }
  return self;
}

- (void)dealloc {
  [_notes release];
  [super dealloc];
}

- (void)viewDidLoad {
  [super viewDidLoad];
  NSLog(@"Showing %lu notes.", (unsigned long)[_notes count]);
}

@end
