// Whole files in and out.
#ifndef CHARTXML_WHOLEFILE_H
#define CHARTXML_WHOLEFILE_H

#include <string>

namespace wholefile {

// The bytes of a file. Both throw a std::system_error with the system's reason.
std::string read(const std::string& path);

// Replaces a file as a whole or not at all: the text is written to a temporary file in the same
// folder, which then takes its place. What can't be replaced, a device or a pipe, is written to.
void write(const std::string& path, const std::string& text);

}  // namespace wholefile

#endif
