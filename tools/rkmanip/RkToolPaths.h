#pragma once
// Where the tool finds the files it ships with, relative to its own location, so that an installed tool
// works wherever it was installed or moved to.
#include <string>

#include "tools/rkmanip/RkDiagnostics.h"

namespace RkToolPaths {

// The directory of the running executable, without a trailing slash; empty when it cannot be found.
std::string executableDirectory();
// The default robot: the UR5e installed beside the tool (BIN/../share/rkManipulation/robots), or, for the
// tool in its build tree, the one in the source tree. Empty when there is none; tried lists where it looked.
std::string defaultRobot(std::string& tried);
// The name messages give a robot: its file name without directory and extension ("ur5e").
std::string robotName(const std::string& path);
// Reports a robot that could not be loaded (error: "FILE: problem") against FILE, saying how to name the
// tip link when that is what is missing.
void reportRobotError(const std::string& error, const std::string& robotPath, const std::string& tipLink,
                      RkDiagnostics& out);

}  // namespace RkToolPaths
