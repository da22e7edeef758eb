#include "Probe.hpp"
#include "platform/objc/exception.hpp"
#include "platform/objc/verify.hpp"

#include <gtest/gtest.h>

using namespace qvsb;

namespace {

/// The reason of the exception that `body` raises; empty when it raises none.
template <class Body> std::string reasonOf(Body body) {
  std::string reason;
  tryCatch(body, [&](Object exception) {
    reason = NSException::from(exception).reason().UTF8String();
    return true;
  });
  return reason;
}

} // namespace

TEST(EncodingsAgree, ForTheSameCallWrittenDifferently) {
  EXPECT_TRUE(encodingsAgree("v16@0:8", "v16@0:8"));
  EXPECT_TRUE(encodingsAgree("v16@0:8", "v@:"));
  EXPECT_TRUE(encodingsAgree("v16@0:8", "Vv16@0:8")); // oneway
  EXPECT_TRUE(encodingsAgree("C24@0:8^@16", "C24@0:8o^@16"));
  EXPECT_TRUE(encodingsAgree("@24@0:8^v16", "@24@0:8^{_NSZone=^?Q}16"));
  EXPECT_TRUE(encodingsAgree("v24@0:8@16", "v24@0:8@\"NSString\"16"));
  EXPECT_TRUE(encodingsAgree("v24@0:8@?16", "v24@0:8@?<v@?C>16"));
  EXPECT_TRUE(encodingsAgree("v24@0:8r*16", "v24@0:8^c16"));
  EXPECT_TRUE(encodingsAgree("{CGRect={CGPoint=dd}{CGSize=dd}}16@0:8", "{CGRect={CGPoint=dd}{CGSize=dd}}@:"));
}

TEST(EncodingsAgree, NotForAnotherCall) {
  EXPECT_FALSE(encodingsAgree("v16@0:8", "C16@0:8"));
  EXPECT_FALSE(encodingsAgree("v16@0:8", "v24@0:8@16"));
  EXPECT_FALSE(encodingsAgree("v24@0:8@16", "v16@0:8"));
  EXPECT_FALSE(encodingsAgree("v20@0:8i16", "v24@0:8q16"));
  EXPECT_FALSE(encodingsAgree("v24@0:8d16", "v20@0:8f16"));
  EXPECT_FALSE(encodingsAgree("v24@0:8@16", "v24@0:8^v16"));
  EXPECT_FALSE(encodingsAgree("{CGRect={CGPoint=dd}{CGSize=dd}}16@0:8", "{CGSize=dd}16@0:8"));
  EXPECT_FALSE(encodingsAgree("", "v16@0:8"));
}

TEST(EncodingsAgree, EndsOnMalformedEncodings) {
  for (const char* broken : {"{", "^", "@\"", "{CGRect={", "@?<", "(a", "[12", "r", "^^^^"}) {
    encodingsAgree(broken, broken);
    encodingsAgree(broken, "v16@0:8");
    EXPECT_FALSE(encodingsAgree("v16@0:8", broken)) << broken;
  }
}

TEST(CheckSend, OfAWrongSignatureNamesClassSelectorAndBothEncodings) {
  const Strong<QVProbe> probe = QVProbe::make();
  EXPECT_EQ(reasonOf([&] { checkSend(probe.get(), "setNumber:"_sel, "v20@0:8i16"); }),
            "invalid message send to -[QVProbe setNumber:]: sent as v20@0:8i16, but the method is v24@0:8q16");
  EXPECT_EQ(reasonOf([&] { checkSend(QVProbe::classObject(), "live"_sel, "@16@0:8"); }),
            "invalid message send to +[QVProbe live]: sent as @16@0:8, but the method is i16@0:8");
}

TEST(CheckSend, OfTheRightSignatureOrAnUnknownMethodSaysNothing) {
  const Strong<QVProbe> probe = QVProbe::make();
  EXPECT_EQ(reasonOf([&] { checkSend(probe.get(), "setNumber:"_sel, "v24@0:8q16"); }), "");
  EXPECT_EQ(reasonOf([&] { checkSend(probe.get(), "perhapsForwarded:"_sel, "v24@0:8q16"); }), "");
}

#if QVSB_CHECK_SENDS
TEST(Send, WithAWrongSignatureRaisesInsteadOfCallingInDebugBuilds) {
  const Strong<QVProbe> probe = QVProbe::make();
  probe->setNumber(7);
  EXPECT_EQ(reasonOf([&] { send<void>(probe.get(), "setNumber:"_sel, 1.5); }),
            "invalid message send to -[QVProbe setNumber:]: sent as v24@0:8d16, but the method is v24@0:8q16");
  EXPECT_EQ(probe->number(), 7);
}
#endif
