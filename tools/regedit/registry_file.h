// Registry files in the format Windows' regedit exports ("Windows Registry Editor Version 5.00",
// [HKEY_LOCAL_MACHINE\...] key lines, "name"="text" value lines). Only HKEY_LOCAL_MACHINE and
// string values: the till's registry holds nothing else that the utility reads.
#pragma once

#include <istream>

// Creates every key of the file and stores its string values, through the registry access of the
// build (the till's database on Linux, the machine's registry on Windows). Throws
// std::runtime_error naming the line of the first entry it cannot import.
void importRegistryFile(std::istream& in);
