#pragma once

#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "fakes/fake_active_objects.h"
#include "fakes/fake_main_window.h"
#include "fakes/fake_preference_window.h"
#include "fakes/memory_files.h"
#include "fakes/memory_registry.h"
#include "fakes/recording_desktop.h"
#include "journal.h"

/// The fakes of the platform whose calls appear in order in a journal.
namespace kitbay::app {

class JournalDesktop : public fakes::RecordingDesktop {
 public:
  explicit JournalDesktop(Journal& journal) : journal_(journal) { journal.Watch(calls()); }

  int PlatformId() const override {
    const Journal::Moment moment(journal_);
    return RecordingDesktop::PlatformId();
  }
  int ShowMessage(const std::string& text, const std::string& title, int style) override {
    const Journal::Moment moment(journal_);
    return RecordingDesktop::ShowMessage(text, title, style);
  }
  void CloseAllHelp() override {
    const Journal::Moment moment(journal_);
    RecordingDesktop::CloseAllHelp();
  }
  void PassForegroundRight() override {
    const Journal::Moment moment(journal_);
    RecordingDesktop::PassForegroundRight();
  }
  void SetActiveWindow(platform::WindowHandle window) override {
    const Journal::Moment moment(journal_);
    RecordingDesktop::SetActiveWindow(window);
    if (activation_failure) {
      throw base::Failure(*activation_failure);
    }
  }

  std::optional<base::Failure> activation_failure;  ///< of every window

 private:
  Journal& journal_;
};

class JournalRegistry : public fakes::MemoryRegistry {
 public:
  explicit JournalRegistry(Journal& journal) : journal_(journal) { journal.Watch(calls()); }

  KeyResult Open(platform::RegistryKey parent, const std::string& name,
                 std::uint32_t access) override {
    const Journal::Moment moment(journal_);
    return MemoryRegistry::Open(parent, name, access);
  }
  ValueResult Query(platform::RegistryKey key, const std::string& name,
                    std::uint32_t capacity) override {
    const Journal::Moment moment(journal_);
    return MemoryRegistry::Query(key, name, capacity);
  }
  std::int32_t Close(platform::RegistryKey key) override {
    const Journal::Moment moment(journal_);
    return MemoryRegistry::Close(key);
  }

 private:
  Journal& journal_;
};

class JournalTextStream : public platform::TextStream {
 public:
  JournalTextStream(Journal& journal, std::unique_ptr<platform::TextStream> stream)
      : journal_(journal), stream_(std::move(stream)) {}

  std::string ReadLine() override {
    const Journal::Moment moment(journal_);
    return stream_->ReadLine();
  }
  void WriteLine(const std::string& text) override {
    const Journal::Moment moment(journal_);
    stream_->WriteLine(text);
  }
  void Write(const std::string& text) override {
    const Journal::Moment moment(journal_);
    stream_->Write(text);
  }
  void Close() override {
    const Journal::Moment moment(journal_);
    stream_->Close();
  }

 private:
  Journal& journal_;
  std::unique_ptr<platform::TextStream> stream_;
};

class JournalFileSystemObject : public fakes::MemoryFileSystemObject {
 public:
  JournalFileSystemObject(Journal& journal, fakes::MemoryFiles& files)
      : MemoryFileSystemObject(files), journal_(journal) {}

  bool FileExists(const std::string& path) override {
    const Journal::Moment moment(journal_);
    return MemoryFileSystemObject::FileExists(path);
  }
  bool FolderExists(const std::string& path) override {
    const Journal::Moment moment(journal_);
    return MemoryFileSystemObject::FolderExists(path);
  }
  void CreateFolder(const std::string& path) override {
    const Journal::Moment moment(journal_);
    MemoryFileSystemObject::CreateFolder(path);
  }
  void DeleteFolder(const std::string& path, bool force) override {
    const Journal::Moment moment(journal_);
    MemoryFileSystemObject::DeleteFolder(path, force);
  }
  std::unique_ptr<platform::TextStream> CreateTextFile(const std::string& path,
                                                       bool overwrite) override {
    const Journal::Moment moment(journal_);
    return std::make_unique<JournalTextStream>(
        journal_, MemoryFileSystemObject::CreateTextFile(path, overwrite));
  }
  std::unique_ptr<platform::TextStream> OpenTextFile(const std::string& path) override {
    const Journal::Moment moment(journal_);
    return std::make_unique<JournalTextStream>(journal_,
                                               MemoryFileSystemObject::OpenTextFile(path));
  }

 private:
  Journal& journal_;
};

class JournalActiveObjects : public fakes::FakeActiveObjects {
 public:
  explicit JournalActiveObjects(Journal& journal) : journal_(journal) { journal.Watch(calls); }

  std::optional<platform::ClassId> ClassIdFromProgId(const std::string& prog_id) override {
    const Journal::Moment moment(journal_);
    return FakeActiveObjects::ClassIdFromProgId(prog_id);
  }
  std::int32_t RevokeActiveObject(std::uint32_t cookie) override {
    const Journal::Moment moment(journal_);
    return FakeActiveObjects::RevokeActiveObject(cookie);
  }
  void DisconnectObject(platform::ManagerService& object) override {
    const Journal::Moment moment(journal_);
    FakeActiveObjects::DisconnectObject(object);
  }
  std::unique_ptr<platform::ManagerService> GetActive(const std::string& prog_id) override {
    const Journal::Moment moment(journal_);
    return FakeActiveObjects::GetActive(prog_id);
  }

 private:
  Journal& journal_;
};

class JournalWindow : public fakes::FakeMainWindow {
 public:
  JournalWindow(Journal& journal, std::string page_markup)
      : FakeMainWindow(std::move(page_markup)), journal_(journal) {
    journal.Watch(calls().all());
  }

  void Load(platform::MainWindowEvents& events) override {
    const Journal::Moment moment(journal_);
    FakeMainWindow::Load(events);
  }
  void Unload() override {
    const Journal::Moment moment(journal_);
    FakeMainWindow::Unload();
  }
  void Show() override {
    const Journal::Moment moment(journal_);
    FakeMainWindow::Show();
  }
  void FitBrowser() override {
    const Journal::Moment moment(journal_);
    FakeMainWindow::FitBrowser();
  }
  std::shared_ptr<platform::HtmlDocument> ConnectDocument(
      platform::HtmlDocumentEvents& events) override {
    const Journal::Moment moment(journal_);
    return FakeMainWindow::ConnectDocument(events);
  }
  void DisconnectDocument() override {
    const Journal::Moment moment(journal_);
    FakeMainWindow::DisconnectDocument();
  }
  void SetHelpFile(const std::string& topic) override {
    const Journal::Moment moment(journal_);
    FakeMainWindow::SetHelpFile(topic);
  }

 private:
  Journal& journal_;
};

/// The dialog of update sources; the journal shows what the program does with it, such as
/// "Preference.Show".
class JournalPreferenceWindow : public fakes::FakePreferenceWindow {
 public:
  explicit JournalPreferenceWindow(Journal& journal) : journal_(journal) { journal.Watch(calls_); }

  void Unload() override {
    Note("Preference.Unload");
    FakePreferenceWindow::Unload();
  }
  void Show() override {
    Note("Preference.Show");
    FakePreferenceWindow::Show();
  }
  void FocusUrlBox() override {
    Note("Preference.FocusUrlBox");
    FakePreferenceWindow::FocusUrlBox();
  }

 private:
  void Note(const std::string& call) {
    const Journal::Moment moment(journal_);
    calls_.push_back(call);
  }

  Journal& journal_;
  std::vector<std::string> calls_;
};

}  // namespace kitbay::app
