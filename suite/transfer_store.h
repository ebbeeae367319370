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
/// application data: what the server said about the file, and the bytes of a transfer that broke
/// off. Without that folder, or while another transfer to the same destination has the bytes open,
/// nothing is kept and nothing fails. What nobody requests again within a month is deleted.
class TransferStore {
 public:
  /// `destination` is the request's, as `ToSystemPath` returns it.
  TransferStore(const DownloadRequest& request, std::wstring destination);

  /// The fields that request only what is missing: the rest of a file, or a file that has changed;
  /// "" if nothing is known.
  std::string Fields() const;

  /// Where an interrupted transfer resumes; 0 for the beginning.
  std::uint64_t first() const { return first_; }
  bool asks_whether_changed() const { return asks_whether_changed_; }

  /// Whether `range` is exactly what is missing.
  bool IsRest(const ContentRange& range) const;

  /// Forgets what was known about the destination, and deletes the bytes kept.
  void Discard();

  /// Keeps the bytes of the answer that has `record`, from the start of the file or, if it resumes
  /// a transfer, from `first()`. Returns whether it can.
  bool KeepBytes(const TransferRecord& record);
  bool KeepRest();
  void Append(std::string_view bytes);

  /// Copies the bytes kept to `file`.
  void CopyTo(kitbay::platform::win32::ReplacementFile& file);

  /// As `Discard`, but remembers what the server said about the file now at the destination, in
  /// order to ask whether it has changed.
  void Settle(const TransferRecord& record);

  /// The destination still has the server's file: gives it today's date.
  void Refresh() const;

  const TransferRecord& record() const { return record_; }

 private:
  std::wstring RecordPath() const { return base_ + L".txt"; }
  std::wstring BytesPath() const { return base_ + L".part"; }
  void Load();
  bool OpenBytes(DWORD disposition);
  bool WriteRecord() const;

  std::wstring destination_;
  std::wstring base_;  // common start of both files' names; "" without a folder
  TransferRecord record_;
  kitbay::platform::win32::UniqueFile bytes_;
  std::uint64_t first_ = 0;
  bool asks_whether_changed_ = false;
};

}  // namespace ovalink
