#import "OtherApps.h"

#include <string>

#include "container/DeviceFiles.h"
#include "container/DeviceFolder.h"

namespace {

NSString *const kShareServices = @"com.apple.share-services";

NSString *stringFrom(const std::string &text) { return [NSString stringWithUTF8String:text.c_str()]; }

// The information of a bundle; nil when it has none.
NSDictionary *informationIn(const std::string &bundle) {
  return
      [NSDictionary dictionaryWithContentsOfFile:stringFrom(qvdevice::deviceFolder() + '/' + bundle + "/Info.plist")];
}

NSString *nameIn(NSDictionary *information, NSString *otherwise) {
  for (NSString *key in @[ @"CFBundleDisplayName", @"CFBundleName" ])
    if (id const name = [information objectForKey:key]; [name isKindOfClass:[NSString class]]) return name;
  return otherwise;
}

bool isOurs(const std::string &identifier) {
  return [stringFrom(identifier) isEqual:[[NSBundle mainBundle] bundleIdentifier]];
}

} // namespace

@interface LSApplicationProxy (Making)
- (id)initWithIdentifier:(NSString *)identifier name:(NSString *)name;
@end

@implementation LSApplicationProxy

@synthesize applicationIdentifier = _applicationIdentifier;
@synthesize localizedName = _localizedName;

- (id)initWithIdentifier:(NSString *)identifier name:(NSString *)name {
  if ((self = [super init])) {
    _applicationIdentifier = [identifier copy];
    _localizedName = [name copy];
  }
  return self;
}

- (void)dealloc {
  [_applicationIdentifier release];
  [_localizedName release];
  [super dealloc];
}

@end

@interface QVDeviceShareExtension (Making)
- (id)initWithIdentifier:(NSString *)identifier name:(NSString *)name application:(NSString *)application;
@end

@implementation QVDeviceShareExtension

@synthesize identifier = _identifier;
@synthesize localizedName = _localizedName;
@synthesize applicationIdentifier = _applicationIdentifier;

- (id)initWithIdentifier:(NSString *)identifier name:(NSString *)name application:(NSString *)application {
  if ((self = [super init])) {
    _identifier = [identifier copy];
    _localizedName = [name copy];
    _applicationIdentifier = [application copy];
  }
  return self;
}

- (void)dealloc {
  [_identifier release];
  [_localizedName release];
  [_applicationIdentifier release];
  [super dealloc];
}

@end

NSMutableArray *QVDeviceAppsThatOpenDocuments(void) {
  NSMutableArray *const apps = [NSMutableArray array];
  for (const std::string &identifier : qvdevice::deviceFolderEntries("Apps")) {
    NSDictionary *const information = informationIn("Apps/" + identifier);
    id const types = [information objectForKey:@"CFBundleDocumentTypes"];
    if (isOurs(identifier) || ![types isKindOfClass:[NSArray class]] || [types count] == 0) continue;
    NSString *const name = stringFrom(identifier);
    [apps addObject:[[[LSApplicationProxy alloc] initWithIdentifier:name name:nameIn(information, name)] autorelease]];
  }
  return apps;
}

NSMutableArray *QVDeviceShareExtensions(void) {
  NSMutableArray *const extensions = [NSMutableArray array];
  for (const std::string &app : qvdevice::deviceFolderEntries("Apps")) {
    if (isOurs(app)) continue;
    const std::string folder = "Apps/" + app + "/PlugIns";
    for (const std::string &name : qvdevice::deviceFolderEntries(folder)) {
      NSDictionary *const information = informationIn(folder + '/' + name);
      id const identifier = [information objectForKey:@"CFBundleIdentifier"];
      id const extension = [information objectForKey:@"NSExtension"];
      if (![identifier isKindOfClass:[NSString class]] || ![extension isKindOfClass:[NSDictionary class]] ||
          ![[extension objectForKey:@"NSExtensionPointIdentifier"] isEqual:kShareServices])
        continue;
      [extensions addObject:[[[QVDeviceShareExtension alloc] initWithIdentifier:identifier
                                                                           name:nameIn(information, identifier)
                                                                    application:stringFrom(app)] autorelease]];
    }
  }
  return extensions;
}
