#include "catalog/manifest_signature.h"

#include <gmock/gmock.h>

#include "base/failure.h"
#include "fakes/signing_maker.h"

namespace kitbay::catalog {
namespace {

using namespace std::chrono_literals;
using fakes::SigningMaker;
using testing::EndsWith;
using testing::HasSubstr;
using testing::StartsWith;

constexpr std::chrono::sys_days kUntil = 2027y / 3 / 1;
constexpr const char* kManifest = "<components><addons/></components>\n";

const SigningMaker kMaker(1);

std::string Changed(std::string text, const std::string& from, const std::string& to) {
  const std::size_t place = text.find(from);
  EXPECT_NE(place, std::string::npos) << from;
  return text.replace(place, from.size(), to);
}

TEST(ManifestSignatures, StandInTheLastCommentBehindTheManifestItself) {
  const std::string text = kMaker.Sign(kManifest, 7, kUntil);
  EXPECT_THAT(text,
              StartsWith("<components><addons/></components>\n<!--<signature key=\"" +
                         KeyId(kMaker.public_key()) +
                         "\" file=\"list.xml\" serial=\"7\" until=\"2027-03-01\" ed25519=\""));
  EXPECT_THAT(text, EndsWith("\"/>-->\n"));
}

TEST(ManifestSignatures, SayWhatTheyWereMadeWith) {
  const auto signature = FindSignature(kMaker.Sign(kManifest, 7, kUntil));
  ASSERT_TRUE(signature);
  EXPECT_EQ(signature->key_id, KeyId(kMaker.public_key()));
  EXPECT_EQ(signature->file, "list.xml");
  EXPECT_EQ(signature->serial, 7U);
  EXPECT_EQ(signature->until, kUntil);
}

// An older reader may refuse a comment with two hyphens in a row.
TEST(ManifestSignatures, NameAnyFileThatAManifestMayBe) {
  for (const std::string file : {"a--b---c.xml", "R&D's.xml", "L\xC3\xAFste.XML"}) {
    const std::string text = SigningMaker(1, file).Sign(kManifest, 7, kUntil);
    EXPECT_EQ(FindSignature(text)->file, file);
    EXPECT_EQ(text.find("--", text.find("<!--") + 4), text.rfind("-->"));
  }
  for (const std::string file : {"", "list", "a\".xml", "a~1.xml", "../a.xml"}) {
    EXPECT_THROW(SigningMaker(1, file).Sign(kManifest, 7, kUntil), base::Failure) << file;
  }
}

// From RFC 8032, section 7.1, test 3: what libsodium signs, others can verify.
TEST(ManifestSignatures, AreThoseOfEd25519) {
  const auto key = ReadKey("fc51cd8e6218a1a38da47ed00230f0580816ed13ba3303ac5deb911548908025");
  ASSERT_TRUE(key);
  ManifestSignature signature;
  const std::string digits =
      "6291d657deec24024827e69c3abe01a30ce548a284743a445e3680d7db5ac3ac"
      "18ff9b538d16f290ae67f760984dc6594a7c15e9716ed28dc027beceea1ec40a";
  for (std::size_t i = 0; i < signature.value.size(); ++i) {
    signature.value[i] =
        static_cast<unsigned char>(std::stoi(digits.substr(i * 2, 2), nullptr, 16));
  }
  signature.signed_bytes = 2;
  EXPECT_TRUE(IsSignedWith("\xAF\x82", signature, *key));
  EXPECT_FALSE(IsSignedWith("\xAF\x83", signature, *key));
}

TEST(ManifestSignatures, HoldForTheVeryBytesOnly) {
  const std::string text = kMaker.Sign(kManifest, 7, kUntil);
  const auto signature = FindSignature(text);
  ASSERT_TRUE(IsSignedWith(text, *signature, kMaker.public_key()));
  for (std::size_t place = 0; place < signature->signed_bytes; ++place) {
    std::string other = text;
    other[place] = static_cast<char>(other[place] ^ 1);
    EXPECT_FALSE(IsSignedWith(other, *signature, kMaker.public_key())) << place;
  }
}

TEST(ManifestSignatures, OfAnotherKeyDoNotHold) {
  const std::string text = kMaker.Sign(kManifest, 7, kUntil);
  EXPECT_FALSE(IsSignedWith(text, *FindSignature(text), SigningMaker(2).public_key()));
}

TEST(ManifestSignatures, EachFurtherOneTakesThePlaceOfTheLast) {
  const std::string once = kMaker.Sign(kManifest, 7, kUntil);
  const std::string twice = kMaker.Sign(once, 8, kUntil);
  EXPECT_EQ(twice.find("serial=\"7\""), std::string::npos);
  EXPECT_EQ(twice, kMaker.Sign(kManifest, 8, kUntil));
  EXPECT_TRUE(IsSignedWith(twice, *FindSignature(twice), kMaker.public_key()));
}

TEST(ManifestSignatures, AreNotFoundWhereTheManifestEndsOtherwise) {
  const std::string text = kMaker.Sign(kManifest, 7, kUntil);
  for (const std::string& other :
       {std::string(), std::string(kManifest), text + "<!-- more -->", text + "x",
        std::string("<components/><!--<note/>-->"), std::string("\"/>-->"), std::string("  ")}) {
    EXPECT_FALSE(FindSignature(other)) << other;
  }
}

TEST(ManifestSignatures, MayBeFollowedByWhiteSpace) {
  EXPECT_TRUE(FindSignature(kMaker.Sign(kManifest, 7, kUntil) + " \r\n\t\n"));
}

TEST(ManifestSignatures, ThatCannotBeReadAreNotTakenForMissingOnes) {
  const std::string text = kMaker.Sign(kManifest, 7, kUntil);
  for (const auto& [from, to] : {
           std::pair{"file=\"list.xml\"", ""},
           {"file=\"list.xml\"", "file=\"\""},
           {"serial=\"7\"", ""},
           {"serial=\"7\"", "serial=\"-7\""},
           {"serial=\"7\"", "serial=\"7x\""},
           {"serial=\"7\"", "serial=\"99999999999999999999\""},
           {"until=\"2027-03-01\"", ""},
           {"2027-03-01", "2027-02-29"},
           {"2027-03-01", "2027-3-001"},
           {"2027-03-01", "2027-13-01"},
           {"ed25519=\"", "ed25519=\"00"},
           {"ed25519=\"", "ed25519='\" ed25518=\""},
           {"<signature ", "<signature <"},
           {"<signature ", "<other/><signature "},
       }) {
    EXPECT_THROW(FindSignature(Changed(text, from, to)), base::Failure) << from << " " << to;
  }
}

TEST(Keys, AreSixtyFourHexadecimalDigits) {
  const std::string digits = KeyDigits(kMaker.public_key());
  EXPECT_EQ(digits.size(), kKeyDigits);
  EXPECT_EQ(ReadKey(digits), kMaker.public_key());
  EXPECT_EQ(KeyId(kMaker.public_key()), digits.substr(0, 16));
  for (const std::string& other : {std::string(), digits + "0", digits.substr(1), digits + "00",
                                   "g" + digits.substr(1), " " + digits.substr(1)}) {
    EXPECT_FALSE(ReadKey(other)) << other;
  }
}

TEST(Dates, AreReadAsTheyAreWritten) {
  EXPECT_EQ(DateText(2027y / 3 / 1), "2027-03-01");
  EXPECT_EQ(ReadDate("2027-03-01"), std::chrono::sys_days(2027y / 3 / 1));
  EXPECT_EQ(ReadDate("2028-02-29"), std::chrono::sys_days(2028y / 2 / 29));
  for (const char* other :
       {"", "2027-03-1", "2027/03/01", "2027-03-32", "-027-03-01", "2027-03- 1", "2027-03-01 "}) {
    EXPECT_FALSE(ReadDate(other)) << other;
  }
}

}  // namespace
}  // namespace kitbay::catalog
