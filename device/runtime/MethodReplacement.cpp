// GCC's runtime updates the dispatch table of the one class that has the method, when an implementation is exchanged or
// replaced. A subclass whose table is not a plain copy of it goes on calling the old implementation: after an exchange
// in NSData, some of the classes behind NSData ran it and some did not. And an exchange in a class that has no table
// yet goes into the one table that all such classes share, where the next class finds it. Apple's runtime has no such
// gaps, so the device closes them, for everybody in the process: these functions take the place of the runtime's own.
#include <cstddef>
#include <utility>
#include <vector>

#include "observation/Implementations.h"

// The runtime's structures, of which its headers show only the names. The layout has been the same since 1993.
extern "C" {
struct objc_selector {
  void* sel_id;
  const char* sel_types;
};
struct objc_method {
  objc_selector* name;
  const char* types;
  void (*implementation)();
};
struct objc_method_list {
  objc_method_list* next;
  int count;
  objc_method methods[1];
};
struct sarray;
struct objc_class {
  objc_class* class_pointer;
  objc_class* super_class;
  const char* name;
  long version;
  unsigned long info;
  long instance_size;
  void* ivars;
  objc_method_list* methods;
  sarray* dtable;
  objc_class* subclass_list;
  objc_class* sibling_class;
};

extern sarray* __objc_uninstalled_dtable;
extern void* __objc_runtime_mutex;
int objc_mutex_lock(void* mutex);
int objc_mutex_unlock(void* mutex);
int objc_getClassList(objc_class** classes, int size);
unsigned char class_addMethod(objc_class* cls, objc_selector* selector, void (*implementation)(), const char* types);
void __objc_update_dispatch_table_for_class(objc_class* cls);
void sarray_at_put_safe(sarray* array, std::size_t index, void* element);

void method_exchangeImplementations(objc_method* left, objc_method* right);
void (*method_setImplementation(objc_method* method, void (*implementation)()))();
void (*class_replaceMethod(objc_class* cls, objc_selector* selector, void (*implementation)(), const char* types))();
}

namespace {

class RuntimeLock {
public:
  RuntimeLock() { objc_mutex_lock(__objc_runtime_mutex); }
  ~RuntimeLock() { objc_mutex_unlock(__objc_runtime_mutex); }
  RuntimeLock(const RuntimeLock&) = delete;
  RuntimeLock& operator=(const RuntimeLock&) = delete;
};

bool owns(const objc_class* cls, const objc_method* method) {
  for (const objc_method_list* list = cls->methods; list; list = list->next)
    if (method >= list->methods && method < list->methods + list->count) return true;
  return false;
}

objc_method* ownMethod(const objc_class* cls, const objc_selector* selector) {
  for (objc_method_list* list = cls->methods; list; list = list->next)
    for (int i = 0; i < list->count; ++i)
      if (list->methods[i].name->sel_id == selector->sel_id) return &list->methods[i];
  return nullptr;
}

/// The class, or metaclass, whose own method this is; null for a method of no class. `likely` is looked at first.
objc_class* ownerOf(const objc_method* method, objc_class* likely) {
  if (likely && owns(likely, method)) return likely;
  std::vector<objc_class*> classes(static_cast<std::size_t>(objc_getClassList(nullptr, 0)));
  const int count = objc_getClassList(classes.data(), static_cast<int>(classes.size()));
  classes.resize(static_cast<std::size_t>(count) < classes.size() ? static_cast<std::size_t>(count) : classes.size());
  for (objc_class* cls : classes) {
    if (owns(cls, method)) return cls;
    if (owns(cls->class_pointer, method)) return cls->class_pointer;
  }
  return nullptr;
}

/// Enters the method into the class's table. A class without a table gets it when it makes one; one that is running its
/// `+initialize` has made it and keeps it elsewhere, where only the runtime finds it.
void tell(objc_class* cls, const objc_method* method) {
  if (cls->dtable != __objc_uninstalled_dtable)
    sarray_at_put_safe(cls->dtable, reinterpret_cast<std::size_t>(method->name->sel_id),
                       reinterpret_cast<void*>(method->implementation));
  else
    __objc_update_dispatch_table_for_class(cls);
}

/// Enters the method into the tables of all that inherit it.
void tellHeirs(const objc_class* owner, const objc_method* method) {
  for (objc_class* heir = owner->subclass_list; heir; heir = heir->sibling_class) {
    if (ownMethod(heir, method->name)) continue;
    tell(heir, method);
    tellHeirs(heir, method);
  }
}

/// Enters a method that has a new implementation wherever it is called. Answers the owner, the likely one of the next
/// method: an exchange is mostly one of two methods of one class, and finding a method's class means looking at all.
objc_class* tellAll(const objc_method* method, objc_class* likely = nullptr) {
  objc_class* const owner = ownerOf(method, likely);
  // A category's method may hide one of the same name in the same class.
  if (owner && ownMethod(owner, method->name) == method) {
    tell(owner, method);
    tellHeirs(owner, method);
  }
  return owner;
}

} // namespace

void method_exchangeImplementations(objc_method* left, objc_method* right) {
  if (!left || !right) return;
  {
    const RuntimeLock lock;
    std::swap(left->implementation, right->implementation);
    objc_class* const owner = tellAll(left);
    tellAll(right, owner);
  }
  qvdevice::noteImplementation(left);
  qvdevice::noteImplementation(right);
}

void (*method_setImplementation(objc_method* method, void (*implementation)()))() {
  if (!method || !implementation) return nullptr;
  void (*before)() = nullptr;
  {
    const RuntimeLock lock;
    before = std::exchange(method->implementation, implementation);
    tellAll(method);
  }
  qvdevice::noteImplementation(method);
  return before;
}

// The runtime's own replaces an inherited method in the superclass.
void (*class_replaceMethod(objc_class* cls, objc_selector* selector, void (*implementation)(), const char* types))() {
  if (!cls || !selector || !implementation) return nullptr;
  if (objc_method* own = ownMethod(cls, selector)) return method_setImplementation(own, implementation);
  class_addMethod(cls, selector, implementation, types);
  return nullptr;
}
