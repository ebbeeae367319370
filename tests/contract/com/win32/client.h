#pragma once

namespace kitbay::contract {

/// What this executable does when it is started as a client: reads one command per line from
/// standard input and answers each with one line, until the input ends. UTF-8.
///
///   get PROGID     finds the running manager of that ProgID: 0 or the number of the failure
///   bring          calls its BringToFront: the same
///   create PROGID  creates an object in another process and keeps it: the same
///   call MEMBER    calls it late-bound: the result as text, or "failure " and a number
///   early          calls its GetAppDataPath by its interface: the same
///   let go         releases both
///   mark NAME      tests for a previous instance: 0 or 1
int RunClient();

}  // namespace kitbay::contract
