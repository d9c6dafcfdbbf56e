#pragma once

#include <string>

// Version and build of a program file, as its version resource says: "1.0.0 (build 0123456789ab)". Empty when
// the file cannot be read or says nothing.
std::string FileVersion(const std::string& path);
// Of the running program.
std::string OwnVersion();
