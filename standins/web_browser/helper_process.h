#pragma once

#include <string>

namespace kitbay::web_browser {

/**
 * Starts the helper, which will dial the port of 127.0.0.1 and show the token.
 *
 * Its program and script are Unix files: the values "Node" and "Helper" of the control's
 * registration, where the environment variables WEB_BROWSER_STANDIN_NODE and
 * WEB_BROWSER_STANDIN_HELPER do not name others. Throws LinkLost where it cannot be started.
 */
void StartHelper(int port, const std::string& token);

}  // namespace kitbay::web_browser
