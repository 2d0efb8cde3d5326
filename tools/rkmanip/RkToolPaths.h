#pragma once
// Where the tool finds the files it ships with, relative to its own location, so that an installed tool
// works wherever it was installed or moved to.
#include <string>

namespace RkToolPaths {

// The directory of the running executable, without a trailing slash; empty when it cannot be found.
std::string executableDirectory();
// The default robot: the UR5e installed beside the tool (BIN/../share/rkManipulation/robots), or, for the
// tool in its build tree, the one in the source tree. Empty when there is none; tried lists where it looked.
std::string defaultRobot(std::string& tried);
// The name messages give a robot: its file name without directory and extension ("ur5e").
std::string robotName(const std::string& path);

}  // namespace RkToolPaths
