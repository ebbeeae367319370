#include <benchmark/benchmark.h>

#include <memory>
#include <pugixml.hpp>
#include <string>

#include "fakes/blank_page.h"
#include "fakes/consenting_desktop.h"
#include "fakes/fake_clock.h"
#include "install/datastore_registration.h"
#include "sample_suite.h"

namespace kitbay::bench {
namespace {

using base::ComponentKind;
using install::ComponentRecord;
using install::DatastoreRegistration;
using install::InstallSession;

/// A disk that keeps what replaces the datastore, copied as a write to a real disk would copy it.
class SavedDisk : public DatastoreDisk {
 public:
  using DatastoreDisk::DatastoreDisk;
  void Replace(const std::string& /*path*/, std::string_view bytes) override { saved_ = bytes; }
  const std::string& saved() const { return saved_; }

 private:
  std::string saved_;
};

class StringSink : public pugi::xml_writer {
 public:
  void write(const void* data, std::size_t size) override {
    text.append(static_cast<const char*>(data), size);
  }
  std::string text;
};

// The baseline: only the XML library, on the same bytes.
void Bare(benchmark::State& state) {
  SavedDisk disk(DatastoreOf(ComponentKind::kAddon, static_cast<std::size_t>(state.range(0))));
  for (auto _ : state) {
    const std::string bytes = disk.Read("olregistry.xml");
    pugi::xml_document document;
    document.load_buffer(bytes.data(), bytes.size());
    StringSink sink;
    document.save(sink, "", pugi::format_raw);
    disk.Replace("", sink.text);
  }
  if (disk.saved().size() < disk.datastore().size() / 2) {
    state.SkipWithError("the datastore was not saved");
  }
}

/// A datastore, and a component that is entered into it.
class Installation {
 public:
  Installation(std::size_t entries, ComponentRecord record)
      : disk_(DatastoreOf(ComponentKind::kAddon, entries)) {
    page_.Connect(std::make_shared<fakes::BlankDocument>());
    session_.record = std::move(record);
  }

  void Enter() { registration_.updateRegistry(); }
  const SavedDisk& disk() const { return disk_; }

 private:
  SavedDisk disk_;
  base::Settings settings_;
  StrictLog log_;
  fakes::ConsentingDesktop desktop_;
  fakes::BlankWindow window_;
  view::PageDocument page_;
  view::ViewState state_;
  view::PageRows rows_{log_, page_, state_};
  view::PageButtons buttons_{log_, page_, state_, window_};
  catalog::UpdateSourceList sources_;
  fakes::FakeClock clock_;
  catalog::ManifestTrust trust_{log_, clock_, sources_};
  catalog::CatalogFiles catalog_files_{disk_, settings_, trust_};
  InstallSession session_;
  DatastoreRegistration registration_{
      {log_, disk_, catalog_files_, settings_, desktop_, rows_, buttons_, sources_, session_}};
};

// From the event that a package has arrived to the message that the component is installed.
void Enter(benchmark::State& state) {
  Installation installation(static_cast<std::size_t>(state.range(0)),
                            {"chess", "Chess.Game", "Chess", "Plays", "chess.dll", "games", "1",
                             "Chess.Rules", "Chess.Board", "game", "0"});
  for (auto _ : state) {
    installation.Enter();
  }
  const SavedDisk& disk = installation.disk();
  if (disk.saved().size() <= disk.datastore().size() ||
      disk.saved().find("<addon id=\"chess\"") == std::string::npos) {
    state.SkipWithError("the component was not entered");
  }
}

void Sizes(benchmark::internal::Benchmark* benchmark) {
  benchmark->Arg(1000)->Arg(10000)->Unit(benchmark::kMicrosecond);
}

BENCHMARK(Bare)->Name("bare")->Apply(Sizes);
BENCHMARK(Enter)->Name("enter")->Apply(Sizes);

}  // namespace
}  // namespace kitbay::bench
