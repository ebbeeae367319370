#pragma once

/// What tells one component library from another; each library defines its own.
struct ComponentIdentity {
  const wchar_t* clsid;  ///< with braces
  const wchar_t* progid;
  const wchar_t* name;  ///< what the suite calls the component
};

extern const ComponentIdentity kIdentity;
