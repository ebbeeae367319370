#include "platform/win32/com/activation_context.h"

namespace kitbay::platform::win32 {

ActivationContext::ActivationContext(const std::wstring& path) {
  ACTCTXW context{};
  context.cbSize = sizeof context;
  context.lpSource = path.c_str();
  context_ = CreateActCtxW(&context);
}

ActivationContext::~ActivationContext() {
  if (context_ != INVALID_HANDLE_VALUE) {
    ReleaseActCtx(context_);
  }
}

ActivationContext::Active::Active(const ActivationContext& context)
    : is_active_(context.context_ != INVALID_HANDLE_VALUE &&
                 ActivateActCtx(context.context_, &cookie_)) {}

ActivationContext::Active::~Active() {
  if (is_active_) {
    DeactivateActCtx(0, cookie_);
  }
}

}  // namespace kitbay::platform::win32
