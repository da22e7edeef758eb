// Clang marks the metaclass of every class that it compiles with a bit which, to GCC's runtime, says that the class is
// still being put together at run time. The runtime then only stores what is added to it: a class method added later,
// or exchanged with an inherited one, was never found, and the next message to the class ended in an assertion. The
// device clears the bit as each module is loaded; this function takes the place of the runtime's own.
#include <dlfcn.h>

extern "C" {
// What a compiled module hands over: the layout that compilers and the runtime agree on.
struct objc_class_start {
  objc_class_start* class_pointer;
  objc_class_start* super_class;
  const char* name;
  long version;
  unsigned long info;
};
struct objc_symtab {
  unsigned long selectorCount;
  void* selectors;
  unsigned short classCount;
  unsigned short categoryCount;
  void* definitions[1]; // the classes first
};
struct objc_module {
  unsigned long version;
  unsigned long size;
  const char* name;
  objc_symtab* symbols;
};

void __objc_exec_class(objc_module* module);
}

namespace {
constexpr unsigned long inConstruction = 0x10;
}

void __objc_exec_class(objc_module* module) {
  static auto* const execute = reinterpret_cast<decltype(&__objc_exec_class)>(dlsym(RTLD_NEXT, "__objc_exec_class"));
  const objc_symtab* symbols = module->symbols;
  for (unsigned i = 0; i < symbols->classCount; ++i)
    // A class's isa is its metaclass from the start; both are plain data of the module.
    static_cast<objc_class_start*>(symbols->definitions[i])->class_pointer->info &= ~inConstruction;
  execute(module);
}
