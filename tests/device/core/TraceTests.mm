// The trace: one JSON text for each event, in the order of what happened.

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

#include <fstream>
#include <iterator>
#include <nlohmann/json.hpp>
#include <string>

#include "Child.h"

namespace {

using Json = nlohmann::json;

/// What the starter writes to its trace, which is its standard output.
ChildResult traced(const std::string &what) {
  return runStarter({what}, {{"QVDEVICE_CONTAINER", freshFolder()}, {"QVDEVICE_TRACE_FD", "1"}});
}

} // namespace

TEST(Trace, WithoutADescriptorIsNotWritten) {
  const ChildResult result = runStarter({"trace"}, {{"QVDEVICE_CONTAINER", freshFolder()}});
  EXPECT_EQ(result.status, 0);
  EXPECT_EQ(result.output, "");
  EXPECT_EQ(result.errors, "");
}

TEST(Trace, IsOneRecordForEachEvent) {
  const std::string output = traced("trace").output;
  ASSERT_FALSE(output.empty());
  EXPECT_EQ(output.front(), '\x1e');
  EXPECT_EQ(output.back(), '\n');
  EXPECT_EQ(output.find('\x1e', 1), std::string::npos);
  Json event = Json::parse(output.substr(1));
  ASSERT_TRUE(event.contains("t"));
  EXPECT_GE(event["t"].get<double>(), 0);
  EXPECT_LT(event["t"].get<double>(), 60000);
  event.erase("t");
  EXPECT_EQ(event, Json::parse(R"({"kind":"test","text":"line\n\"quoted\" \u00e9","number":-3,"double":1.5,"yes":true,
      "list":[1,null,"two"],"inner":{"key":"value"},"other":"scheme:rest"})"));
}

TEST(Trace, BeginsWithTheKindAndSortsTheRest) {
  EXPECT_EQ(traced("trace").output.find("{\"kind\":\"test\",\"double\":"), 1U);
}

TEST(Trace, OfManyThreadsKeepsEveryRecordWhole) {
  const std::string output = traced("trace-threads").output;
  std::size_t events = 0;
  for (std::size_t begin = 0; begin < output.size();) {
    ASSERT_EQ(output[begin], '\x1e');
    const std::size_t end = output.find('\n', begin);
    ASSERT_NE(end, std::string::npos);
    const Json event = Json::parse(output.substr(begin + 1, end - begin - 1));
    EXPECT_EQ(event["text"].get<std::string>().size(), 500U);
    ++events;
    begin = end + 1;
  }
  EXPECT_EQ(events, 400U);
}

TEST(Trace, ThatNobodyReadsAnyMoreDoesNotEndTheProcess) {
  const ChildResult result =
      runStarter({"trace-closed"}, {{"QVDEVICE_CONTAINER", freshFolder()}, {"QVDEVICE_TRACE_FD", "1"}});
  EXPECT_EQ(result.status, 0);
}
