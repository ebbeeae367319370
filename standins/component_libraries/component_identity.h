#pragma once

/// What distinguishes one component library from another; each library defines its own.
struct ComponentIdentity {
  const wchar_t* clsid;  ///< with braces
  const wchar_t* progid;
  const wchar_t* name;  ///< the suite's name for the component
};

extern const ComponentIdentity kIdentity;
