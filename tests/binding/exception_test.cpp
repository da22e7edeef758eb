#include "Probe.hpp"
#include "platform/objc/exception.hpp"

#include <stdexcept>
#include <string>

#include <gtest/gtest.h>

using namespace qvsb;

namespace {

struct Tracer {
  std::string& trace;
  const char* mark;
  ~Tracer() { trace += mark; }
};

void raiseUnder(QVProbe probe, std::string& trace) {
  const Tracer inner{trace, "inner "};
  probe.raise();
}

std::string nameOf(Object exception) { return NSException::from(exception).name().UTF8String(); }

} // namespace

TEST(Exception, FromObjectiveCRunsTheDestructorsOfTheCppFramesThatItCrosses) {
  const Strong<QVProbe> probe = QVProbe::make();
  std::string trace;
  std::string name;
  tryCatch(
      [&] {
        const Tracer outer{trace, "outer "};
        raiseUnder(probe, trace);
        trace += "not reached";
      },
      [&](Object exception) {
        trace += "caught";
        name = nameOf(exception);
        return true;
      });
  EXPECT_EQ(trace, "inner outer caught");
  EXPECT_EQ(name, "QVProbeException");
}

TEST(Exception, ThatTheHandlerDeclinesGoesOnUnchanged) {
  const Strong<QVProbe> probe = QVProbe::make();
  Object declined;
  Object arrived;
  tryCatch(
      [&] {
        tryCatch([&] { probe->raise(); },
                 [&](Object exception) {
                   declined = exception;
                   return false;
                 });
      },
      [&](Object exception) {
        arrived = exception;
        return true;
      });
  EXPECT_TRUE(declined);
  EXPECT_EQ(declined, arrived);
}

TEST(Exception, NeedNotBeAnNSException) {
  const Strong<QVProbe> probe = QVProbe::make();
  std::string thrown;
  tryCatch([&] { send<void>(probe.get(), "throwNonException"_sel); },
           [&](Object object) {
             thrown = NSString::from(object).UTF8String();
             return true;
           });
  EXPECT_EQ(thrown, "a string");
}

TEST(Exception, WithoutOneTheHandlerIsNotCalled) {
  int calls = 0;
  tryCatch([&] { ++calls; }, [&](Object) { return calls += 100, true; });
  EXPECT_EQ(calls, 1);
}

TEST(Exception, FinallyRunsWithAndWithoutAndAfterwardsItGoesOn) {
  const Strong<QVProbe> probe = QVProbe::make();
  std::string trace;
  tryFinally([&] { trace += "body "; }, [&] { trace += "finally "; });
  tryCatch([&] { tryFinally([&] { probe->raise(); }, [&] { trace += "finally "; }); },
           [&](Object exception) {
             trace += nameOf(exception);
             return true;
           });
  EXPECT_EQ(trace, "body finally finally QVProbeException");
}

TEST(Exception, ThrownByUsIsTheVeryObject) {
  const Strong<QVProbe> probe = QVProbe::make();
  Object caught;
  tryCatch([&] { throwObject(probe.get()); },
           [&](Object object) {
             caught = object;
             return true;
           });
  EXPECT_EQ(caught, probe.get());
}

TEST(Exception, PassesACppHandlerOfAnotherTypeAndIsSeenByCatchAll) {
  const Strong<QVProbe> probe = QVProbe::make();
  std::string trace;
  tryCatch(
      [&] {
        try {
          probe->raise();
        } catch (const std::exception&) {
          trace += "wrong";
        }
      },
      [&](Object) {
        trace += "objc ";
        return true;
      });
  tryCatch(
      [&] {
        try {
          probe->raise();
        } catch (...) {
          trace += "all ";
          throw;
        }
      },
      [&](Object) {
        trace += "objc";
        return true;
      });
  EXPECT_EQ(trace, "objc all objc");
}

TEST(Exception, OfCppIsNotTakenForOneOfObjectiveC) {
  bool handled = false;
  EXPECT_THROW(tryCatch([] { throw std::runtime_error("c++"); },
                        [&](Object) {
                          handled = true;
                          return true;
                        }),
               std::runtime_error);
  EXPECT_FALSE(handled);
}

TEST(Exception, ReleasesWhatStrongHeldInTheFramesItCrossed) {
  const int before = QVProbe::live();
  tryCatch(
      [&] {
        const Strong<QVProbe> probe = QVProbe::make();
        probe->raise();
      },
      [](Object) { return true; });
  EXPECT_EQ(QVProbe::live(), before);
}

TEST(Exception, OutlivesThePoolsThatItUnwindsThrough) {
  const Strong<QVProbe> probe = QVProbe::make();
  std::string reason;
  tryCatch(
      [&] {
        const AutoreleasePool outer;
        const AutoreleasePool inner;
        probe->raise();
      },
      [&](Object exception) {
        reason = NSException::from(exception).reason().UTF8String();
        return true;
      });
  EXPECT_EQ(reason, "raised by probe");
}
