// The library that OvlNeedy.dll needs.
extern "C" __declspec(dllexport) int OvlHelp() { return 1; }
