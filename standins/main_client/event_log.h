#pragma once

/// Appends the line "<event> <process id>" to Tessel.log beside the program, so that the client's
/// starts and ends can be counted. A log that cannot be written is left as it is.
void AppendToEventLog(const char* event);
