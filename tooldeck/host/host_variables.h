#pragma once
// Reading and writing single system variables through the host's exported interface.

#include <string>

namespace qvtd {

// 0 when the variable cannot be read.
short getShortVar(const char* name);
// The host's status (QV_NORM when written).
int setShortVar(const char* name, short value);
// Empty when the variable cannot be read or is not text.
std::string getStringVar(const char* name);

} // namespace qvtd
