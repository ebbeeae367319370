#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace ovalink {

/// What a client requests, in the request document's own words (UTF-8).
struct DownloadRequest {
  std::string server;       ///< host, possibly with a port; or a scheme with its colon
  std::string file_path;    ///< the file's path on that server
  std::string destination;  ///< the full path of the file to store

  /// What the client has specified besides the document: how many bytes the file may have.
  std::optional<std::uint64_t> most_bytes = {};
};

/// Reads a request document: the elements server, filetodownload, destpath and progressevents in a
/// row, without a root. Their values are not escaped: the server extends to the first end of its
/// element, the destination starts at the last start of its own. Returns nothing if the document
/// has another form.
std::optional<DownloadRequest> ReadRequestDocument(std::string_view document);

}  // namespace ovalink
