#pragma once

#include <array>
#include <utility>

namespace kitbay::base {

/// The three kinds of component, in the order in which every procedure handles them.
enum class ComponentKind { kAddon, kTransport, kChannel };

inline constexpr std::array kComponentKinds = {ComponentKind::kAddon, ComponentKind::kTransport,
                                               ComponentKind::kChannel};

/// One value per kind of component.
template <typename T>
struct PerKind {
  T addon;
  T transport;
  T channel;

  constexpr T& operator[](ComponentKind kind) { return const_cast<T&>(std::as_const(*this)[kind]); }
  constexpr const T& operator[](ComponentKind kind) const {
    switch (kind) {
      case ComponentKind::kAddon:
        return addon;
      case ComponentKind::kTransport:
        return transport;
      case ComponentKind::kChannel:
        break;
    }
    return channel;
  }
};
static_assert(kComponentKinds.size() == sizeof(PerKind<char>));

}  // namespace kitbay::base
