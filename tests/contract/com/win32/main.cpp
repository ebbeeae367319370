#include <gtest/gtest.h>
#include <windows.h>

#include <string_view>

#include "contract/com/win32/client.h"
#include "contract/com/win32/registered_suite.h"
#include "platform/win32/win32_platform.h"

// kitbay_contract_com OvalinkSuite.dll runs the tests; kitbay_contract_com --client is their
// client.
int main(int argc, char** argv) {
  if (argc == 2 && std::string_view(argv[1]) == "--client") {
    return kitbay::contract::RunClient();
  }
  testing::InitGoogleTest(&argc, argv);
  // COM may start what is registered as the classes' server; only the tests may do that.
  if (argc != 2 || argv[1][0] == '-') {
    return 2;
  }
  const kitbay::platform::win32::ComApartment apartment;
  const kitbay::contract::RegisteredSuite suite(argv[1]);
  return RUN_ALL_TESTS();
}
