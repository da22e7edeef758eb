#import "Note.h"

@implementation Note

@synthesize title = _title;
@synthesize body = _body;
@synthesize created = _created;

+ (Note *)noteWithTitle:(NSString *)title body:(NSString *)body {
  Note *note = [[[self alloc] init] autorelease];
  note.title = title;
  note.body = body;
  note.created = [NSDate date];
  return note;
}

+ (NSArray *)samples {
  return [NSArray arrayWithObjects:[self noteWithTitle:@"Groceries" body:@"Milk\nBread\nApples\n"],
                                   [self noteWithTitle:@"Holidays" body:@"Ask Ann for her tent.\n"],
                                   [self noteWithTitle:@"Diary" body:@"Nobody else reads this.\n"], nil];
}

- (id)initWithCoder:(NSCoder *)coder {
  self = [super init];
  if (self) {
    _title = [[coder decodeObjectForKey:@"title"] copy];
    _body = [[coder decodeObjectForKey:@"body"] copy];
    _created = [[coder decodeObjectForKey:@"created"] retain];
  }
  return self;
}

- (void)encodeWithCoder:(NSCoder *)coder {
  [coder encodeObject:_title forKey:@"title"];
  [coder encodeObject:_body forKey:@"body"];
  [coder encodeObject:_created forKey:@"created"];
}

- (void)dealloc {
  [_title release];
  [_body release];
  [_created release];
  [super dealloc];
}

- (NSDictionary *)propertyList {
  return [NSDictionary dictionaryWithObjectsAndKeys:_title, @"title", _body, @"body", _created, @"created", nil];
}

- (NSData *)data {
  return [_body dataUsingEncoding:NSUTF8StringEncoding];
}

- (NSString *)fileName {
  return [_title lowercaseString];
}

@end
