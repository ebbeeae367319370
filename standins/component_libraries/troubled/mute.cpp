// A library that is not a component: nothing in it registers anything.
extern "C" __declspec(dllexport) int OvlMuteVersion() { return 1; }
