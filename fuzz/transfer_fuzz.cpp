// A download: one line each for the user's plain HTTP servers, the answer's Location, and its
// Content-Length or Content-Range; then the request document, or a record of an earlier transfer.
#include <algorithm>
#include <optional>

#include "answer_rules.h"
#include "base/text.h"
#include "fuzz_support.h"
#include "request_document.h"
#include "resume_rules.h"
#include "transfer_address.h"
#include "transfer_failure.h"

namespace kitbay::fuzz {
namespace {

using ovalink::DownloadRequest;
using ovalink::TransferAddress;

/// Removes the first line from `text` and returns it.
std::string TakeLine(std::string_view& text) {
  const std::string line(text.substr(0, text.find('\n')));
  text.remove_prefix(std::min(line.size() + 1, text.size()));
  return line;
}

/// The address that `call` returns; empty if it reports a failure instead.
template <typename Call>
std::optional<TransferAddress> Try(Call call) {
  try {
    return call();
  } catch (const ovalink::TransferFailure& failure) {
    Demand(!failure.text().empty(), "a failure says why");
    return std::nullopt;
  }
}

void DemandForm(const TransferAddress& address) {
  Demand(address.port != 0, "an address has a port");
  Demand(!address.host.empty() && address.host.find_first_of(std::string_view(
                                      "/\\?#@% \t\r\n\0", 11)) == std::string::npos,
         "a host is one name");
  Demand(address.path.starts_with('/') && std::all_of(address.path.begin(), address.path.end(),
                                                      [](char character) {
                                                        return character > ' ' &&
                                                               character < 0x7F && character != '#';
                                                      }),
         "a path may stand in a request line");
}

void DemandForm(const DownloadRequest& request, std::string_view document) {
  const std::string start = "<server>" + request.server + "</server><filetodownload>" +
                            request.file_path + "</filetodownload><destpath>" +
                            request.destination + "</destpath><progressevents>";
  Demand(document.starts_with(start), "a document holds what was read from it");
}

void Download(const DownloadRequest& request, const std::string& plain_servers,
              const std::string& location) {
  std::optional<TransferAddress> asked =
      Try([&] { return ovalink::AddressOf(request, plain_servers); });
  if (!asked) {
    return;
  }
  DemandForm(*asked);
  Demand(asked->is_secure || ovalink::IsLoopback(asked->host) ||
             base::ToLower(plain_servers).find(base::ToLower(asked->host)) != std::string::npos,
         "only loopback and the user's plain servers are asked in plain HTTP");
  for (int redirections = 0; redirections < 3; ++redirections) {
    const auto next = Try([&] { return ovalink::RedirectedAddress(*asked, location); });
    if (!next) {
      return;
    }
    DemandForm(*next);
    Demand(next->is_secure || !asked->is_secure, "a redirection leaves no secure connection");
    Demand((next->is_secure && asked->is_secure) ||
               base::ToLower(next->host) == base::ToLower(asked->host),
           "no redirection leads from a plain server to another");
    asked = next;
  }
}

void Answer(const std::string& content_length) {
  const std::optional<std::uint64_t> length = ovalink::WholeNumber(content_length);
  if (!length) {
    return;
  }
  const std::string digits = std::to_string(*length);
  Demand(content_length.ends_with(digits) &&
             content_length.find_first_not_of('0') >= content_length.size() - digits.size(),
         "a length is its digits");
}

void Part(const std::string& content_range) {
  if (const auto range = ovalink::ReadContentRange(content_range)) {
    Demand(range->first <= range->last && range->last < range->length, "a part lies in its file");
  }
  const std::string field = ovalink::UsableField(content_range);
  Demand(field.find_first_of("\r\n") == std::string::npos, "a field is one line");
}

void Record(std::string_view text) {
  if (const auto record = ovalink::ReadRecord(text)) {
    Demand(ovalink::ReadRecord(ovalink::RecordText(*record)) == record, "a record is its text");
  }
}

}  // namespace
}  // namespace kitbay::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  std::string_view input(reinterpret_cast<const char*>(data), size);
  const std::string plain_servers = kitbay::fuzz::TakeLine(input);
  const std::string location = kitbay::fuzz::TakeLine(input);
  const std::string field = kitbay::fuzz::TakeLine(input);
  kitbay::fuzz::Answer(field);
  kitbay::fuzz::Part(field);
  kitbay::fuzz::Record(input);
  if (const auto request = ovalink::ReadRequestDocument(input)) {
    kitbay::fuzz::DemandForm(*request, input);
    kitbay::fuzz::Download(*request, plain_servers, location);
    kitbay::fuzz::Demand(
        !ovalink::IsFullLocalPath(request->destination) || request->destination.rfind(':') == 1,
        "a local path names a drive, and nothing behind another colon");
  }
  return 0;
}
