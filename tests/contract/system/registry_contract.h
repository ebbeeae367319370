#pragma once

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>

#include "platform/registry_keys.h"

namespace kitbay::contract {

/// A registry to test, and what other programs write into it.
class RegistryWorld {
 public:
  virtual ~RegistryWorld() = default;
  virtual platform::RegistryKeys& keys() = 0;

  /// The name of an empty key for the test, below the current user's hive.
  virtual std::string scratch() const = 0;

  /// The name of a key that everybody may read and nobody may write, below the machine's hive.
  virtual std::string ReadOnlyMachineKey() = 0;

  // Values of the scratch key, as other programs write them.
  virtual void AddText(const std::string& name, const std::string& text) = 0;
  virtual void AddExpandableText(const std::string& name, const std::string& text) = 0;
  virtual void AddBinary(const std::string& name, const std::string& bytes) = 0;
  virtual void AddNumber(const std::string& name, std::uint32_t number) = 0;
};

class RegistryContract : public testing::TestWithParam<std::unique_ptr<RegistryWorld> (*)()> {
 protected:
  void SetUp() override {
    const auto opened =
        keys().Open(platform::kCurrentUser, world_->scratch(), platform::kKeyReadWrite);
    ASSERT_EQ(opened.code, 0);
    key_ = opened.key;
  }
  void TearDown() override { keys().Close(key_); }

  platform::RegistryKeys& keys() { return world_->keys(); }

  void ExpectQuery(const std::string& name, std::uint32_t capacity, std::int32_t code,
                   const std::string& bytes, std::uint32_t byte_count) {
    const auto result = keys().Query(key_, name, capacity);
    EXPECT_EQ(result.code, code);
    EXPECT_EQ(result.bytes, bytes);
    EXPECT_EQ(result.byte_count, byte_count);
  }

  std::unique_ptr<RegistryWorld> world_ = GetParam()();
  platform::RegistryKey key_;
};

inline constexpr std::int32_t kInvalidHandle = 6;

TEST_P(RegistryContract, AMissingKeyIsNotFound) {
  const auto result = keys().Open(key_, "missing", platform::kKeyQueryValue);
  EXPECT_EQ(result.code, platform::kRegistryFileNotFound);
  EXPECT_EQ(result.key, platform::RegistryKey{});
}

TEST_P(RegistryContract, ACreatedKeyIsFoundInAnyLetterCase) {
  const auto created = keys().Create(key_, "Schlüssel\\Änderung", platform::kKeyReadWrite);
  ASSERT_EQ(created.code, 0);
  ASSERT_EQ(keys().SetText(created.key, "", "here"), 0);
  EXPECT_EQ(keys().Close(created.key), 0);

  const auto opened =
      keys().Open(platform::kCurrentUser, world_->scratch() + "\\SCHLÜSSEL\\änderung",
                  platform::kKeyQueryValue);
  ASSERT_EQ(opened.code, 0);
  EXPECT_EQ(keys().Query(opened.key, "", 100).bytes, "here");
  EXPECT_EQ(keys().Close(opened.key), 0);
}

TEST_P(RegistryContract, CreateOpensAKeyThatIsThereAndKeepsItsValues) {
  world_->AddText("kept", "1");
  const auto again =
      keys().Create(platform::kCurrentUser, world_->scratch(), platform::kKeyReadWrite);
  ASSERT_EQ(again.code, 0);
  EXPECT_EQ(keys().Query(again.key, "KEPT", 100).byte_count, 2U);
  EXPECT_EQ(keys().Close(again.key), 0);
}

TEST_P(RegistryContract, SetTextWritesExactlyTheGivenBytes) {
  using namespace std::string_literals;
  EXPECT_EQ(keys().SetText(key_, "", "Ovalink"), 0);
  ExpectQuery("", 100, 0, "Ovalink", 7);
  EXPECT_EQ(keys().SetText(key_, "ended", "Ovalink\0"s), 0);
  ExpectQuery("ended", 100, 0, "Ovalink\0"s, 8);
  EXPECT_EQ(keys().SetText(key_, "", "x"), 0);
  ExpectQuery("", 100, 0, "x", 1);
}

TEST_P(RegistryContract, SetTextWritesAnEmptyText) {
  EXPECT_EQ(keys().SetText(key_, "URL Protocol", ""), 0);
  ExpectQuery("url protocol", 100, 0, "", 0);
}

TEST_P(RegistryContract, TheTerminatorOfOtherProgramsCounts) {
  using namespace std::string_literals;
  world_->AddText("InstallLocation", "C:\\Ovalink");
  ExpectQuery("installlocation", 100, 0, "C:\\Ovalink\0"s, 11);
}

TEST_P(RegistryContract, BytesAreCountedInUtf8) {
  using namespace std::string_literals;
  world_->AddText("Größe", "C:\\Grüße 設");
  ExpectQuery("GRÖßE", 100, 0, "C:\\Grüße 設\0"s, 15);
  EXPECT_EQ(keys().SetText(key_, "", "Ü"), 0);
  ExpectQuery("", 2, 0, "Ü", 2);
  ExpectQuery("", 1, platform::kRegistryMoreData, "", 2);
}

TEST_P(RegistryContract, ATextOfUpToTheCapacityFits) {
  using namespace std::string_literals;
  world_->AddText("99", std::string(98, 'a'));
  ExpectQuery("99", 100, 0, std::string(98, 'a') + "\0"s, 99);
  world_->AddText("100", std::string(99, 'b'));
  ExpectQuery("100", 100, 0, std::string(99, 'b') + "\0"s, 100);
}

TEST_P(RegistryContract, ALongerTextTellsItsSizeOnly) {
  world_->AddText("101", std::string(100, 'c'));
  ExpectQuery("101", 100, platform::kRegistryMoreData, "", 101);
  world_->AddText("300", std::string(299, 'd'));
  ExpectQuery("300", 100, platform::kRegistryMoreData, "", 300);
  world_->AddText("5000", std::string(4999, 'e'));
  ExpectQuery("5000", 100, platform::kRegistryMoreData, "", 5000);
  EXPECT_EQ(keys().Query(key_, "5000", 5000).bytes.size(), 5000U);
}

TEST_P(RegistryContract, ACapacityOfNoneAsksForTheSize) {
  world_->AddText("AppData", std::string(299, 'd'));
  ExpectQuery("AppData", 0, 0, "", 300);
}

TEST_P(RegistryContract, AValueThatIsNoTextIsNotFound) {
  world_->AddBinary("bytes", "abc");
  world_->AddNumber("number", 7);
  ExpectQuery("missing", 100, platform::kRegistryFileNotFound, "", 0);
  ExpectQuery("", 100, platform::kRegistryFileNotFound, "", 0);
  ExpectQuery("bytes", 100, platform::kRegistryFileNotFound, "", 0);
  ExpectQuery("number", 0, platform::kRegistryFileNotFound, "", 0);
}

TEST_P(RegistryContract, AnExpandableTextIsReadAsItIsStored) {
  using namespace std::string_literals;
  world_->AddExpandableText("AppData", "%USERPROFILE%\\Data");
  ExpectQuery("AppData", 100, 0, "%USERPROFILE%\\Data\0"s, 19);
}

TEST_P(RegistryContract, AKeyOpenedForReadingIsNotWritten) {
  const auto reading =
      keys().Open(platform::kCurrentUser, world_->scratch(), platform::kKeyQueryValue);
  ASSERT_EQ(reading.code, 0);
  EXPECT_EQ(keys().SetText(reading.key, "a", "1"), platform::kRegistryAccessDenied);
  ExpectQuery("a", 100, platform::kRegistryFileNotFound, "", 0);
  EXPECT_EQ(keys().Close(reading.key), 0);
}

TEST_P(RegistryContract, AKeyThatIsNotTheUsersIsReadAndNotWritten) {
  const std::string name = world_->ReadOnlyMachineKey();
  const auto written = keys().Open(platform::kLocalMachine, name, platform::kKeyReadWrite);
  EXPECT_EQ(written.code, platform::kRegistryAccessDenied);
  EXPECT_EQ(written.key, platform::RegistryKey{});
  EXPECT_EQ(keys().Create(platform::kLocalMachine, name, platform::kKeyReadWrite).code,
            platform::kRegistryAccessDenied);
  const auto read = keys().Open(platform::kLocalMachine, name, platform::kKeyQueryValue);
  ASSERT_EQ(read.code, 0);
  EXPECT_EQ(keys().SetText(read.key, "a", "1"), platform::kRegistryAccessDenied);
  EXPECT_EQ(keys().Close(read.key), 0);
}

TEST_P(RegistryContract, AClosedKeyIsNoKey) {
  const auto other = keys().Create(key_, "other", platform::kKeyReadWrite);
  ASSERT_EQ(keys().Close(other.key), 0);
  EXPECT_EQ(keys().Close(other.key), kInvalidHandle);
  EXPECT_EQ(keys().SetText(other.key, "", "1"), kInvalidHandle);
  EXPECT_EQ(keys().Query(other.key, "", 0).code, kInvalidHandle);
  EXPECT_EQ(keys().Open(other.key, "x", platform::kKeyQueryValue).code, kInvalidHandle);
  EXPECT_EQ(keys().Create(other.key, "x", platform::kKeyReadWrite).code, kInvalidHandle);
}

TEST_P(RegistryContract, NoKeyIsNoKey) {
  EXPECT_EQ(keys().Open({}, "x", platform::kKeyQueryValue).code, kInvalidHandle);
  EXPECT_EQ(keys().Query({}, "", 100).code, kInvalidHandle);
  EXPECT_EQ(keys().Close({}), kInvalidHandle);
}

TEST_P(RegistryContract, AHiveStaysUsableWhenItIsClosed) {
  EXPECT_EQ(keys().Close(platform::kCurrentUser), 0);
  const auto opened =
      keys().Open(platform::kCurrentUser, world_->scratch(), platform::kKeyQueryValue);
  EXPECT_EQ(opened.code, 0);
  EXPECT_EQ(keys().Close(opened.key), 0);
}

TEST_P(RegistryContract, TheOtherHivesAreThere) {
  for (const platform::RegistryKey hive : {platform::kClassesRoot, platform::kLocalMachine}) {
    EXPECT_EQ(keys().Open(hive, "Kitbay.Tests.Missing", platform::kKeyQueryValue).code,
              platform::kRegistryFileNotFound);
  }
}

}  // namespace kitbay::contract
