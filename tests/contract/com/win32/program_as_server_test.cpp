#include <gtest/gtest.h>
#include <windows.h>
#include <wrl/client.h>

#include <memory>
#include <string>

#include "contract/com/recording_services.h"
#include "contract/com/win32/client_process.h"
#include "contract/com/win32/registered_program.h"
#include "contract/com/win32/scratch_user.h"
#include "contract/failure_number.h"
#include "contract/windows/patience.h"
#include "contract/windows/replaced_import.h"
#include "platform/win32/com/instance_mark.h"
#include "platform/win32/com/own_type_library.h"
#include "platform/win32/system/handles.h"
#include "platform/win32/system/utf.h"
#include "platform/win32/win32_platform.h"

// What the program registers for itself, and what only a second process can show.
namespace kitbay::contract {
namespace {

using platform::win32::OwnModulePath;
using platform::win32::ToUtf8;
using platform::win32::UniqueKernelObject;
using platform::win32::UniqueRegistryKey;

constexpr wchar_t kClasses[] = L"Software\\Classes";
constexpr wchar_t kServer[] =
    L"Software\\Classes\\CLSID\\{8A0E9829-3EA9-4179-8E8A-4008593B13B1}\\LocalServer32";
#ifdef _WIN64
#define KITBAY_PLATFORM L"win64"
#else
#define KITBAY_PLATFORM L"win32"
#endif

std::string TextAt(const std::wstring& key, const wchar_t* name = nullptr) {
  wchar_t text[1024] = L"";
  DWORD size = sizeof text;
  const LSTATUS status =
      RegGetValueW(HKEY_CURRENT_USER, (std::wstring(kClasses) + L"\\" + key).c_str(), name,
                   RRF_RT_REG_SZ, nullptr, text, &size);
  return status == ERROR_SUCCESS ? ToUtf8(text) : "(missing)";
}

std::wstring& NotedMutexName() {
  static std::wstring name;
  return name;
}

HANDLE WINAPI NoteMutex(LPSECURITY_ATTRIBUTES, WINBOOL, LPCWSTR name) {
  NotedMutexName() = name;
  return nullptr;
}

HANDLE WINAPI DenyMutex(LPSECURITY_ATTRIBUTES, WINBOOL, LPCWSTR) {
  SetLastError(ERROR_ACCESS_DENIED);
  return nullptr;
}

TEST(Registration, EntersClassesTypeLibraryAndInterfacesForTheUser) {
  const RegisteredProgram program;
  const std::string path = ToUtf8(OwnModulePath());
  const std::string library = "{997F378A-6AD5-4C37-8B7C-27DA8AC64210}";
  const std::string automation = "{00020424-0000-0000-C000-000000000046}";

  EXPECT_EQ(TextAt(L"Kitbay.Manager\\CLSID"), "{09AF1DF2-E54A-4906-B489-73D097248D58}");
  EXPECT_EQ(TextAt(L"Kitbay.Registry\\CLSID"), "{8A0E9829-3EA9-4179-8E8A-4008593B13B1}");
  const std::wstring id = L"CLSID\\{09AF1DF2-E54A-4906-B489-73D097248D58}";
  EXPECT_EQ(TextAt(id + L"\\ProgID"), "Kitbay.Manager");
  EXPECT_EQ(TextAt(id + L"\\LocalServer32"), "\"" + path + "\"");
  EXPECT_EQ(TextAt(id + L"\\TypeLib"), library);
  EXPECT_EQ(TextAt(id + L"\\Version"), "1.0");

  const std::wstring type_library = L"TypeLib\\{997F378A-6AD5-4C37-8B7C-27DA8AC64210}\\1.0";
  EXPECT_EQ(TextAt(type_library), "Kitbay");
  EXPECT_EQ(TextAt(type_library + L"\\0\\" KITBAY_PLATFORM), path);
  EXPECT_EQ(TextAt(type_library + L"\\FLAGS"), "0");

  for (const wchar_t* interface_id :
       {L"{0A31275D-7C6C-49EC-BCF6-9F429F461F38}", L"{40D822C5-F70C-4C29-981D-8BDAFB9F0135}"}) {
    const std::wstring key = std::wstring(L"Interface\\") + interface_id;
    EXPECT_EQ(TextAt(key + L"\\ProxyStubClsid32"), automation);
    EXPECT_EQ(TextAt(key + L"\\TypeLib"), library);
    EXPECT_EQ(TextAt(key + L"\\TypeLib", L"Version"), "1.0");
  }
  EXPECT_EQ(TextAt(L"Interface\\{0A31275D-7C6C-49EC-BCF6-9F429F461F38}"), "IManager");
  EXPECT_EQ(TextAt(L"Interface\\{40D822C5-F70C-4C29-981D-8BDAFB9F0135}"), "IRegistry");
}

TEST(Registration, ForTheMachineEntersNothingForTheUser) {
  const RegisteredProgram program;
  const std::wstring server =
      L"Software\\Classes\\CLSID\\{09AF1DF2-E54A-4906-B489-73D097248D58}\\LocalServer32";
  RegDeleteTreeW(HKEY_LOCAL_MACHINE, server.c_str());
  // The test prefix joins the user's classes to the machine's; this user's classes are separate.
  const ScratchUser user;
  platform::win32::MakeComServer()->KeepRegistrationCurrent(platform::ClassesOf::kMachine);
  EXPECT_EQ(TextAt(L"Kitbay.Manager\\CLSID"), "(missing)");
  wchar_t text[1024] = L"";
  DWORD size = sizeof text;
  EXPECT_EQ(RegGetValueW(HKEY_LOCAL_MACHINE, server.c_str(), nullptr, RRF_RT_REG_SZ, nullptr, text,
                         &size),
            ERROR_SUCCESS);
  const std::string path = ToUtf8(OwnModulePath());
  EXPECT_EQ(ToUtf8(text), "\"" + path + "\"");
}

TEST(Registration, CorrectsWhatNamesAnotherExecutable) {
  RegisteredProgram program;
  const std::string own = TextAt(L"CLSID\\{8A0E9829-3EA9-4179-8E8A-4008593B13B1}\\LocalServer32");
  UniqueRegistryKey key;
  ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, kServer, 0, KEY_SET_VALUE, key.put()), ERROR_SUCCESS);
  const std::wstring other = L"\"C:\\Old\\Kitbay.exe\"";
  ASSERT_EQ(
      RegSetValueExW(key.get(), nullptr, 0, REG_SZ, reinterpret_cast<const BYTE*>(other.c_str()),
                     static_cast<DWORD>((other.size() + 1) * sizeof(wchar_t))),
      ERROR_SUCCESS);
  program.server().KeepRegistrationCurrent(platform::ClassesOf::kUser);
  EXPECT_EQ(TextAt(L"CLSID\\{8A0E9829-3EA9-4179-8E8A-4008593B13B1}\\LocalServer32"), own);
}

TEST(Registration, WritesNothingWhereAllIsAsItShouldBe) {
  RegisteredProgram program;
  UniqueRegistryKey key;
  ASSERT_EQ(RegOpenKeyExW(HKEY_CURRENT_USER, L"Software\\Classes\\CLSID", 0, KEY_NOTIFY, key.put()),
            ERROR_SUCCESS);
  const UniqueKernelObject changed(CreateEventW(nullptr, TRUE, FALSE, nullptr));
  ASSERT_EQ(
      RegNotifyChangeKeyValue(key.get(), TRUE, REG_NOTIFY_CHANGE_NAME | REG_NOTIFY_CHANGE_LAST_SET,
                              changed.get(), TRUE),
      ERROR_SUCCESS);
  program.server().KeepRegistrationCurrent(platform::ClassesOf::kUser);
  EXPECT_EQ(WaitForSingleObject(changed.get(), 0), DWORD{WAIT_TIMEOUT});

  // The watch does notice a change.
  ASSERT_EQ(RegDeleteTreeW(HKEY_CURRENT_USER, kServer), ERROR_SUCCESS);
  EXPECT_EQ(WaitForSingleObject(changed.get(), kPatienceMs), DWORD{WAIT_OBJECT_0});
  program.server().KeepRegistrationCurrent(platform::ClassesOf::kUser);
  EXPECT_NE(TextAt(L"CLSID\\{8A0E9829-3EA9-4179-8E8A-4008593B13B1}\\LocalServer32"), "(missing)");
}

TEST(ProgramAsServer, ClientsMayUseTheInterfaceInsteadOfNames) {
  RegisteredProgram program;
  RecordingServices services;
  program.server().RegisterClassObjects(services);
  ClientProcess client;
  ASSERT_EQ(client.Ask("create Kitbay.Registry"), "0");
  EXPECT_EQ(client.Ask("early"), "C:\\users\\Zoë\\数据");
}

TEST(ProgramAsServer, AClassObjectThatIsStillHeldCreatesNothingOnceItIsRevoked) {
  RegisteredProgram program;
  RecordingServices services;
  program.server().RegisterClassObjects(services);
  Microsoft::WRL::ComPtr<IClassFactory> factory;
  ASSERT_EQ(CoGetClassObject(__uuidof(::Registry), CLSCTX_LOCAL_SERVER, nullptr,
                             IID_PPV_ARGS(factory.GetAddressOf())),
            S_OK);
  program.server().RevokeClassObjects();
  Microsoft::WRL::ComPtr<IUnknown> object;
  EXPECT_EQ(factory->CreateInstance(nullptr, IID_PPV_ARGS(object.GetAddressOf())),
            CO_E_SERVER_STOPPING);
  EXPECT_EQ(services.calls, "");
}

TEST(ProgramAsServer, ADisconnectedManagerIsOutOfReachAndNotMerelySilent) {
  const RegisteredProgram program;
  CountingManager manager;
  ClientProcess client;
  const auto objects = platform::win32::MakeActiveObjects();
  const auto class_id = objects->ClassIdFromProgId("Kitbay.Manager");
  ASSERT_TRUE(class_id.has_value());
  const auto cookie = objects->RegisterActiveObject(manager, *class_id);
  ASSERT_TRUE(cookie.has_value());
  ASSERT_EQ(client.Ask("hold Kitbay.Manager"), "0");
  EXPECT_EQ(client.Ask("call NoSuchMember"), "failure 438");
  EXPECT_EQ(objects->RevokeActiveObject(*cookie), 0);
  objects->DisconnectObject(manager);
  // Nor does it answer queries for its members any more: the system has released the object.
  const std::string answer = client.Ask("call NoSuchMember");
  EXPECT_TRUE(answer.starts_with("failure -")) << answer;
}

TEST(ProgramAsServer, AClientWithinTheProgramIsDisconnectedToo) {
  const RegisteredProgram program;
  CountingManager manager;
  const auto objects = platform::win32::MakeActiveObjects();
  const auto class_id = objects->ClassIdFromProgId("Kitbay.Manager");
  ASSERT_TRUE(class_id.has_value());
  const auto cookie = objects->RegisterActiveObject(manager, *class_id);
  ASSERT_TRUE(cookie.has_value());
  const auto client = objects->GetActive("Kitbay.Manager");
  client->BringToFront();
  EXPECT_EQ(objects->RevokeActiveObject(*cookie), 0);
  objects->DisconnectObject(manager);
  EXPECT_EQ(FailureNumber([&] { client->BringToFront(); }), kDisconnected);
  EXPECT_EQ(manager.calls, 1);
}

TEST(ProgramAsServer, TheTableDoesNotKeepTheManagerAlive) {
  const RegisteredProgram program;
  CountingManager manager;
  ClientProcess client;
  auto objects = platform::win32::MakeActiveObjects();
  const auto class_id = objects->ClassIdFromProgId("Kitbay.Manager");
  ASSERT_TRUE(class_id.has_value());
  const auto cookie = objects->RegisterActiveObject(manager, *class_id);
  ASSERT_TRUE(cookie.has_value());
  ASSERT_EQ(client.Ask("get Kitbay.Manager"), "0");
  ASSERT_EQ(client.Ask("let go"), "0");
  // Neither revoked nor disconnected: the entry stays, its object is destroyed.
  objects.reset();
  EXPECT_EQ(client.Ask("get Kitbay.Manager"), "429");
  EXPECT_EQ(platform::win32::MakeActiveObjects()->RevokeActiveObject(*cookie), 0);
}

TEST(InstanceMark, IsSeenByTheNextProcessForAsLongAsItLives) {
  const std::wstring name = L"Local\\Kitbay.Tests " + std::to_wstring(GetCurrentProcessId());
  ClientProcess client;
  EXPECT_EQ(client.Ask("mark " + ToUtf8(name)), "0");
  {
    platform::win32::MutexMark mark(name);
    EXPECT_FALSE(mark.PreviousInstanceExists());
    EXPECT_EQ(client.Ask("mark " + ToUtf8(name)), "1");
    EXPECT_FALSE(mark.PreviousInstanceExists()) << "the first answer stands";
  }
  EXPECT_EQ(client.Ask("mark " + ToUtf8(name)), "0");
}

TEST(InstanceMark, OfTheProgramIsTheSessionsAndNotTheMachines) {
  const ReplacedImport noted("CreateMutexW", reinterpret_cast<void*>(&NoteMutex));
  platform::win32::MakeInstanceMark()->PreviousInstanceExists();
  EXPECT_TRUE(NotedMutexName().starts_with(L"Local\\Kitbay.Manager"));
}

TEST(InstanceMark, ThatMayNotBeOpenedStillMeansAnotherInstance) {
  // What Windows reports for a mutex that an elevated instance has created; Wine denies none.
  const ReplacedImport denied("CreateMutexW", reinterpret_cast<void*>(&DenyMutex));
  EXPECT_TRUE(platform::win32::MutexMark(L"Local\\Kitbay.Tests denied").PreviousInstanceExists());
}

}  // namespace
}  // namespace kitbay::contract
