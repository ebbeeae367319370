#include "transfer_address.h"

#include <gtest/gtest.h>

#include <functional>
#include <initializer_list>
#include <utility>

#include "transfer_failure.h"

namespace ovalink {
namespace {

std::string UrlOf(const TransferAddress& address) {
  return (address.is_secure ? "https://" : "http://") + address.host + ":" +
         std::to_string(address.port) + address.path;
}

/// The address that a step returns, or its failure's text.
std::string Outcome(const std::function<TransferAddress()>& step) {
  try {
    return UrlOf(step());
  } catch (const TransferFailure& failure) {
    return failure.text();
  }
}

std::string Asked(const std::string& server, const std::string& path,
                  const std::string& plain_http_servers = "") {
  return Outcome([&] { return AddressOf({server, path, ""}, plain_http_servers); });
}

TEST(TransferAddress, IsSecureByDefault) {
  EXPECT_EQ(Asked("updates.example", "/a.xml"), "https://updates.example:443/a.xml");
  EXPECT_EQ(Asked("updates.example:8443", "/a.xml"), "https://updates.example:8443/a.xml");
  EXPECT_EQ(Asked("https:", "//updates.example/a.xml"), "https://updates.example:443/a.xml");
  EXPECT_EQ(Asked("HTTPS:", "//updates.example"), "https://updates.example:443/");
}

TEST(TransferAddress, PathAndServerAreJoinedWithOneSlash) {
  EXPECT_EQ(Asked("updates.example", "a/b.xml"), "https://updates.example:443/a/b.xml");
  EXPECT_EQ(Asked("updates.example", ""), "https://updates.example:443/");
  EXPECT_EQ(Asked("updates.example", "//a.xml"), "https://updates.example:443//a.xml");
}

TEST(TransferAddress, SchemeGoesOnWithHoweverManyOfItsSlashesAreLeft) {
  for (const char* path :
       {"//updates.example/a.xml", "/updates.example/a.xml", "updates.example/a.xml"}) {
    EXPECT_EQ(Asked("https:", path), "https://updates.example:443/a.xml") << path;
  }
}

TEST(TransferAddress, LoopbackIsPlainUnlessItsSchemeSaysOtherwise) {
  EXPECT_EQ(Asked("127.0.0.1:8080", "/a"), "http://127.0.0.1:8080/a");
  EXPECT_EQ(Asked("LocalHost", "/a"), "http://LocalHost:80/a");
  EXPECT_EQ(Asked("[::1]:81", "/a"), "http://[::1]:81/a");
  EXPECT_EQ(Asked("http:", "//127.9.8.7/a"), "http://127.9.8.7:80/a");
  EXPECT_EQ(Asked("https:", "//127.0.0.1:8443/a"), "https://127.0.0.1:8443/a");
}

TEST(TransferAddress, LoopbackIsTheWholeNameOrAddress) {
  for (const char* host : {"localhost", "LOCALHOST", "127.0.0.1", "127.255.255.255", "[::1]"}) {
    EXPECT_TRUE(IsLoopback(host)) << host;
  }
  for (const char* host : {"", "127", "127.1", "127.0.0.256", "127.0.0.1.", "127.0.0.1.example",
                           "127.0.0", "128.0.0.1", "localhost.example", "notlocalhost", "[::2]",
                           "127.0.0.-1", "0127.0.0.x", "127..0.1",
                           // Numbers that the system reads as octal.
                           "0127.0.0.1", "127.0.0.01", "127.00.0.1"}) {
    EXPECT_FALSE(IsLoopback(host)) << host;
  }
}

TEST(TransferAddress, PlainHttpNeedsAnEntryOfTheUser) {
  const std::string refused = "Plain HTTP is not allowed for the server updates.example";
  EXPECT_EQ(Asked("http:", "//updates.example/a"), refused);
  EXPECT_EQ(Asked("http:", "//updates.example/a", "updates.example.org;other"), refused);
  EXPECT_EQ(Asked("http:", "//updates.example:81/a", "updates.example:80"), refused);
  EXPECT_EQ(Asked("http:", "//updates.example/a", "other; Updates.Example ;"),
            "http://updates.example:80/a");
  EXPECT_EQ(Asked("http:", "//updates.example:81/a", "updates.example:81"),
            "http://updates.example:81/a");
  EXPECT_EQ(Asked("http:", "//updates.example:81/a", "updates.example"),
            "http://updates.example:81/a");
}

TEST(TransferAddress, ListedServersAreAskedInPlainHttp) {
  EXPECT_EQ(Asked("Updates.example", "/a", "updates.example"), "http://Updates.example:80/a");
  EXPECT_EQ(Asked("updates.example:81", "/a", "updates.example:81"), "http://updates.example:81/a");
  EXPECT_EQ(Asked("updates.example:82", "/a", "updates.example:81"),
            "https://updates.example:82/a");
  EXPECT_EQ(Asked("https:", "//updates.example/a", "updates.example"),
            "https://updates.example:443/a");
}

TEST(TransferAddress, NamesAServerOrNothing) {
  for (const char* server : {"", "a b", "user@host", "host:", "host:0", "host:65536", "host:8x",
                             "ho\r\nst", "[::1", "[host]", "a\\b", "ftp:", "a:b:1", "a%41"}) {
    EXPECT_EQ(Asked(server, "/a"), "\"" + std::string(server) + "\" is not the name of a server");
  }
  EXPECT_EQ(Asked("https:", ""), "\"\" is not the name of a server");
  EXPECT_EQ(Asked("übung.example", "/a"), "https://übung.example:443/a");
}

TEST(TransferAddress, PathHoldsOnlyWhatARequestLineMay) {
  EXPECT_EQ(Asked("h", "/a b/ü<&>\"?x=1&y=[2]"), "https://h:443/a%20b/%C3%BC%3C&%3E%22?x=1&y=[2]");
  EXPECT_EQ(Asked("h", "/a%20b\r\nHost: x"), "https://h:443/a%20b%0D%0AHost:%20x");
  EXPECT_EQ(Asked("h", "/a#part"), "https://h:443/a");
}

std::string Redirected(const TransferAddress& from, const std::string& location) {
  return Outcome([&] { return RedirectedAddress(from, location); });
}

const TransferAddress kSecure{true, "updates.example", 443, "/a/b.xml?c=/d"};
const TransferAddress kPlain{false, "127.0.0.1", 8080, "/a/b.xml"};

TEST(Redirection, FollowsWithinHttps) {
  EXPECT_EQ(Redirected(kSecure, "https://mirror.example/x"), "https://mirror.example:443/x");
  EXPECT_EQ(Redirected(kSecure, "HTTPS://mirror.example:8443?q"), "https://mirror.example:8443/?q");
  EXPECT_EQ(Redirected(kSecure, "//mirror.example/x"), "https://mirror.example:443/x");
}

TEST(Redirection, FollowsOnTheSameHostUnlessSecurityIsLost) {
  EXPECT_EQ(Redirected(kPlain, "http://127.0.0.1:8080/x"), "http://127.0.0.1:8080/x");
  EXPECT_EQ(Redirected(kPlain, "http://127.0.0.1:9/x"), "http://127.0.0.1:9/x");
  EXPECT_EQ(Redirected(kPlain, "https://127.0.0.1/x"), "https://127.0.0.1:443/x");
  EXPECT_EQ(Redirected(kSecure, "http://updates.example/x"),
            "The server sent the request on to http://updates.example, which is not allowed");
}

TEST(Redirection, GoesNowhereElse) {
  EXPECT_EQ(Redirected(kSecure, "http://mirror.example/x"),
            "The server sent the request on to http://mirror.example, which is not allowed");
  EXPECT_EQ(Redirected(kPlain, "http://localhost:8080/x"),
            "The server sent the request on to http://localhost, which is not allowed");
  EXPECT_EQ(Redirected(kPlain, "https://mirror.example/x"),
            "The server sent the request on to https://mirror.example, which is not allowed");
  for (const char* location : {"ftp://updates.example/x", "file:///C:/x", "javascript:x"}) {
    EXPECT_EQ(Redirected(kSecure, location),
              "The server sent the request on to something other than HTTP")
        << location;
  }
}

TEST(Redirection, MayBeRelative) {
  EXPECT_EQ(Redirected(kSecure, "/x y"), "https://updates.example:443/x%20y");
  EXPECT_EQ(Redirected(kSecure, "x.xml"), "https://updates.example:443/a/x.xml");
  EXPECT_EQ(Redirected(kSecure, "?e=f"), "https://updates.example:443/a/b.xml?e=f");
  EXPECT_EQ(Redirected(kPlain, "x?http://y"), "http://127.0.0.1:8080/a/x?http://y");
}

TEST(Redirection, StaysBelowTheRootHoweverFarItClimbs) {
  const std::string from = "https://updates.example:443";
  for (const auto& [location, path] : std::initializer_list<std::pair<const char*, const char*>>{
           {"../files/x.zip", "/files/x.zip"},
           {"./x.xml", "/a/x.xml"},
           {".", "/a/"},
           {"..", "/"},
           {"../../../x", "/x"},
           {"b/./c/../d/", "/a/b/d/"},
           {"b/..", "/a/"},
           {"/c/../x", "/x"},
           {"/c//../x", "/c/x"},
           {"/c/...", "/c/..."},
           {"/c/.d/..e", "/c/.d/..e"},
           {"x?up=../y", "/a/x?up=../y"},
           {"/..?q", "/?q"},
           {"https://updates.example/c/../x", "/x"},
           {"//updates.example/./x", "/x"}}) {
    EXPECT_EQ(Redirected(kSecure, location), from + path) << location;
  }
}

TEST(Redirection, ResolvesWhatTheAddressItComesFromStillHeld) {
  const TransferAddress climbing{true, "updates.example", 443, "/a/../b/c.xml"};
  EXPECT_EQ(Redirected(climbing, "x"), "https://updates.example:443/b/x");
  EXPECT_EQ(Redirected(climbing, "?q"), "https://updates.example:443/b/c.xml?q");
}

}  // namespace
}  // namespace ovalink
