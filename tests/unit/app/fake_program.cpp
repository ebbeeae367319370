#include "fake_program.h"

#include <algorithm>
#include <fstream>
#include <iterator>

namespace kitbay::app {
namespace {

std::string PageMarkup() {
  std::ifstream file(KITBAY_PAGE_FILE, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

}  // namespace

FakeProgram::FakeProgram() : window(journal, PageMarkup()) {
  journal.Watch(files.operations());
  journal.Watch(suite_objects.calls);

  com_server.class_tables = &active_objects;
  files.SetEverybodys("C:\\Ovalink");
  files.AddFolder("C:\\Ovalink\\Kitbay");
  files.AddFolder("C:\\Ana\\Ovalink\\CustomData");
  const std::string entry = std::string(kUninstallKey) + "Tessel";
  keys.AddText(entry, "InstallLocation", "C:\\Ovalink");
  keys.AddText(entry, "Displayname", "Tessel Messenger");
  keys.AddText(entry, "ApplicationEXE", "TesselMain.exe");
  keys.AddText(
      "HKEY_CURRENT_USER\\Software\\Microsoft\\Windows\\CurrentVersion\\Explorer\\Shell Folders",
      "AppData", "C:\\Ana");
  files.AddFile("C:\\Ovalink\\Kitbay\\DirectoryPreference.xml",
                "<root><preferences><preference url='updates.example/list.xml'/></preferences>"
                "</root>");
  files.AddFile("C:\\Ovalink\\Datastore\\olregistry.xml",
                "<root><channels><channel id='news' name='News' version='1.0'>"
                "<description>Tells news.</description><core>0</core></channel></channels></root>");
}

base::Settings FakeProgram::OwnPlace() {
  base::Settings settings;
  settings.program_folder = "C:\\Ovalink\\Kitbay";
  settings.program_name = "Kitbay";
  return settings;
}

void FakeProgram::RunAsAdministrator() {
  files.SetUser(fakes::User::kAdministrator);
  keys.SetUser(fakes::User::kAdministrator);
  elevation.SetUser(fakes::User::kAdministrator);
  active_objects.SetUser(fakes::User::kAdministrator);
  com_server.SetUser(fakes::User::kAdministrator);
}

bool FakeProgram::Start() { return program.Start(); }

void FakeProgram::StartAndLoadPage() {
  ASSERT_TRUE(Start());
  window.events()->WebBrowser1_DocumentComplete();
}

std::string FakeProgram::Log() const { return files.Bytes(kLogPath).value_or("(none)"); }

std::string FakeProgram::Header() { return "Log Date :11/21/2026 10:15:30 AM\r\n"; }

std::string FakeProgram::Entry(const std::string& procedure, const std::string& number,
                               const std::string& description) {
  return "=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-=-="
         "-"
         "=\r\n"
         "[11/21/2026 10:15:30 AM]   [" +
         number +
         "]\r\n"
         "                         [Source:-  " +
         procedure +
         "]\r\n"
         "                         [Description:-  " +
         description + "]\r\n";
}

std::vector<std::string> FakeProgram::CallsOf(const std::vector<std::string>& starts) {
  std::vector<std::string> found;
  std::copy_if(journal.calls().begin(), journal.calls().end(), std::back_inserter(found),
               [&](const std::string& call) {
                 return std::any_of(starts.begin(), starts.end(), [&](const std::string& start) {
                   return call.starts_with(start);
                 });
               });
  return found;
}

std::ptrdiff_t FakeProgram::Count(const std::string& call) {
  return std::count(journal.calls().begin(), journal.calls().end(), call);
}

}  // namespace kitbay::app
