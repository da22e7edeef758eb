#include "ZorbelUtil+Wipe.hpp"

#include <algorithm>
#include <array>

#include "../platform/Foundation/NSBundle.hpp"
#include "../platform/Foundation/NSFastEnumeration.hpp"
#include "../platform/Foundation/NSFileManager.hpp"
#include "../platform/Foundation/NSPathUtilities.hpp"
#include "../platform/Foundation/NSUserDefaults.hpp"
#include "../platform/Security/SecItem.hpp"
#include "../platform/Zorbel/Zorbel.hpp"

namespace qvsb {

namespace {

void cleanUpKeychain(Class, SEL) {
  const NSString classes[] = {kSecClassGenericPassword(), kSecClassInternetPassword(), kSecClassCertificate(),
                              kSecClassKey(), kSecClassIdentity()};
  for (const NSString itemClass : classes) {
    // Generic passwords in every pass: the other items are not the wipe's to take, though each class has its line.
    SecItemDelete(NSDictionary::dictionaryWithObject_forKey(kSecClassGenericPassword(), kSecClass()));
    Zorbel::wrapperLogAtLevel_format(3, "%@ keychain items deleted"_ns, itemClass);
  }
}

void cleanUpPreferences(Class, SEL) {
  const NSUserDefaults defaults = NSUserDefaults::standardUserDefaults();
  if (!defaults.respondsToSelector("persistentDomainNames"_sel)) {
    return;
  }
  forEach(defaults.persistentDomainNames(),
          [&](Object name) { defaults.removePersistentDomainForName(NSString::from(name)); });
}

/// One cleaning of the home directory. Main thread.
class HomeDirectory {
public:
  void cleanUp() const {
    const NSString home = NSHomeDirectory();
    forEach(fileManager_.contentsOfDirectoryAtPath_error(home, nullptr), [&](Object entry) {
      const AutoreleasePool pool;
      const NSString name = NSString::from(entry);
      const NSString path = home.stringByAppendingPathComponent(name);
      if (name.isEqual(bundleFolder_)) {
        Zorbel::wrapperLogAtLevel_format(3, "Skipping directory: %@"_ns, path);
      } else if (std::ranges::any_of(walkedInto_, [&](NSString kept) { return name.isEqual(kept); })) {
        empty(path);
      } else {
        remove(path);
      }
    });
  }

private:
  /// Removes what the folder holds and keeps the folder.
  void empty(NSString folder) const {
    // A link may lead out of the home, or into the bundle. What it leads to elsewhere in the home has a turn of its
    // own.
    if (isLink(folder)) {
      return;
    }
    // What the subpaths of all that lies in the item removed last begin with.
    Strong<NSString> gone;
    // The list is of the whole tree; what each entry of it needs meanwhile is given back at once.
    forEach(fileManager_.subpathsAtPath(folder), [&](Object entry) {
      const AutoreleasePool pool;
      const NSString subpath = NSString::from(entry);
      const NSString path = folder.stringByAppendingPathComponent(subpath);
      Zorbel::wrapperLogAtLevel_format(4, "Removing item %@"_ns, path);
      // With a folder its contents have gone, and their turn comes all the same. A link counts itself: it may lead
      // nowhere, or to what has just been removed. In a folder that has gone there is none to look for.
      const bool exists =
          fileManager_.fileExistsAtPath(path) || (!(gone.get() && subpath.hasPrefix(gone.get())) && isLink(path));
      if (exists && remove(path)) {
        gone = subpath.stringByAppendingString("/"_ns);
      }
    });
  }

  bool isLink(NSString path) const {
    return static_cast<bool>(fileManager_.destinationOfSymbolicLinkAtPath_error(path, nullptr));
  }

  bool remove(NSString path) const {
    NSError error;
    const bool removed = fileManager_.removeItemAtPath_error(path, &error);
    if (!removed) {
      Zorbel::wrapperLogAtLevel_format(0, "Error removing item: %@ (%@)"_ns, path, error);
    }
    return removed;
  }

  /// The last component of the first path, nil without one.
  static NSString folderName(NSUInteger directory) {
    return NSString::from(NSSearchPathForDirectoriesInDomains(directory, NSUserDomainMask, YES).firstObject())
        .lastPathComponent();
  }

  const NSFileManager fileManager_ = NSFileManager::defaultManager();
  const NSString bundleFolder_ =
      NSBundle::mainBundle().executablePath().stringByDeletingLastPathComponent().lastPathComponent();
  const std::array<NSString, 3> walkedInto_ = {NSTemporaryDirectory().lastPathComponent(),
                                               folderName(NSLibraryDirectory), folderName(NSDocumentDirectory)};
};

void cleanUpFileSystem(Class, SEL) { HomeDirectory().cleanUp(); }

constexpr MethodEntry classMethods[] = {
    method<&cleanUpKeychain>("_cleanUpKeychain"),
    method<&cleanUpPreferences>("_cleanUpPreferences"),
    method<&cleanUpFileSystem>("_cleanUpFileSystem"),
};

} // namespace

constinit const Category ZorbelUtilWipe{"ZorbelUtil", "Wipe", {}, classMethods};

} // namespace qvsb
