// A manifest of a source that signs: only bytes that its maker has signed are accepted.
#include <string>

#include "base/failure.h"
#include "catalog/manifest_signature.h"
#include "catalog/manifest_trust.h"
#include "fakes/fake_clock.h"
#include "fakes/signing_maker.h"
#include "fuzz_support.h"

namespace kitbay::fuzz {
namespace {

void Judge(const std::string& bytes) {
  ExpectingLog log({});
  const fakes::FakeClock clock;
  const fakes::SigningMaker maker(1, "m.xml");
  const catalog::UpdateSourceList sources = {
      .UpdateSources = {"h/m.xml"},
      .PendingSources = {},
      .keys = {{"m.xml", {.key = maker.key(), .serial = 5}}}};
  const catalog::ManifestTrust trust(log, clock, sources);
  try {
    const std::uint64_t serial = trust.CheckSignature("m.xml", bytes);
    const auto signature = catalog::FindSignature(bytes);
    Demand(signature && serial >= 5, "what counts is signed, and not older than before");
    const std::string again = maker.Sign(bytes, serial, signature->until);
    Demand(bytes.starts_with(again.substr(0, signature->signed_bytes)),
           "what counts is what the maker signs");
  } catch (const base::Failure& refusal) {
    Demand(refusal.description().starts_with("m.xml "), "a refusal says what of");
  }
}

}  // namespace
}  // namespace kitbay::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  kitbay::fuzz::Judge({reinterpret_cast<const char*>(data), size});
  return 0;
}
