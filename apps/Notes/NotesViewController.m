#import "NotesViewController.h"

#import "Note.h"

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

- (void)viewDidLoad {
  [super viewDidLoad];
  NSLog(@"Showing %lu notes.", (unsigned long)[_notes count]);
  _text = [[UITextField alloc] initWithFrame:CGRectMake(20, 60, 280, 40)];
  _text.text = [[self note] title];
  [self.view addSubview:_text];
  [self addButton:@"Edit" action:@selector(edit) row:0];
  [self addButton:@"Share" action:@selector(share) row:1];
  [self addButton:@"Open in" action:@selector(openIn) row:2];
  [self addButton:@"Print" action:@selector(print) row:3];
  UIMenuItem *capitals = [[[UIMenuItem alloc] initWithTitle:@"Capitals" action:@selector(capitals:)] autorelease];
  [UIMenuController sharedMenuController].menuItems = [NSArray arrayWithObject:capitals];
}

- (void)addButton:(NSString *)title action:(SEL)action row:(int)row {
  UIButton *button = [UIButton buttonWithType:UIButtonTypeSystem];
  button.frame = CGRectMake(20, 120 + 50 * row, 280, 40);
  [button setTitle:title forState:UIControlStateNormal];
  [button addTarget:self action:action forControlEvents:UIControlEventTouchUpInside];
  [self.view addSubview:button];
}

- (Note *)note {
  return [_notes objectAtIndex:0];
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
    if (type)
      NSLog(completed ? @"Shared by %@." : @"Not shared by %@.", type);
    else
      NSLog(@"Not shared.");
  };
  [self presentViewController:sheet animated:YES completion:nil];
}

- (void)openIn {
  [_openIn release];
  _openIn = [[UIDocumentInteractionController interactionControllerWithURL:[self noteURL]] retain];
  if (![_openIn presentOpenInMenuFromRect:CGRectZero inView:self.view animated:YES]) {
    NSLog(@"No other app can open the note.");
  }
}

- (void)print {
  if (![UIPrintInteractionController isPrintingAvailable]) {
    NSLog(@"There is nothing to print with.");
    return;
  }
  UIPrintInteractionController *printer = [UIPrintInteractionController sharedPrintController];
  printer.printingItem = [self noteURL];
  [printer presentAnimated:YES
         completionHandler:^(UIPrintInteractionController *controller, BOOL completed, NSError *error) {
           (void)controller, (void)error;
           NSLog(completed ? @"Printed the note." : @"Did not print the note.");
         }];
}

@end
