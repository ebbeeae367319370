// Is a library, but no component: nothing in it registers anything.
extern "C" __declspec(dllexport) int OvlMuteVersion() { return 1; }
