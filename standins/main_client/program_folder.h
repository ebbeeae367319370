#pragma once

#include <string>

/// The path of a file in the folder of this program.
std::wstring PathBesideProgram(const wchar_t* name);
