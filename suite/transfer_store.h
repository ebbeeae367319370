#pragma once

#include <windows.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

#include "platform/win32/system/handles.h"
#include "platform/win32/system/replacement_file.h"
#include "request_document.h"
#include "resume_rules.h"

namespace ovalink {

/// What the user keeps of one destination's transfers, in the folder Ovalink\Transfers of the local
/// application data: what the server said of the file, and the bytes of a transfer that broke off.
/// Without that folder, and while another transfer to the same destination has the bytes open,
/// nothing is kept and nothing fails. What nobody has asked for again within a month is deleted.
class TransferStore {
 public:
  /// `destination` is the request's as `ToSystemPath` returns it.
  TransferStore(const DownloadRequest& request, std::wstring destination);

  /// The fields that ask for no more than is missing: the rest of a file, or a file that has
  /// changed; "" where nothing is known.
  std::string Fields() const;

  /// Where an interrupted transfer goes on; 0 for at the beginning.
  std::uint64_t first() const { return first_; }
  bool asks_whether_changed() const { return asks_whether_changed_; }

  /// Whether `range` is what is missing.
  bool IsRest(const ContentRange& range) const;

  /// Forgets what was known of the destination, and the bytes kept.
  void Discard();

  /// Keeps the bytes of the answer that has `record`, from the start of the file or, where it goes
  /// on, from `first()`. Returns whether it can.
  bool KeepBytes(const TransferRecord& record);
  bool KeepRest();
  void Append(std::string_view bytes);

  /// Writes the bytes kept to `file`.
  void CopyTo(kitbay::platform::win32::ReplacementFile& file);

  /// As `Discard`, but remembers what the server said of the file that the destination holds now,
  /// to ask whether it has changed.
  void Settle(const TransferRecord& record);

  /// The destination holds the server's file still: it is one of today.
  void Refresh() const;

  const TransferRecord& record() const { return record_; }

 private:
  std::wstring RecordPath() const { return base_ + L".txt"; }
  std::wstring BytesPath() const { return base_ + L".part"; }
  void Load();
  bool OpenBytes(DWORD disposition);
  bool WriteRecord() const;

  std::wstring destination_;
  std::wstring base_;  // of the names of both files; "" without a folder
  TransferRecord record_;
  kitbay::platform::win32::UniqueFile bytes_;
  std::uint64_t first_ = 0;
  bool asks_whether_changed_ = false;
};

}  // namespace ovalink
