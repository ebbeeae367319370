#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <string>

#include "platform/version_resource.h"

namespace kitbay::contract {

/// Libraries with versions to read.
class VersionResourceWorld {
 public:
  virtual ~VersionResourceWorld() = default;
  virtual const platform::VersionResource& versions() = 0;

  /// A folder, without a separator at its end, with the libraries "Größe 1.dll" with file version
  /// 1.2.40000.65535, "plain.dll" without a version resource, and "cut.dll", the first kilobyte of
  /// the first one, and with the text file "text.dll".
  virtual std::string folder() const = 0;
};

class VersionResourceContract
    : public testing::TestWithParam<std::unique_ptr<VersionResourceWorld> (*)()> {
 protected:
  bool HasVersion(const std::string& path) { return world_->versions().Read(path).has_value(); }

  std::unique_ptr<VersionResourceWorld> world_ = GetParam()();
};

TEST_P(VersionResourceContract, TheFileVersionIsReadInBothHalves) {
  const auto version = world_->versions().Read(world_->folder() + "\\Größe 1.dll");
  ASSERT_TRUE(version.has_value());
  EXPECT_EQ(version->most_significant, 0x00010002U);
  EXPECT_EQ(version->least_significant, 0x9C40FFFFU);
}

TEST_P(VersionResourceContract, LetterCaseAndSeparatorsDoNotMatter) {
  EXPECT_TRUE(HasVersion(world_->folder() + "/GRÖßE 1.DLL"));
}

TEST_P(VersionResourceContract, ALibraryWithoutVersionResourceHasNone) {
  EXPECT_FALSE(HasVersion(world_->folder() + "\\plain.dll"));
}

TEST_P(VersionResourceContract, WhatIsNoLibraryHasNone) {
  EXPECT_FALSE(HasVersion(world_->folder() + "\\text.dll"));
  EXPECT_FALSE(HasVersion(world_->folder() + "\\cut.dll"));
  EXPECT_FALSE(HasVersion(world_->folder()));
  EXPECT_FALSE(HasVersion(world_->folder() + "\\"));
}

TEST_P(VersionResourceContract, AMissingFileHasNone) {
  EXPECT_FALSE(HasVersion(world_->folder() + "\\missing.dll"));
  EXPECT_FALSE(HasVersion(world_->folder() + "\\missing\\Größe 1.dll"));
  EXPECT_FALSE(HasVersion(""));
}

TEST_P(VersionResourceContract, ABareFileNameIsNotLookedForInTheSystem) {
  EXPECT_FALSE(HasVersion("kernel32.dll"));
}

}  // namespace kitbay::contract
