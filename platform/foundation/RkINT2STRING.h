#pragma once
// Number-to-text conversion in base 10, for messages and status texts.
#include <string>

std::string RkINT2STRING(long long value);
