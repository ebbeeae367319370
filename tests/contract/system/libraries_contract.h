#pragma once

#include <gtest/gtest.h>

#include <memory>
#include <optional>
#include <string>
#include <thread>

#include "contract/failure_number.h"
#include "platform/libraries.h"

namespace kitbay::contract {

/// Libraries to load.
class LibrariesWorld {
 public:
  virtual ~LibrariesWorld() = default;
  virtual platform::Libraries& libraries() = 0;

  /// A folder, without a separator at its end, with the libraries "refusing ö.dll", whose
  /// DllRegisterServer returns 0x80040201; "slow.dll", whose DllRegisterServer does not return
  /// before `LetReturn`; "mute.dll", which has no such function; "needy.dll", which depends on a
  /// library in `helpers`; and with the text file "text.dll".
  virtual std::string folder() const = 0;

  /// Another folder, without a separator at its end.
  virtual std::string helpers() const = 0;

  /// Makes the function of slow.dll return.
  virtual void LetReturn() = 0;
};

class LibrariesContract : public testing::TestWithParam<std::unique_ptr<LibrariesWorld> (*)()> {
 protected:
  static constexpr std::uint32_t kLong = 300'000;
  static constexpr std::uint32_t kAccessViolation = 0xC0000005;

  platform::LibraryHandle Load(const std::string& name) {
    return libraries().Load(world_->folder() + "\\" + name, "");
  }
  int FailureOf(const std::string& path) {
    return FailureNumber([&] { libraries().Load(path, ""); });
  }
  platform::ThreadHandle Start(platform::LibraryHandle library) {
    return libraries().StartThread(libraries().FindExport(library, "DllRegisterServer"));
  }
  platform::Libraries& libraries() { return world_->libraries(); }

  std::unique_ptr<LibrariesWorld> world_ = GetParam()();
};

TEST_P(LibrariesContract, ALibraryIsLoadedByItsFullPath) {
  for (const char* name : {"\\refusing ö.dll", "/REFUSING Ö.DLL", "\\.\\refusing ö.dll"}) {
    const platform::LibraryHandle library = libraries().Load(world_->folder() + name, "");
    EXPECT_NE(library, platform::LibraryHandle{}) << name;
    libraries().Free(library);
  }
}

TEST_P(LibrariesContract, APathThatIsNotFullIsRefused) {
  EXPECT_EQ(FailureOf(""), 75);
  EXPECT_EQ(FailureOf("kernel32.dll"), 75);
  EXPECT_EQ(FailureOf("addons\\mute.dll"), 75);
  EXPECT_EQ(FailureOf("\\mute.dll"), 75);
  EXPECT_EQ(FailureOf("C:mute.dll"), 75);
}

TEST_P(LibrariesContract, AFolderIsNoLibrary) {
  EXPECT_EQ(FailureOf(world_->folder() + "\\"), 75);
  EXPECT_EQ(FailureOf("C:\\"), 75);
}

TEST_P(LibrariesContract, WhatCannotBeLoadedFailsWithTheSystemsNumber) {
  EXPECT_EQ(FailureOf(world_->folder() + "\\missing.dll"), 126);
  EXPECT_EQ(FailureOf(world_->folder() + "\\missing\\mute.dll"), 126);
  EXPECT_EQ(FailureOf(world_->folder() + "\\needy.dll"), 126);
  EXPECT_EQ(FailureOf(world_->folder() + "\\text.dll"), 193);
}

TEST_P(LibrariesContract, WhatALibraryNeedsIsFoundAmongTheHelpersOfThatCall) {
  const std::string needy = world_->folder() + "\\needy.dll";
  for (const char* ending : {"", "\\", "\\\\"}) {
    const auto library = libraries().Load(needy, world_->helpers() + ending);
    EXPECT_NE(library, platform::LibraryHandle{}) << ending;
    libraries().Free(library);
    EXPECT_EQ(FailureOf(needy), 126);
  }
  EXPECT_EQ(FailureNumber([&] { libraries().Load(needy, world_->helpers() + "\\missing"); }), 126);
}

TEST_P(LibrariesContract, AFailureToLoadIsDescribed) {
  std::string description;
  try {
    Load("missing.dll");
  } catch (const base::Failure& failure) {
    description = failure.description();
  }
  EXPECT_NE(description, "");
  EXPECT_EQ(description.find_first_of("\r\n"), std::string::npos);
}

TEST_P(LibrariesContract, AnExportIsFoundByItsExactName) {
  const auto library = Load("refusing ö.dll");
  EXPECT_NE(libraries().FindExport(library, "DllRegisterServer"), platform::ExportAddress{});
  EXPECT_EQ(libraries().FindExport(library, "dllregisterserver"), platform::ExportAddress{});
  EXPECT_EQ(libraries().FindExport(library, ""), platform::ExportAddress{});
  libraries().Free(library);
}

TEST_P(LibrariesContract, AFunctionGivesItsThreadTheExitCode) {
  const auto library = Load("refusing ö.dll");
  const auto thread = Start(library);
  ASSERT_NE(thread, platform::ThreadHandle{});
  EXPECT_TRUE(libraries().Wait(thread, kLong));
  EXPECT_EQ(libraries().ExitCode(thread), 0x80040201U);
  libraries().Close(thread);
  libraries().Free(library);
}

TEST_P(LibrariesContract, AThreadWithoutAFunctionEndsAndNothingElse) {
  const auto library = Load("mute.dll");
  const auto start = libraries().FindExport(library, "DllRegisterServer");
  EXPECT_EQ(start, platform::ExportAddress{});
  const auto thread = libraries().StartThread(start);
  ASSERT_NE(thread, platform::ThreadHandle{});
  EXPECT_TRUE(libraries().Wait(thread, kLong));
  EXPECT_EQ(libraries().ExitCode(thread), kAccessViolation);
  libraries().Close(thread);
  libraries().Free(library);
}

TEST_P(LibrariesContract, AThreadThatStillRunsIsTold) {
  const auto library = Load("slow.dll");
  const auto thread = Start(library);
  EXPECT_FALSE(libraries().Wait(thread, 1));
  EXPECT_EQ(libraries().ExitCode(thread), platform::kNoExitCode);
  world_->LetReturn();
  EXPECT_TRUE(libraries().Wait(thread, kLong));
  EXPECT_EQ(libraries().ExitCode(thread), 0U);
  libraries().Close(thread);
  libraries().Free(library);
}

TEST_P(LibrariesContract, AThreadThatReturnsIntoAFreedLibraryEndsAndNothingElse) {
  const auto library = Load("slow.dll");
  const auto thread = Start(library);
  EXPECT_FALSE(libraries().Wait(thread, 1));
  libraries().Free(library);
  EXPECT_EQ(libraries().ExitCode(thread), platform::kNoExitCode);
  world_->LetReturn();
  EXPECT_TRUE(libraries().Wait(thread, kLong));
  EXPECT_EQ(libraries().ExitCode(thread), kAccessViolation);
  libraries().Close(thread);
}

TEST_P(LibrariesContract, ABodyRunsOnAThreadOfItsOwnWhileTheCallerWaits) {
  std::optional<std::thread::id> seen;
  libraries().RunOnOwnThread([&] { seen = std::this_thread::get_id(); });
  ASSERT_TRUE(seen.has_value());
  EXPECT_NE(*seen, std::this_thread::get_id());
}

TEST_P(LibrariesContract, WhatABodyThrowsComesBack) {
  EXPECT_EQ(
      FailureNumber([&] {
        libraries().RunOnOwnThread([] { throw base::Failure(base::RuntimeError::kOverflow); });
      }),
      6);
}

TEST_P(LibrariesContract, ABodyThatEndsItsThreadGoesNoFurther) {
  int steps = 0;
  libraries().RunOnOwnThread([&] {
    ++steps;
    libraries().EndThread(platform::kNoExitCode);
    ++steps;
  });
  EXPECT_EQ(steps, 1);
}

}  // namespace kitbay::contract
