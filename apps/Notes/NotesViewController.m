#import "NotesViewController.h"

#import "Note.h"
#import "NotesView.h"

@implementation NotesViewController

- (id)initWithNotes:(NSArray *)notes folder:(NSString *)folder {
  self = [super initWithNibName:nil bundle:nil];
  if (self) {
    _notes = [notes copy];
    _folder = [folder copy];
    self.title = @"Notes";
  }
  return self;
}

- (void)dealloc {
  [_notes release];
  [_folder release];
  [_text release];
  [_openIn release];
  [super dealloc];
}

- (void)loadView {
  self.view = [[[NotesView alloc] initWithFrame:[[UIScreen mainScreen] bounds] notes:_notes] autorelease];
}

- (NotesView *)notesView {
  return (NotesView *)self.view;
}

- (void)viewDidLoad {
  [super viewDidLoad];
  NSLog(@"Showing %lu notes.", (unsigned long)[_notes count]);
  NotesView *view = [self notesView];
  _text = [view.textField retain];
  _text.text = [[self note] title];
  [view setBody:[[self note] body]];
  [view addButton:@"Edit" target:self action:@selector(edit)];
  [view addButton:@"Share" target:self action:@selector(share)];
  [view addButton:@"Open in" target:self action:@selector(openIn)];
  [view addButton:@"Print" target:self action:@selector(print)];
  UIMenuItem *capitals = [[[UIMenuItem alloc] initWithTitle:@"Capitals" action:@selector(capitals:)] autorelease];
  [UIMenuController sharedMenuController].menuItems = [NSArray arrayWithObject:capitals];
}

- (Note *)note {
  return [_notes objectAtIndex:0];
}

- (void)say:(NSString *)sentence {
  NSLog(@"%@", sentence);
  [[self notesView] setStatus:sentence];
}

- (NSURL *)noteURL {
  NSString *name = [[self note].fileName stringByAppendingPathExtension:@"txt"];
  return [NSURL fileURLWithPath:[_folder stringByAppendingPathComponent:name]];
}

#pragma mark - What the user can do with a note

- (void)edit {
  [_text becomeFirstResponder];
  [_text selectAll:nil];
}

- (void)capitals:(id)sender {
  _text.text = [_text.text uppercaseString];
  NSLog(@"The title is now %@.", _text.text);
}

- (void)share {
  UIActivityViewController *sheet =
      [[[UIActivityViewController alloc] initWithActivityItems:[NSArray arrayWithObject:[self noteURL]]
                                         applicationActivities:nil] autorelease];
  sheet.completionWithItemsHandler = ^(UIActivityType type, BOOL completed, NSArray *items, NSError *error) {
    (void)items, (void)error;
    NSString *format = completed ? @"Shared by %@." : @"Not shared by %@.";
    [self say:type ? [NSString stringWithFormat:format, type] : @"Not shared."];
  };
  [self presentViewController:sheet animated:YES completion:nil];
}

- (void)openIn {
  [_openIn release];
  _openIn = [[UIDocumentInteractionController interactionControllerWithURL:[self noteURL]] retain];
  if (![_openIn presentOpenInMenuFromRect:CGRectZero inView:self.view animated:YES]) {
    [self say:@"No other app can open the note."];
  }
}

- (void)print {
  if (![UIPrintInteractionController isPrintingAvailable]) {
    [self say:@"There is nothing to print with."];
    return;
  }
  UIPrintInteractionController *printer = [UIPrintInteractionController sharedPrintController];
  printer.printingItem = [self noteURL];
  [printer presentAnimated:YES
         completionHandler:^(UIPrintInteractionController *controller, BOOL completed, NSError *error) {
           (void)controller, (void)error;
           [self say:completed ? @"Printed the note." : @"Did not print the note."];
         }];
}

@end
