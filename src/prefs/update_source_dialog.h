#pragma once

#include <string>
#include <vector>

#include "base/error_log.h"
#include "platform/files.h"
#include "platform/preference_window.h"
#include "prefs/source_url.h"
#include "update/update_source_file.h"

namespace kitbay::prefs {

/// Works with the update sources; is notified of new sources and of problems with them.
class SourceListUser {
 public:
  virtual ~SourceListUser() = default;

  /// Reads the update sources again and asks them.
  virtual void GetDirectoryPreferenceFile() = 0;

  /// A change that the user made could not be saved.
  virtual void TellNotSaved() = 0;

  /// The user has added `url`, whose manifest has the same file name as that of `other`, so the two
  /// manifests replace each other.
  virtual void TellSameName(const std::string& url, const std::string& other) = 0;
};

/// The dialog `frmPreference`, in which the user adds and removes update sources. Removals are
/// saved at once, additions when the dialog closes; then `SourceListUser` is notified, also if a
/// change could not be saved. The handlers log their failures and go no further; the file is then
/// whole, and the list shows its contents. Sources that sign their manifests are marked in the
/// list.
class UpdateSourceDialog : public platform::PreferenceWindowEvents {
 public:
  UpdateSourceDialog(base::ErrorLog& log, platform::Files& files,
                     const update::UpdateSourceFile& source_file,
                     platform::PreferenceWindow& window, SourceListUser& user)
      : log_(log), files_(files), source_file_(source_file), window_(window), user_(user) {}

  /// Opens the dialog, owned by `owner`, with the sources in the file; if it is already open,
  /// brings it to the front unchanged. Throws `base::Failure` if the window cannot be created.
  void Show(platform::WindowHandle owner);
  void FocusUrlBox() { window_.FocusUrlBox(); }

  /// Closes the dialog if it is open.
  void Unload() { window_.Unload(); }

  void Form_Unload() override;
  void cmdPrefOk_Click() override;
  void Command1_Click() override;
  void cmdPrefClose_Click() override;
  void txtPrefUrl_KeyDown(int key_code) override;
  void lstPrefURL_KeyDown(int key_code) override;
  void lstPrefURL_MouseUp() override;
  void lstPrefURL_SelectionChange() override;

 private:
  void Form_Load();
  void AddURL();
  bool SavePreference();  // returns whether the file has a new source

  void RefuseUrl();
  void RefuseDuplicate();
  void TakeSource(const TypedSource& source);
  void List(const TypedSource& source);
  bool IsListed(const std::string& url) const;
  std::string UrlOfSameName(const std::string& url) const;
  void RemoveSource(int position);

  base::ErrorLog& log_;
  platform::Files& files_;
  const update::UpdateSourceFile& source_file_;
  platform::PreferenceWindow& window_;
  SourceListUser& user_;
  std::vector<TypedSource> listed_;  // in the order of the window's list
  bool has_additions_ = false;
};

}  // namespace kitbay::prefs
