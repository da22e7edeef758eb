#include "AppWindowInfo.hpp"

#include "../platform/objc/implement.hpp"

namespace qvsb {

namespace {

class Implementation : public Implements<Implementation> {
public:
  static constexpr const char* className = "AppWindowInfo";
  static constexpr const char* superclassName = "NSObject";

  UIWindow appWindow() const { return window_.get(); }
  void setAppWindow(UIWindow window) { window_ = window; }
  UIWindowLevel appWindowLevel() const { return level_; }
  void setAppWindowLevel(UIWindowLevel level) { level_ = level; }

  static constexpr MethodEntry instanceMethods[] = {
      member<&Implementation::appWindow>("appWindow"),
      member<&Implementation::setAppWindow>("setAppWindow:"),
      member<&Implementation::appWindowLevel>("appWindowLevel"),
      member<&Implementation::setAppWindowLevel>("setAppWindowLevel:"),
  };

private:
  Weak<UIWindow> window_;
  UIWindowLevel level_ = 0;
};

} // namespace

Class registerAppWindowInfo() { return registerClass<Implementation>(); }

} // namespace qvsb
