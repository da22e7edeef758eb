#include "observation/Hooks.h"

#include <algorithm>
#include <mutex>
#include <string_view>

#include "container/Trace.h"
#include "observation/CallCounters.h"
#include "observation/Library.h"

namespace qvdevice {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::string_view kPrefix = "sb_";
constexpr std::string_view kGraftPrefix = "zb_";
/// Where the library keeps what it grafts onto the class of whatever delegate the app has.
constexpr std::string_view kGrafts = "ZBWrappedApplicationDelegate";
/// It marks a class and stands in front of nothing.
constexpr std::string_view kMarker = "zb_markerMethod";
constexpr char kGraftInstaller[] = "UIApplicationDelegateSwizzle";

/// A replacement that the library has brought, and on which class.
struct Replacement {
  Class cls;
  std::string selector;
  IMP implementation;
  bool taken;         // the class has a method of that name from somebody else
  bool tried = false; // an exchange has been tried
};

/// A method that the library has tried to put a replacement in front of.
struct Hook {
  std::string cls;
  bool ofClass;
  std::string selector;
  std::string replacement;
  Method method;      // null when refused
  IMP implementation; // the library's
  std::string why;
  int counter = -1; // of its calls; -1 when they are not counted
};

struct Registry {
  std::mutex lock;
  std::vector<Replacement> replacements;
  std::vector<Hook> hooks;
};

Registry &registry() {
  static Registry &one = *new Registry;
  return one;
}

const void *address(IMP implementation) { return reinterpret_cast<const void *>(implementation); }

std::string nameOf(Class cls) { return class_getName(cls); }

bool isGraft(const std::string &replacement) { return replacement.starts_with(kGraftPrefix); }

/// The platform's selector: the replacement's without its prefix, as far as the names tell.
std::string originalOf(const std::string &replacement) { return replacement.substr(kPrefix.size()); }

bool isReplacement(const std::string &selector) {
  return (selector.starts_with(kPrefix) || selector.starts_with(kGraftPrefix)) && selector != kMarker;
}

bool inherits(Class cls, Class from) {
  for (; cls; cls = class_getSuperclass(cls))
    if (cls == from) return true;
  return false;
}

std::string methodText(const std::string &cls, bool ofClass, const std::string &selector) {
  return (ofClass ? "+[" : "-[") + cls + " " + selector + "]";
}

Json installerOf(const std::string &cls, const std::string &replacement) {
  const std::string function = isGraft(replacement) ? kGraftInstaller : cls + "SandboxInit";
  return isExportedByLibrary(function) ? Json(function) : Json(nullptr);
}

Json describe(const std::string &cls, bool ofClass, const std::string &selector, const std::string &replacement,
              const char *state, const std::string &why) {
  Json hook{{"class", cls},
            {"selector", selector},
            {"classMethod", ofClass},
            {"replacement", replacement},
            {"installer", installerOf(cls, replacement)},
            {"state", state}};
  if (!why.empty()) hook["why"] = why;
  return hook;
}

Json describe(const Hook &hook) {
  const auto with = [&](const char *state, const std::string &why) {
    Json description = describe(hook.cls, hook.ofClass, hook.selector, hook.replacement, state, why);
    if (hook.counter >= 0) description["counter"] = hook.counter;
    return description;
  };
  if (!hook.method) return with("refused", hook.why);
  const IMP now = uncounted(method_getImplementation(hook.method));
  if (isInLibrary(address(now))) return with("installed", "");
  const std::string image = imageAt(address(now));
  return with("replaced", image.empty() ? "an image that nobody knows" : image);
}

/// One that no exchange was tried with: the platform lacks the method, or the installer had stopped before it.
Json describe(const Replacement &left) {
  const std::string original = originalOf(left.selector);
  const bool ofClass = class_isMetaClass(left.cls);
  const auto with = [&](const char *state, const char *why) {
    return describe(nameOf(left.cls), ofClass, original, left.selector, state, why);
  };
  if (nameOf(left.cls) == kGrafts) return with("absent", "no application delegate has been given it");
  if (!class_getInstanceMethod(left.cls, sel_registerName(original.c_str())))
    return with("absent", "this release has no such method");
  return with("refused", "not tried after another hook of the class was refused");
}

/// Replacements on whose own nothing is known. Those of the delegate are spoken for by whatever class has been given
/// one.
std::vector<Replacement> leftAlone(const Registry &all) {
  std::vector<Replacement> left;
  const bool grafted =
      std::any_of(all.hooks.begin(), all.hooks.end(), [](const Hook &hook) { return isGraft(hook.replacement); });
  for (const Replacement &replacement : all.replacements)
    if (!replacement.tried && !(grafted && nameOf(replacement.cls) == kGrafts)) left.push_back(replacement);
  return left;
}

void traceHook(Json description) {
  Json record{{"kind", "hook"}};
  record.update(description);
  trace(std::move(record));
}

/// Calls of the library's own replacement are counted from now on.
void count(Hook &hook) {
  if (!hook.method || !isInLibrary(address(hook.implementation))) return;
  const CountedCall call = counted(hook.implementation);
  if (call.counter < 0) return;
  method_setImplementation(hook.method, call.implementation);
  hook.counter = call.counter;
}

void add(Hook hook) {
  count(hook);
  {
    const std::lock_guard locked(registry().lock);
    registry().hooks.push_back(hook);
  }
  traceHook(describe(hook));
}

template <class Condition> std::string findHooked(Condition condition) {
  const std::lock_guard locked(registry().lock);
  const auto &hooks = registry().hooks;
  const auto hook = std::find_if(hooks.begin(), hooks.end(), condition);
  return hook == hooks.end() ? std::string() : methodText(hook->cls, hook->ofClass, hook->selector);
}

/// The name under which the library keeps an implementation that it has given to a delegate's class.
std::string graftOf(IMP implementation) {
  const std::lock_guard locked(registry().lock);
  for (const Replacement &replacement : registry().replacements)
    if (replacement.implementation == implementation && nameOf(replacement.cls) == kGrafts) return replacement.selector;
  return {};
}

} // namespace

void noteAddition(Class cls, SEL selector, IMP implementation, bool added) {
  const std::string name = sel_getName(selector);
  if (isReplacement(name)) {
    // On a delegate's class this is the first half of an exchange.
    if (isGraft(name) && nameOf(cls) != kGrafts) return;
    const std::lock_guard locked(registry().lock);
    registry().replacements.push_back({cls, name, implementation, !added});
    return;
  }
  // A delegate without a method of its own is given the replacement under the platform's name.
  if (const std::string graft = graftOf(implementation); added && !graft.empty())
    add({nameOf(cls), false, name, graft, class_getInstanceMethod(cls, selector), implementation, {}});
}

void noteExchange(Class cls, SEL original, SEL replacement, bool exchanged, const std::string &why) {
  const std::string name = sel_getName(replacement);
  if (!isReplacement(name)) return;
  {
    const std::lock_guard locked(registry().lock);
    for (Replacement &known : registry().replacements)
      if (known.selector == name && inherits(cls, known.cls)) known.tried = true;
  }
  Hook hook{nameOf(cls), static_cast<bool>(class_isMetaClass(cls)), sel_getName(original), name, nullptr, nullptr, why};
  if (exchanged) {
    hook.method = class_getInstanceMethod(cls, original);
    hook.implementation = method_getImplementation(hook.method);
  }
  add(hook);
}

void noteImplementation(const objc_method *method) {
  Json description;
  {
    const std::lock_guard locked(registry().lock);
    const auto &hooks = registry().hooks;
    const auto hook =
        std::find_if(hooks.begin(), hooks.end(), [&](const Hook &known) { return known.method == method; });
    if (hook == hooks.end()) return;
    description = describe(*hook);
  }
  traceHook(std::move(description));
}

void traceHooksLeftAlone() {
  std::vector<Replacement> left;
  {
    const std::lock_guard locked(registry().lock);
    left = leftAlone(registry());
  }
  for (const Replacement &replacement : left)
    // The delegate is still to come.
    if (nameOf(replacement.cls) != kGrafts) traceHook(describe(replacement));
}

std::vector<Json> hooks() {
  const std::lock_guard locked(registry().lock);
  std::vector<Json> all;
  for (const Hook &hook : registry().hooks)
    all.push_back(describe(hook));
  for (const Replacement &replacement : leftAlone(registry()))
    all.push_back(describe(replacement));
  return all;
}

std::string hookedMethodAt(const void *function) {
  return findHooked([&](const Hook &hook) { return hook.implementation && address(hook.implementation) == function; });
}

std::string hookedMethodOf(int counter) {
  return findHooked([&](const Hook &hook) { return counter >= 0 && hook.counter == counter; });
}

} // namespace qvdevice
