// Installations, updates and removals on a file system that fails at each of its operations, in one
// run each: the registry files have the old or the new contents, and no failure is silent.
#include <functional>

#include "catalog/xml_file.h"
#include "install/removal.h"
#include "installation_fixture.h"

namespace kitbay::install {
namespace {

using base::ComponentKind;
using base::RuntimeError;

constexpr const char* kFreshCustomRegistry =
    "<root><transports></transports><addons></addons><channels></channels></root> ";

/// A separate machine for each run.
class Machine : public InstallationTest {
 public:
  Machine() {
    AddLibrary("C:\\Ovalink\\addons\\notes\\own.dll");
    AddLibrary("C:\\Ovalink\\notes.dll");
    AddLibrary("C:\\Ana\\CustomData\\channels\\notes\\own.dll");
    AddLibrary("C:\\Ovalink\\channels\\presence\\own.dll");
  }

  void TestBody() override {}

  void InstallNotes(ComponentKind kind) { Install(kind); }

  void OfferPresence() {
    Offer("presence");
    AddPackage("presence");
  }
  void InstallPresence() { Install(ComponentKind::kChannel, "presence"); }

  void OfferVersionThree() {
    std::string manifest = File("C:\\Ovalink\\Kitbay\\list.xml");
    for (std::size_t at = manifest.find(">2.0<"); at != std::string::npos;
         at = manifest.find(">2.0<")) {
      manifest.replace(at, 5, ">3.0<");
    }
    files_.AddFile("C:\\Ovalink\\Kitbay\\list.xml", manifest);
    AddInstalled(ComponentKind::kChannel, "Notes", 3);
    state_.update_in_progress = true;
    session_.restart = true;
  }

  void RemoveNotes(ComponentKind kind) { removal_.RemoveAddon(ClickOn(kind, 0, kRemove)); }
  void ShowNotes(ComponentKind kind) { AddInstalled(kind, "Notes", 3); }

  std::string Datastore() const { return File(kDatastore); }
  std::string CustomRegistry() const { return File(kCustomRegistry); }

  /// Everything that the run should achieve: both registry files, the component's files, what the
  /// user reads and what is started.
  std::string Result() const {
    std::string result = Datastore() + "\n" + CustomRegistry() + "\n";
    for (const char* folder :
         {"C:\\Ovalink", "C:\\Ovalink\\addons\\notes", "C:\\Ovalink\\channels\\presence",
          "C:\\Ana\\CustomData\\channels\\notes"}) {
      for (const char* name : {"\\own.dll", "\\data\\notes.txt"}) {
        result += folder + (name + (" " + File(std::string(folder) + name))) + "\n";
      }
    }
    for (const std::string& call : desktop_.calls()) {
      result += call + "\n";
    }
    for (const char* container : {"installedaddons", "installedtransports", "installedchannels"}) {
      result += html_->ById(container)->InnerText() + "\n";
    }
    return result;
  }

  bool Parses(const std::string& path) const {
    catalog::XmlDocument document;
    return catalog::TryLoadXml(files_, path, document);
  }

  void FailAt(std::size_t nth, RuntimeError error) { files_.FailAt(nth, error); }
  std::size_t operation_count() const { return files_.operation_count(); }
  std::size_t log_size() const { return log_.entries.size(); }

 private:
  Removal removal_{
      {log_, settings_, files_, desktop_, page_, state_, rows_, main_client_, session_}};
};

struct Scenario {
  const char* name;
  std::function<void(Machine&)> prepare;
  std::function<void(Machine&)> run;
};

class EveryFault : public ::testing::TestWithParam<Scenario> {};

Scenario InstallOf(const char* name, ComponentKind kind) {
  return {name, [](Machine&) {}, [kind](Machine& machine) { machine.InstallNotes(kind); }};
}

Scenario RemovalOf(const char* name, ComponentKind kind) {
  return {name,
          [kind](Machine& machine) {
            machine.InstallNotes(kind);
            machine.ShowNotes(kind);
          },
          [kind](Machine& machine) { machine.RemoveNotes(kind); }};
}

class EveryFaultOfAnInstallation : public EveryFault {};

std::vector<Scenario> Installations() {
  return {InstallOf("AddonInstallation", ComponentKind::kAddon),
          InstallOf("TransportInstallation", ComponentKind::kTransport),
          InstallOf("ChannelInstallation", ComponentKind::kChannel),
          {"PresenceInstallation", &Machine::OfferPresence, &Machine::InstallPresence},
          {"ChannelUpdate",
           [](Machine& machine) {
             machine.InstallNotes(ComponentKind::kChannel);
             machine.OfferVersionThree();
           },
           [](Machine& machine) { machine.InstallNotes(ComponentKind::kChannel); }}};
}

std::vector<Scenario> Removals() {
  return {RemovalOf("AddonRemoval", ComponentKind::kAddon),
          RemovalOf("TransportRemoval", ComponentKind::kTransport),
          RemovalOf("ChannelRemoval", ComponentKind::kChannel)};
}

std::string ScenarioName(const ::testing::TestParamInfo<Scenario>& info) { return info.param.name; }

INSTANTIATE_TEST_SUITE_P(Installations, EveryFault, ::testing::ValuesIn(Installations()),
                         ScenarioName);
INSTANTIATE_TEST_SUITE_P(Removals, EveryFault, ::testing::ValuesIn(Removals()), ScenarioName);
INSTANTIATE_TEST_SUITE_P(Installations, EveryFaultOfAnInstallation,
                         ::testing::ValuesIn(Installations()), ScenarioName);

/// The course of a run without faults.
struct Course {
  std::string old_datastore;
  std::string old_custom_registry;
  std::string new_datastore;
  std::string new_custom_registry;
  std::string result;
  std::size_t operations;
};

Course CourseOf(const Scenario& scenario) {
  Machine machine;
  scenario.prepare(machine);
  Course course = {.old_datastore = machine.Datastore(),
                   .old_custom_registry = machine.CustomRegistry(),
                   .new_datastore = {},
                   .new_custom_registry = {},
                   .result = {},
                   .operations = machine.operation_count()};
  scenario.run(machine);
  course.operations = machine.operation_count() - course.operations;
  course.new_datastore = machine.Datastore();
  course.new_custom_registry = machine.CustomRegistry();
  course.result = machine.Result();
  EXPECT_EQ(machine.log_size(), 0U);
  EXPECT_TRUE(course.old_datastore != course.new_datastore ||
              course.old_custom_registry != course.new_custom_registry);
  return course;
}

/// The ids of a registry file's entries, in order; an empty element may be written either way.
std::vector<std::string> IdsIn(const std::string& registry) {
  pugi::xml_document document;
  document.load_string(registry.c_str());
  std::vector<std::string> ids;
  for (const pugi::xpath_node& id : catalog::SelectNodes(document, "root/*/*/@id")) {
    ids.emplace_back(id.attribute().value());
  }
  return ids;
}

void CheckFault(const Scenario& scenario, const Course& course, std::size_t nth,
                RuntimeError error) {
  SCOPED_TRACE("operation " + std::to_string(nth) + " fails with " +
               std::to_string(static_cast<int>(error)));
  Machine machine;
  scenario.prepare(machine);
  machine.FailAt(nth, error);
  scenario.run(machine);
  const std::string datastore = machine.Datastore();
  const std::string custom_registry = machine.CustomRegistry();
  EXPECT_TRUE(machine.Parses(kDatastore));
  EXPECT_TRUE(datastore == course.old_datastore || datastore == course.new_datastore) << datastore;
  if (custom_registry != course.old_custom_registry) {
    EXPECT_TRUE(machine.Parses(kCustomRegistry));
    EXPECT_TRUE(custom_registry == course.new_custom_registry ||
                custom_registry == kFreshCustomRegistry)
        << custom_registry;
  }
  EXPECT_TRUE(machine.log_size() > 0 || machine.Result() == course.result) << machine.Result();
}

TEST_P(EveryFault, LeavesTheOldStateOrTheNewOneAndIsReported) {
  const Course course = CourseOf(GetParam());
  ASSERT_GE(course.operations, 3U);
  for (const RuntimeError error :
       {RuntimeError::kDiskFull, RuntimeError::kPermissionDenied, RuntimeError::kPathNotFound}) {
    for (std::size_t nth = 1; nth <= course.operations; ++nth) {
      CheckFault(GetParam(), course, nth, error);
    }
  }
}

TEST_P(EveryFaultOfAnInstallation, LeavesNothingThatKeepsASecondTryFromSucceeding) {
  const Course course = CourseOf(GetParam());
  for (std::size_t nth = 1; nth <= course.operations; ++nth) {
    SCOPED_TRACE("operation " + std::to_string(nth));
    Machine machine;
    GetParam().prepare(machine);
    machine.FailAt(nth, RuntimeError::kDiskFull);
    GetParam().run(machine);
    GetParam().run(machine);
    EXPECT_EQ(IdsIn(machine.Datastore()), IdsIn(course.new_datastore));
    EXPECT_EQ(IdsIn(machine.CustomRegistry()), IdsIn(course.new_custom_registry));
  }
}

}  // namespace
}  // namespace kitbay::install
