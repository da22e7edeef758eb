#include "implement.hpp"

#include "raise.hpp"
#include "verify.hpp"

namespace qvsb::detail {

namespace {

void addChecked(const ClassRecipe& recipe, Class cls, Class superclass, std::span<const MethodEntry> methods) {
  for (const MethodEntry& entry : methods) {
    checkOverride(superclass, recipe.className, selector(entry.selector), entry.types);
  }
  addMethods(cls, methods);
}

constexpr unsigned char kPointerAlignmentLog2 = 3;
static_assert((1UL << kPointerAlignmentLog2) == alignof(void*));

} // namespace

Class registerClass(const ClassRecipe& recipe, long& stateOffset) {
  const Class superclass(objc_lookUpClass(recipe.superclassName));
  if (!superclass) {
    raiseInconsistency({"class ", recipe.className, " cannot be registered: its superclass ", recipe.superclassName,
                        " does not exist"});
  }
  objc_class* raw = objc_allocateClassPair(superclass.rawClass(), recipe.className, 0);
  if (!raw) {
    raiseInconsistency({"class ", recipe.className, " cannot be registered: the name is taken"});
  }
  const Class cls(raw);
  // The pair is not visible to anybody yet, so a refusal below leaves nothing behind but its memory.
  // The ivar bears the class's name: GCC's runtime refuses one that a superclass has too.
  if (!class_addIvar(raw, recipe.className, recipe.stateSize, kPointerAlignmentLog2, "{?=}")) {
    raiseInconsistency({"class ", recipe.className, " cannot be registered: no room for its state"});
  }
  addMethods(cls, recipe.lifeCycle);
  addMethods(classOf(cls), recipe.allocation);
  addChecked(recipe, cls, superclass, recipe.instanceMethods);
  addChecked(recipe, classOf(cls), classOf(superclass), recipe.classMethods);
  for (const char* name : recipe.protocols) {
    if (const id protocol = objc_getProtocol(name)) {
      class_addProtocol(raw, protocol);
    }
  }
  objc_registerClassPair(raw);
  stateOffset = ivar_getOffset(class_getInstanceVariable(raw, recipe.className));
  return cls;
}

} // namespace qvsb::detail
