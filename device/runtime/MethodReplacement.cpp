// GCC's runtime updates the dispatch table of the one class that has the method, when an implementation is exchanged or
// replaced. A subclass whose table is not a plain copy of it goes on calling the old implementation: after an exchange
// in NSData, some of the classes behind NSData ran it and some did not. Apple's runtime has no such gap, so the device
// closes it, for everybody in the process: these functions take the place of the runtime's own.
#include <cstddef>
#include <dlfcn.h>
#include <vector>

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

template <class Function> Function* original(const char* name) {
  return reinterpret_cast<Function*>(dlsym(RTLD_NEXT, name));
}

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

/// The class, or metaclass, whose own method this is; null for a method of no class.
objc_class* ownerOf(const objc_method* method) {
  std::vector<objc_class*> classes(static_cast<std::size_t>(objc_getClassList(nullptr, 0)));
  const int count = objc_getClassList(classes.data(), static_cast<int>(classes.size()));
  classes.resize(static_cast<std::size_t>(count) < classes.size() ? static_cast<std::size_t>(count) : classes.size());
  for (objc_class* cls : classes) {
    if (owns(cls, method)) return cls;
    if (owns(cls->class_pointer, method)) return cls->class_pointer;
  }
  return nullptr;
}

/// Enters the method into the tables of all that inherit it. A class without a table gets it when it makes one.
void tellHeirs(const objc_class* owner, const objc_method* method) {
  for (objc_class* heir = owner->subclass_list; heir; heir = heir->sibling_class) {
    if (ownMethod(heir, method->name)) continue;
    if (heir->dtable != __objc_uninstalled_dtable)
      sarray_at_put_safe(heir->dtable, reinterpret_cast<std::size_t>(method->name->sel_id),
                         reinterpret_cast<void*>(method->implementation));
    tellHeirs(heir, method);
  }
}

void tellHeirs(const objc_method* method) {
  const RuntimeLock lock;
  if (const objc_class* owner = ownerOf(method)) tellHeirs(owner, method);
}

} // namespace

void method_exchangeImplementations(objc_method* left, objc_method* right) {
  static auto* const exchange = original<decltype(method_exchangeImplementations)>("method_exchangeImplementations");
  exchange(left, right);
  if (!left || !right) return;
  tellHeirs(left);
  tellHeirs(right);
}

void (*method_setImplementation(objc_method* method, void (*implementation)()))() {
  static auto* const set = original<decltype(method_setImplementation)>("method_setImplementation");
  const auto before = set(method, implementation);
  if (method && implementation) tellHeirs(method);
  return before;
}

// The runtime's own replaces an inherited method in the superclass.
void (*class_replaceMethod(objc_class* cls, objc_selector* selector, void (*implementation)(), const char* types))() {
  if (!cls || !selector || !implementation) return nullptr;
  if (objc_method* own = ownMethod(cls, selector)) return method_setImplementation(own, implementation);
  class_addMethod(cls, selector, implementation, types);
  return nullptr;
}
