#include "raise.hpp"

#include <string>

#include "exception.hpp"
#include "lookup.hpp"
#include "send.hpp"

namespace qvsb {

namespace {

Object makeString(const char* text) {
  return Message<Object(const char*)>::sendUnchecked(classNamed<"NSString">(), "stringWithUTF8String:"_sel, text);
}

} // namespace

void raiseInconsistency(std::initializer_list<const char*> pieces) {
  Object exception;
  {
    std::string reason;
    for (const char* piece : pieces) {
      reason += piece;
    }
    exception = Message<Object(Object, Object, Object)>::sendUnchecked(
        classNamed<"NSException">(), "exceptionWithName:reason:userInfo:"_sel,
        makeString("NSInternalInconsistencyException"), makeString(reason.c_str()), Object());
  }
  throwObject(exception);
}

} // namespace qvsb
