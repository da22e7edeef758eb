// Blocks are objects: the classes that compilers name in every block, and what blocks answer to.

#import <Foundation/Foundation.h>
#include <objc/runtime.h>

#include "runtime/Blocks.h"

@interface NSBlock : NSObject <NSCopying>
@end

@implementation NSBlock

- (id)copy {
  return static_cast<id>(_Block_copy(self));
}

- (id)copyWithZone:(NSZone *)zone {
  (void)zone;
  return static_cast<id>(_Block_copy(self));
}

- (id)retain {
  // A block that is still in its function's frame is not moved by being retained, only by being copied.
  if (qvdevice::isCounted(self)) _Block_copy(self);
  return self;
}

- (oneway void)release {
  _Block_release(self);
}

- (id)autorelease {
  if (!qvdevice::isCounted(self)) return self;
  return [super autorelease];
}

- (NSUInteger)retainCount {
  return qvdevice::blockCount(self);
}

- (BOOL)retainWeakReference {
  return qvdevice::retainBlockIfAlive(self) ? YES : NO;
}

- (BOOL)allowsWeakReference {
  return qvdevice::blockCount(self) > 0 ? YES : NO;
}

- (BOOL)isEqual:(id)other {
  return self == other ? YES : NO;
}

- (NSUInteger)hash {
  return reinterpret_cast<NSUInteger>(self) >> 4;
}

- (NSString *)description {
  return [NSString stringWithFormat:@"<%@: %p>", NSStringFromClass([self class]), static_cast<void *>(self)];
}

- (void)invoke {
  reinterpret_cast<qvdevice::Block *>(self)->invoke(self);
}

@end

extern "C" {

void *_NSConcreteStackBlock[qvdevice::kClassWords];
void *_NSConcreteMallocBlock[qvdevice::kClassWords];
void *_NSConcreteGlobalBlock[qvdevice::kClassWords];
// Of collected memory, which no release of the platform has; compilers may still name them.
void *_NSConcreteAutoBlock[qvdevice::kClassWords];
void *_NSConcreteFinalizingBlock[qvdevice::kClassWords];
void *_NSConcreteWeakBlockVariable[qvdevice::kClassWords];
}

namespace {

/// A class as GCC's compilers hand it to the runtime. While it is being handed over, classes are still referred to by
/// name.
struct CompiledClass {
  const void *classPointer;
  const char *superclass;
  const char *name;
  long version;
  unsigned long info;
  long instanceSize;
  void *ivars;
  void *methods;
  void *dispatchTable;
  void *subclasses;
  void *siblings;
  void *protocols;
  void *collectorType;
};
static_assert(sizeof(CompiledClass) <= sizeof _NSConcreteStackBlock);

enum : unsigned long { kIsClass = 1, kIsMetaclass = 2 };

struct SymbolTable {
  unsigned long selectorCount;
  void *selectors;
  unsigned short classCount;
  unsigned short categoryCount;
  void *definitions[4];
};

struct Module {
  unsigned long version;
  unsigned long size;
  const char *name;
  SymbolTable *symbols;
};

constexpr unsigned long kModuleVersion = 8;

extern "C" void __objc_exec_class(Module *module);

CompiledClass metaclasses[3];

void *define(int index, void **place, const char *name) {
  metaclasses[index] = {"NSObject", "NSBlock", name, 0, kIsMetaclass, sizeof(CompiledClass), {}, {}, {},
                        {},         {},        {},   {}};
  auto *defined = reinterpret_cast<CompiledClass *>(place);
  *defined = {&metaclasses[index], "NSBlock", name, 0, kIsClass, sizeof(qvdevice::Block), {}, {}, {}, {}, {}, {}, {}};
  return place;
}

/// Hands the classes to the runtime where they lie, as a compiled module does. (A copy of a class would miss every
/// later change of its methods, since the runtime would not know of it.)
__attribute__((constructor(102))) void registerBlockClasses() {
  static SymbolTable symbols = {0,
                                nullptr,
                                3,
                                0,
                                {define(0, _NSConcreteStackBlock, "__NSStackBlock__"),
                                 define(1, _NSConcreteMallocBlock, "__NSMallocBlock__"),
                                 define(2, _NSConcreteGlobalBlock, "__NSGlobalBlock__"), nullptr}};
  static Module module = {kModuleVersion, sizeof(Module), "blocks", &symbols};
  __objc_exec_class(&module);
}

} // namespace
