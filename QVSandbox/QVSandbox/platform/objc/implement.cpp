#include "implement.hpp"

#include "raise.hpp"
#include "verify.hpp"

namespace qvsb::detail {

namespace {

void checkOverrides(const ClassRecipe& recipe, Class superclass, std::span<const MethodEntry> methods) {
  for (const MethodEntry& entry : methods) {
    checkOverride(superclass, recipe.className, selector(entry.selector), entry.types);
  }
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
  checkOverrides(recipe, superclass, recipe.instanceMethods);
  checkOverrides(recipe, classOf(superclass), recipe.classMethods);
  objc_class* raw = objc_allocateClassPair(superclass.rawClass(), recipe.className, 0);
  if (!raw) {
    raiseInconsistency({"class ", recipe.className, " cannot be registered: the name is taken"});
  }
  const Class cls(raw);
  // The ivar bears the class's name: GCC's runtime refuses one that a superclass has too.
  if (!class_addIvar(raw, recipe.className, recipe.stateSize, kPointerAlignmentLog2, "{?=}")) {
    objc_disposeClassPair(raw);
    raiseInconsistency({"class ", recipe.className, " cannot be registered: no room for its state"});
  }
  addMethods(cls, recipe.lifeCycle);
  addMethods(classOf(cls), recipe.allocation);
  addMethods(cls, recipe.instanceMethods);
  addMethods(classOf(cls), recipe.classMethods);
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
