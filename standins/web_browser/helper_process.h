#pragma once

#include <string>

namespace kitbay::web_browser {

/**
 * Starts the helper, which will connect to the port of 127.0.0.1 and send the token.
 *
 * Its program and script are Unix files: the values "Node" and "Helper" of the control's
 * registration, unless the environment variables WEB_BROWSER_STANDIN_NODE and
 * WEB_BROWSER_STANDIN_HELPER name others. Throws LinkLost if it cannot be started.
 */
void StartHelper(int port, const std::string& token);

}  // namespace kitbay::web_browser
