// Ends with 1 when it has an administrator's rights, with 0 when it has not.
#include "platform/win32/win32_platform.h"

int main() { return kitbay::platform::win32::MakeElevation()->HasAdministratorRights() ? 1 : 0; }
