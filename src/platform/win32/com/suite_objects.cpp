#include <windows.h>

#include <objbase.h>
#include <wrl/client.h>

#include <cstdint>
#include <memory>
#include <string>
#include <utility>

#include "base/failure.h"
#include "platform/win32/com/activation_context.h"
#include "platform/win32/com/automation.h"
#include "platform/win32/com/counted_object.h"
#include "platform/win32/com/transport_event_sink.h"
#include "platform/win32/system/system_path.h"
#include "platform/win32/system/utf.h"
#include "platform/win32/win32_platform.h"

namespace kitbay::platform::win32 {
namespace {

using Microsoft::WRL::ComPtr;

constexpr std::int32_t kNoSuchMember = 438;

// Returns REGDB_E_CLASSNOTREG if the ProgID names nothing that this process could create.
HRESULT Create(const std::string& prog_id, ComPtr<IDispatch>& object) {
  CLSID id;
  return FAILED(CLSIDFromProgID(ToUtf16(prog_id).c_str(), &id))
             ? REGDB_E_CLASSNOTREG
             : CoCreateInstance(id, nullptr, CLSCTX_SERVER, IID_PPV_ARGS(&object));
}

class SuiteTextStream : public TextStream {
 public:
  explicit SuiteTextStream(ComPtr<IDispatch> object) : object_(std::move(object)) {
    if (!object_) {
      throw base::Failure(base::RuntimeError::kObjectVariableNotSet);
    }
  }

  std::string ReadLine() override { return CallMethod(*object_.Get(), "ReadLine").ToText(); }
  void WriteLine(const std::string& text) override {
    CallMethod(*object_.Get(), "WriteLine", {text});
  }
  void Write(const std::string& text) override { CallMethod(*object_.Get(), "Write", {text}); }
  void Close() override { CallMethod(*object_.Get(), "Close"); }

 private:
  ComPtr<IDispatch> object_;
};

class SuiteFileSystemObject : public FileSystemObject {
 public:
  explicit SuiteFileSystemObject(ComPtr<IDispatch> object) : object_(std::move(object)) {}

  bool FileExists(const std::string& path) override {
    return CallMethod(*object_.Get(), "FileExists", {path}).ToBoolean();
  }
  bool FolderExists(const std::string& path) override {
    return CallMethod(*object_.Get(), "FolderExists", {path}).ToBoolean();
  }
  void CreateFolder(const std::string& path) override {
    CallMethod(*object_.Get(), "CreateFolder", {path});
  }
  void DeleteFolder(const std::string& path, bool force) override {
    CallMethod(*object_.Get(), "DeleteFolder", {path, force});
  }
  std::unique_ptr<TextStream> CreateTextFile(const std::string& path, bool overwrite) override {
    const bool unicode = false;
    return Stream(CallMethod(*object_.Get(), "CreateTextFile", {path, overwrite, unicode}));
  }
  std::unique_ptr<TextStream> OpenTextFile(const std::string& path) override {
    const std::int32_t for_reading = 1;
    const bool create = false;
    const std::int32_t eight_bit = 0;
    return Stream(
        CallMethod(*object_.Get(), "OpenTextFile", {path, for_reading, create, eight_bit}));
  }

 private:
  static std::unique_ptr<TextStream> Stream(const Variant& object) {
    return std::make_unique<SuiteTextStream>(object.ToObject());
  }

  ComPtr<IDispatch> object_;
};

class SuiteTransportObject : public TransportObject {
 public:
  explicit SuiteTransportObject(ComPtr<IDispatch> object) : object_(std::move(object)) {}

  ~SuiteTransportObject() override {
    if (sink_) {
      sink_->Disconnect();
    }
  }

  void SetUp(OvTransportEvents& receiver) override {
    if (sink_) {
      sink_->Disconnect();
    }
    sink_ = Adopt(new TransportEventSink(receiver));
    IDispatch* const nothing = nullptr;
    CallMethod(*object_.Get(), "SetUp", {sink_.Get(), nothing, nothing, nothing, nothing});
  }

  void Request(const std::string& document) override {
    Variant ignored;
    CallMethod(*object_.Get(), "Request",
               {"", "", "", "", "", document, Variant::EmptyList(), Variant::ReferenceTo(ignored)});
  }

  void LimitNext(std::uint64_t bytes) override {
    try {
      CallMethod(*object_.Get(), "LimitNext", {std::to_string(bytes)});
    } catch (const base::Failure& failure) {
      if (failure.number() != kNoSuchMember) {
        throw;
      }
    }
  }

  void ShutDown() override {
    CallMethod(*object_.Get(), "ShutDown");
    if (sink_) {
      sink_->Disconnect();
    }
    sink_.Reset();
  }

 private:
  ComPtr<IDispatch> object_;
  ComPtr<TransportEventSink> sink_;
};

class ComSuiteObjects : public SuiteObjects {
 public:
  explicit ComSuiteObjects(const std::string& folder)
      : beside_(ToSystemPath(folder + "\\OvalinkSuite.manifest")) {}

  std::unique_ptr<FileSystemObject> CreateFileSystemObject(const std::string& prog_id) override {
    return std::make_unique<SuiteFileSystemObject>(CreateObject(prog_id));
  }
  std::unique_ptr<TransportObject> CreateTransportObject(const std::string& prog_id) override {
    return std::make_unique<SuiteTransportObject>(CreateObject(prog_id));
  }

 private:
  // What a suite has registered takes precedence.
  ComPtr<IDispatch> CreateObject(const std::string& prog_id) const {
    ComPtr<IDispatch> object;
    HRESULT result = Create(prog_id, object);
    if (result == REGDB_E_CLASSNOTREG) {
      const ActivationContext::Active active(beside_);
      result = Create(prog_id, object);
    }
    if (FAILED(result)) {
      throw base::Failure(base::RuntimeError::kCannotCreateObject);
    }
    return object;
  }

  ActivationContext beside_;
};

}  // namespace

std::unique_ptr<SuiteObjects> MakeSuiteObjects(const std::string& folder) {
  return std::make_unique<ComSuiteObjects>(folder);
}

}  // namespace kitbay::platform::win32
