#include "../platform/UIKit/UIDocument.hpp"
#include "FileProtection.hpp"
#include "NSFileManager+Helpers.hpp"

namespace qvsb {

namespace {

using SaveHandler = Block<void(BOOL)>;

void sb_saveToURL_forSaveOperation_completionHandler(UIDocument self, SEL, NSURL url, UIDocumentSaveOperation operation,
                                                     SaveHandler handler) {
  // The platform keeps a copy of the block until the save has ended, on whatever queue that is.
  auto protectThenTell =
      makeBlock<void(BOOL)>([target = Strong<NSURL>(url), handler = Copied<SaveHandler>(handler)](BOOL success) {
        if (success) {
          forceFileProtectionForItemAtURL(target);
        }
        // Not asked whether there is one: a host that saves without a handler is not provided for.
        handler.get()(success);
      });
  send<void>(self, "sb_saveToURL:forSaveOperation:completionHandler:"_sel, url, operation, protectThenTell.get());
}

BOOL sb_writeContents_andAttributes_safelyToURL(UIDocument self, SEL, Object contents, NSDictionary attributes,
                                                NSURL url, UIDocumentSaveOperation operation, NSError* error) {
  const BOOL written = send<BOOL>(self, "sb_writeContents:andAttributes:safelyToURL:forSaveOperation:error:"_sel,
                                  contents, attributes, url, operation, error);
  if (written) {
    forceFileProtectionForItemAtURL(url);
  }
  return written;
}

BOOL sb_writeContents_toURL(UIDocument self, SEL, Object contents, NSURL url, UIDocumentSaveOperation operation,
                            NSURL originalContents, NSError* error) {
  const BOOL written = send<BOOL>(self, "sb_writeContents:toURL:forSaveOperation:originalContentsURL:error:"_sel,
                                  contents, url, operation, originalContents, error);
  if (written) {
    forceFileProtectionForItemAtURL(url);
  }
  return written;
}

constexpr Hook hooks[] = {
    hook<&sb_saveToURL_forSaveOperation_completionHandler>("saveToURL:forSaveOperation:completionHandler:",
                                                           "sb_saveToURL:forSaveOperation:completionHandler:"),
    hook<&sb_writeContents_andAttributes_safelyToURL>(
        "writeContents:andAttributes:safelyToURL:forSaveOperation:error:",
        "sb_writeContents:andAttributes:safelyToURL:forSaveOperation:error:"),
    hook<&sb_writeContents_toURL>("writeContents:toURL:forSaveOperation:originalContentsURL:error:",
                                  "sb_writeContents:toURL:forSaveOperation:originalContentsURL:error:"),
};

} // namespace

constinit const HookGroup UIDocumentSandbox{"UIDocumentSandboxInit", "UIDocument", HookedMethods::instance, hooks};

} // namespace qvsb

void UIDocumentSandboxInit() {
  using namespace qvsb;
  installHooks(UIDocumentSandbox, "Sandboxing UIDocument"_ns);
}
