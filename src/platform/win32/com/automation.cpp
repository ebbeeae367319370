#include "platform/win32/com/automation.h"

#include <array>
#include <ranges>

#include "platform/win32/com/bstr.h"
#include "platform/win32/com/com_failure.h"

namespace kitbay::platform::win32 {
namespace {

/// The strings of a failed call's record, freed with it.
class FailureRecord {
 public:
  FailureRecord() = default;
  ~FailureRecord() {
    SysFreeString(record_.bstrSource);
    SysFreeString(record_.bstrDescription);
    SysFreeString(record_.bstrHelpFile);
  }
  FailureRecord(const FailureRecord&) = delete;
  FailureRecord& operator=(const FailureRecord&) = delete;

  EXCEPINFO* receive() { return &record_; }

  base::Failure ToFailure() {
    if (record_.pfnDeferredFillIn != nullptr) {
      record_.pfnDeferredFillIn(&record_);
    }
    const std::string description = TextOf(record_.bstrDescription);
    // A server reports either a result code or a number of its own.
    const HRESULT result =
        record_.scode != 0 ? record_.scode
                           : static_cast<HRESULT>(0x800A0000U | static_cast<ULONG>(record_.wCode));
    return FailureOf(result, description);
  }

 private:
  EXCEPINFO record_{};
};

Microsoft::WRL::ComPtr<IEnumVARIANT> EnumeratorOf(IDispatch& collection) {
  const Variant value = Invoke(collection, DISPID_NEWENUM, DISPATCH_PROPERTYGET | DISPATCH_METHOD);
  const VARIANT& enumerator = value.get();
  const bool is_object = enumerator.vt == VT_UNKNOWN || enumerator.vt == VT_DISPATCH;
  Microsoft::WRL::ComPtr<IEnumVARIANT> members;
  if (!is_object || enumerator.punkVal == nullptr ||
      FAILED(enumerator.punkVal->QueryInterface(IID_PPV_ARGS(&members)))) {
    throw FailureOf(DISP_E_TYPEMISMATCH);
  }
  return members;
}

}  // namespace

std::vector<Variant> MembersOf(IDispatch& collection) {
  constexpr ULONG kBatch = 64;
  const auto enumerator = EnumeratorOf(collection);
  std::vector<Variant> members;
  ULONG fetched = kBatch;
  while (fetched == kBatch) {
    std::array<VARIANT, kBatch> batch{};
    members.reserve(members.size() + kBatch);
    Check(enumerator->Next(kBatch, batch.data(), &fetched));
    for (ULONG i = 0; i < fetched; ++i) {
      *members.emplace_back().receive() = batch[i];
    }
  }
  return members;
}

DISPID FindMember(IDispatch& object, const std::string& name) {
  std::wstring wide = ToUtf16(name);
  LPOLESTR names[] = {wide.data()};
  DISPID member = DISPID_UNKNOWN;
  Check(object.GetIDsOfNames(IID_NULL, names, 1, LOCALE_USER_DEFAULT, &member));
  return member;
}

Variant Invoke(IDispatch& object, DISPID member, WORD flags, std::span<const Variant> arguments) {
  // Shallow copies, last argument first; the caller's values own what they refer to.
  std::vector<VARIANT> reversed;
  reversed.reserve(arguments.size());
  for (const Variant& argument : arguments | std::views::reverse) {
    reversed.push_back(argument.get());
  }
  DISPID named[] = {DISPID_PROPERTYPUT};
  const bool is_put = (flags & (DISPATCH_PROPERTYPUT | DISPATCH_PROPERTYPUTREF)) != 0;
  DISPPARAMS parameters{reversed.data(), is_put ? named : nullptr,
                        static_cast<UINT>(reversed.size()), is_put ? 1U : 0U};
  Variant result;
  FailureRecord failure;
  UINT bad_argument = 0;
  const HRESULT outcome =
      object.Invoke(member, IID_NULL, LOCALE_USER_DEFAULT, flags, &parameters,
                    is_put ? nullptr : result.receive(), failure.receive(), &bad_argument);
  if (outcome == DISP_E_EXCEPTION) {
    throw failure.ToFailure();
  }
  Check(outcome);
  return result;
}

Variant GetProperty(IDispatch& object, const std::string& name,
                    const std::vector<Variant>& arguments) {
  // Objects that cannot distinguish a property with arguments from a method accept either.
  const WORD flags = arguments.empty() ? DISPATCH_PROPERTYGET
                                       : static_cast<WORD>(DISPATCH_PROPERTYGET | DISPATCH_METHOD);
  return Invoke(object, FindMember(object, name), flags, arguments);
}

void PutProperty(IDispatch& object, const std::string& name, const Variant& value) {
  Invoke(object, FindMember(object, name), DISPATCH_PROPERTYPUT, {&value, 1});
}

Variant CallMethod(IDispatch& object, const std::string& name,
                   const std::vector<Variant>& arguments) {
  return Invoke(object, FindMember(object, name), DISPATCH_METHOD, arguments);
}

}  // namespace kitbay::platform::win32
