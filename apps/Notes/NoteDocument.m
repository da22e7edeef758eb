#import "NoteDocument.h"

@implementation NoteDocument

@synthesize text = _text;

+ (NoteDocument *)documentNamed:(NSString *)name inFolder:(NSURL *)folder {
  return [[[self alloc] initWithFileURL:[folder URLByAppendingPathComponent:name]] autorelease];
}

- (void)dealloc {
  [_text release];
  [super dealloc];
}

- (BOOL)isNotebook {
  return [[self.fileURL pathExtension] isEqualToString:@"notebook"];
}

- (id)contentsForType:(NSString *)typeName error:(NSError **)outError {
  NSData *text = [_text dataUsingEncoding:NSUTF8StringEncoding];
  if (![self isNotebook]) {
    return text;
  }
  NSFileWrapper *file = [[[NSFileWrapper alloc] initRegularFileWithContents:text] autorelease];
  NSDictionary *files = [NSDictionary dictionaryWithObject:file forKey:@"text.txt"];
  return [[[NSFileWrapper alloc] initDirectoryWithFileWrappers:files] autorelease];
}

- (BOOL)loadFromContents:(id)contents ofType:(NSString *)typeName error:(NSError **)outError {
  if ([contents isKindOfClass:[NSFileWrapper class]]) {
    contents = [[[contents fileWrappers] objectForKey:@"text.txt"] regularFileContents];
  }
  self.text = [[[NSString alloc] initWithData:contents encoding:NSUTF8StringEncoding] autorelease];
  return _text != nil;
}

@end
