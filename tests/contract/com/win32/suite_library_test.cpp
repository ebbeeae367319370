#include <gtest/gtest.h>
#include <windows.h>

#include <objbase.h>
#include <wrl/client.h>

#include <cstdint>
#include <functional>
#include <string>
#include <vector>

#include "contract/com/recording_receiver.h"
#include "contract/com/win32/registered_suite.h"
#include "contract/com/win32/scratch_user.h"
#include "contract/failure_number.h"
#include "ov_transport_events.h"
#include "platform/win32/com/automation.h"
#include "platform/win32/com/bstr.h"
#include "platform/win32/com/com_failure.h"
#include "platform/win32/com/counted_object.h"
#include "platform/win32/com/transport_event_sink.h"
#include "platform/win32/system/handles.h"
#include "suite.h"

namespace kitbay::contract {
namespace {

using Microsoft::WRL::ComPtr;
using platform::win32::CallMethod;
using platform::win32::Check;
using platform::win32::FindMember;
using platform::win32::GetProperty;
using platform::win32::Invoke;
using platform::win32::PutProperty;
using platform::win32::TransportEventSink;
using platform::win32::Variant;

ComPtr<IDispatch> Create(const wchar_t* prog_id) {
  CLSID id;
  Check(CLSIDFromProgID(prog_id, &id));
  ComPtr<IDispatch> object;
  Check(CoCreateInstance(id, nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&object)));
  return object;
}

std::string DescriptionOf(const std::function<void()>& step) {
  try {
    step();
  } catch (const base::Failure& failure) {
    return failure.description();
  }
  return "(no failure)";
}

TEST(Automation, AMissingMemberIs438) {
  const auto object = Create(L"FileSystemLib.FileSystemObject");
  EXPECT_EQ(FailureNumber([&] { CallMethod(*object.Get(), "Vanish"); }), 438);
  EXPECT_EQ(FailureNumber([&] { GetProperty(*object.Get(), "Größe"); }), 438);
  EXPECT_EQ(FailureNumber([&] { PutProperty(*object.Get(), "Drives", std::int32_t{1}); }), 438);
  EXPECT_EQ(DescriptionOf([&] { CallMethod(*object.Get(), "Vanish"); }),
            "Object doesn't support this property or method");
}

TEST(Automation, LetterCaseOfMembersDoesNotMatter) {
  const auto object = Create(L"FileSystemLib.FileSystemObject");
  EXPECT_TRUE(CallMethod(*object.Get(), "FOLDEREXISTS", {"C:\\"}).ToBoolean());
}

TEST(Automation, ArgumentsThatAreLeftOutHaveTheirDefaults) {
  const auto object = Create(L"FileSystemLib.FileSystemObject");
  EXPECT_EQ(FailureNumber([&] { CallMethod(*object.Get(), "OpenTextFile", {"C:\\missing"}); }), 53);
}

TEST(Automation, AnArgumentOfAnotherTypeIs13) {
  const auto object = Create(L"FileSystemLib.FileSystemObject");
  const auto call = [&] { CallMethod(*object.Get(), "DeleteFolder", {"C:\\missing", "maybe"}); };
  EXPECT_EQ(FailureNumber(call), 13);
}

TEST(Automation, ValuesAreConverted) {
  EXPECT_EQ(Variant(std::int32_t{-7}).ToText(), "-7");
  EXPECT_EQ(Variant(true).ToText(), "True");
  EXPECT_EQ(Variant("12").ToInteger(), 12);
  EXPECT_EQ(Variant("Zoë").ToText(), "Zoë");
  EXPECT_EQ(Variant().ToText(), "");
  EXPECT_FALSE(Variant("False").ToBoolean());
  EXPECT_TRUE(Variant(std::int32_t{2}).ToBoolean());
  EXPECT_TRUE(Variant().IsNothing());
  EXPECT_TRUE(Variant(static_cast<IDispatch*>(nullptr)).IsNothing());
  EXPECT_FALSE(Variant("").IsNothing());
  EXPECT_EQ(FailureNumber([] { Variant("many").ToInteger(); }), 13);
  EXPECT_EQ(FailureNumber([] { Variant("object").ToObject(); }), 13);
  EXPECT_EQ(FailureNumber([] { Variant("99999999999").ToInteger(); }), 6);
}

TEST(Automation, ValuesAreCopiedWithWhatTheyOwn) {
  const auto object = Create(L"FileSystemLib.FileSystemObject");
  Variant first("text");
  Variant second = first;
  first = Variant(object.Get());
  EXPECT_EQ(second.ToText(), "text");
  second = first;
  EXPECT_EQ(second.ToObject().Get(), object.Get());
}

TEST(SuiteTransport, NeedsAReceiver) {
  for (const wchar_t* prog_id : {L"XMLRPCTRANSPORT.xTransport", L"URLDownloadLib.URLDownload"}) {
    const auto object = Create(prog_id);
    IDispatch* const nothing = nullptr;
    EXPECT_EQ(FailureNumber([&] {
                CallMethod(*object.Get(), "SetUp", {nothing, nothing, nothing, nothing, nothing});
              }),
              5);
  }
}

TEST(SuiteTransport, HoldsItsReceiverUntilItIsShutDown) {
  const auto object = Create(L"URLDownloadLib.URLDownload");
  const auto receiver = Create(L"FileSystemLib.FileSystemObject");
  const auto references = [&] {
    receiver->AddRef();
    return receiver->Release();
  };
  IDispatch* const nothing = nullptr;
  ASSERT_EQ(references(), 1U);
  CallMethod(*object.Get(), "SetUp", {receiver.Get(), nothing, nothing, nothing, nothing});
  EXPECT_EQ(references(), 2U);
  CallMethod(*object.Get(), "ShutDown");
  EXPECT_EQ(references(), 1U);
}

TEST(SuiteLibrary, StaysLoadedWhileAnObjectOfItIsHeld) {
  ASSERT_EQ(CallSuite("DllCanUnloadNow"), S_OK);
  auto object = Create(L"FileSystemLib.FileSystemObject");
  EXPECT_EQ(CallSuite("DllCanUnloadNow"), S_FALSE);
  object.Reset();
  EXPECT_EQ(CallSuite("DllCanUnloadNow"), S_OK);
}

/// How many keys the user has below a key of their classes.
DWORD KeysBelow(const wchar_t* name) {
  platform::win32::UniqueRegistryKey key;
  DWORD count = 0;
  const std::wstring path = std::wstring(L"Software\\Classes") + name;
  RegOpenKeyExW(HKEY_CURRENT_USER, path.c_str(), 0, KEY_READ, key.put());
  RegQueryInfoKeyW(key.get(), nullptr, nullptr, nullptr, &count, nullptr, nullptr, nullptr, nullptr,
                   nullptr, nullptr, nullptr);
  return count;
}

TEST(SuiteLibrary, RemovesAllThatItRegisters) {
  const ScratchUser user;
  ASSERT_EQ(CallSuite("DllRegisterServer"), S_OK);
  EXPECT_EQ(KeysBelow(L""), 6U) << "three ProgIDs, CLSID, Interface, TypeLib";
  EXPECT_EQ(KeysBelow(L"\\CLSID"), 3U);
  EXPECT_EQ(KeysBelow(L"\\Interface"), 4U);
  EXPECT_EQ(KeysBelow(L"\\TypeLib"), 1U);
  ASSERT_EQ(CallSuite("DllUnregisterServer"), S_OK);
  EXPECT_EQ(KeysBelow(L""), 3U);
  EXPECT_EQ(KeysBelow(L"\\CLSID"), 0U);
  EXPECT_EQ(KeysBelow(L"\\Interface"), 0U);
  EXPECT_EQ(KeysBelow(L"\\TypeLib"), 0U);
  EXPECT_EQ(CallSuite("DllUnregisterServer"), S_OK) << "nothing left is no failure";
}

class EventSink : public testing::Test {
 protected:
  EventSink() { sink_ = platform::win32::Adopt(new TransportEventSink(receiver_)); }

  std::int32_t Send(const char* event, const std::vector<Variant>& texts) {
    return FailureNumber([&] { CallMethod(*sink_.Get(), event, texts); });
  }

  RecordingReceiver receiver_;
  ComPtr<TransportEventSink> sink_;
};

TEST_F(EventSink, PassesTheTextsOnByTheirPosition) {
  EXPECT_EQ(Send("Message", {"", "/päth.xml", "Total-Length", "12"}), 0);
  EXPECT_EQ(Send("Message", {"", "/päth.xml", "Length", std::int32_t{7}, "more"}), 0);
  EXPECT_EQ(Send("Exception", {"a", "b", "/p.xml", "connection timed out"}), 0);
  EXPECT_EQ(receiver_.events,
            "Message(/päth.xml,Total-Length,12)Message(/päth.xml,Length,7)"
            "Exception(/p.xml,connection timed out)");
}

TEST_F(EventSink, ReceivesByTheNumbersOfTheEventInterface) {
  ComPtr<IDispatch> events;
  ASSERT_EQ(sink_->QueryInterface(__uuidof(::OvTransportEvents), &events), S_OK);
  const std::vector<Variant> texts = {"1", "2", "3", "4"};
  Invoke(*events.Get(), 1, DISPATCH_METHOD, texts);
  Invoke(*events.Get(), 2, DISPATCH_METHOD, texts);
  EXPECT_EQ(receiver_.events, "Message(2,3,4)Exception(3,4)");
}

TEST_F(EventSink, TakesTextsByReference) {
  platform::win32::Bstr text("late");
  BSTR value = text.get();
  VARIANT arguments[4];
  for (VARIANT& argument : arguments) {
    VariantInit(&argument);
    argument.vt = VT_BSTR | VT_BYREF;
    argument.pbstrVal = &value;
  }
  DISPPARAMS parameters{arguments, nullptr, 4, 0};
  EXPECT_EQ(sink_->Invoke(2, IID_NULL, 0, DISPATCH_METHOD, &parameters, nullptr, nullptr, nullptr),
            S_OK);
  EXPECT_EQ(receiver_.events, "Exception(late,late)");
}

TEST_F(EventSink, LeavesOtherEventsAlone) {
  const std::vector<Variant> texts = {"1", "2", "3", "4"};
  Invoke(*sink_.Get(), 3, DISPATCH_METHOD, texts);
  Invoke(*sink_.Get(), 99, DISPATCH_METHOD);
  EXPECT_EQ(receiver_.events, "");
}

TEST_F(EventSink, RefusesAnEventWithoutItsTexts) {
  EXPECT_EQ(Send("Message", {"1", "2", "3"}), DISP_E_BADPARAMCOUNT);
  EXPECT_EQ(receiver_.events, "");
}

TEST_F(EventSink, DropsEventsAfterItsClientHasGone) {
  sink_->Disconnect();
  EXPECT_EQ(Send("Message", {"1", "2", "3", "4"}), 0);
  EXPECT_EQ(receiver_.events, "");
}

}  // namespace
}  // namespace kitbay::contract
