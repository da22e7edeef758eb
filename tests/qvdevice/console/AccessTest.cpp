// Who may speak to a console.
#include "Access.h"

#include <set>

#include <gtest/gtest.h>

namespace {

using qvdevice::Access;

const std::string kToken = "0123456789abcdef0123456789abcdef";

TEST(Token, isHexadecimalAndOf128BitsAndNeverTheSame) {
  std::set<std::string> tokens;
  for (int i = 0; i < 100; ++i) {
    const std::string token = qvdevice::makeToken();
    EXPECT_EQ(token.size(), 32u);
    EXPECT_EQ(token.find_first_not_of("0123456789abcdef"), std::string::npos) << token;
    tokens.insert(token);
  }
  EXPECT_EQ(tokens.size(), 100u);
}

TEST(Access, hasAnAddressWithItsToken) {
  EXPECT_EQ(Access(kToken, 8080).address(), "http://127.0.0.1:8080/" + kToken + "/");
}

TEST(Access, knowsItsHostByItsAddressAndByItsName) {
  const Access access(kToken, 8080);
  EXPECT_TRUE(access.isOurHost("127.0.0.1:8080"));
  EXPECT_TRUE(access.isOurHost("localhost:8080"));
}

TEST(Access, takesNoHostThatLeadsHereByAnothersDoing) {
  const Access access(kToken, 8080);
  for (const char* host : {"", "127.0.0.1", "127.0.0.1:80", "127.0.0.1:80800", "localhost", "evil.example:8080",
                           "127.0.0.1.evil.example:8080", "localhost:8080.evil.example", "[::1]:8080", "127.1:8080"}) {
    EXPECT_FALSE(access.isOurHost(host)) << host;
  }
}

TEST(Access, takesOnlyPagesOfItsOwnAsOrigin) {
  const Access access(kToken, 8080);
  EXPECT_TRUE(access.isOurOrigin("http://127.0.0.1:8080"));
  EXPECT_TRUE(access.isOurOrigin("http://localhost:8080"));
  for (const char* origin : {"", "null", "http://evil.example", "http://127.0.0.1", "https://127.0.0.1:8080",
                             "http://127.0.0.1:8081", "127.0.0.1:8080", "http://127.0.0.1:8080/"}) {
    EXPECT_FALSE(access.isOurOrigin(origin)) << origin;
  }
}

TEST(Access, findsWhatStandsBehindTheToken) {
  const Access access(kToken, 8080);
  EXPECT_EQ(access.behindToken("/" + kToken + "/"), "/");
  EXPECT_EQ(access.behindToken("/" + kToken + "/a/b"), "/a/b");
}

TEST(Access, findsNothingBehindAnotherToken) {
  const Access access(kToken, 8080);
  std::string last = kToken;
  last.back() = '0';
  for (const std::string& path :
       {std::string(), std::string("/"), std::string("//"), "/" + kToken, kToken + "/", "/" + last + "/",
        "/" + kToken.substr(1) + "/", "/" + kToken + "0/", "//" + kToken + "/", "/x/" + kToken + "/"}) {
    EXPECT_EQ(access.behindToken(path), "") << path;
  }
}

} // namespace
