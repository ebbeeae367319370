#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace ovalink {

/// What a client asks for, in the request document's own words (UTF-8).
struct DownloadRequest {
  std::string server;       ///< host, perhaps with a port; or a scheme with its colon
  std::string file_path;    ///< where the file lies on that server
  std::string destination;  ///< the full path of the file to store
};

/// Reads a request document: the elements server, filetodownload, destpath and progressevents, one
/// directly after the other without a root. Their values are not escaped: the server is all up to
/// the first end of its element, the destination all from the last beginning of its own. Nothing
/// when the document has another form.
std::optional<DownloadRequest> ReadRequestDocument(std::string_view document);

}  // namespace ovalink
