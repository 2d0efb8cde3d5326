#pragma once
// The library's version. Every source unit of the library holds its own copy of the version string, so
// that any object file can be traced to its release.
#include <string>

#define RK_MANIPULATION_VERSION "3.0.0"

namespace {
[[maybe_unused]] const std::string RkManipulationVersionString(RK_MANIPULATION_VERSION);
}
