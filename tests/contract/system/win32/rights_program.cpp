// Ends with 1 if it is elevated, otherwise with 0.
#include "platform/win32/win32_platform.h"

int main() { return kitbay::platform::win32::MakeElevation()->HasAdministratorRights() ? 1 : 0; }
