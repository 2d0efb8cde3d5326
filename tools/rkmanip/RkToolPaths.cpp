#include "tools/rkmanip/RkToolPaths.h"

#include <limits.h>
#include <stdlib.h>
#include <unistd.h>

#include <fstream>
#include <vector>

#include "simulation/RkSimulatedEndEffectorSets.h"

namespace RkToolPaths {

std::string executableDirectory() {
  std::vector<char> path(4096);
  const ssize_t length = readlink("/proc/self/exe", path.data(), path.size() - 1);
  if (length <= 0) return std::string();
  const std::string file(path.data(), static_cast<std::size_t>(length));
  const std::size_t slash = file.rfind('/');
  return slash == std::string::npos ? std::string() : file.substr(0, slash);
}

std::string defaultRobot(std::string& tried) {
  const std::string directory = executableDirectory();
  std::vector<std::string> candidates{directory + "/../share/rkManipulation/robots/ur5e.urdf"};
#if defined(RK_BUILD_TREE_DIRECTORY) && defined(RK_SOURCE_TREE_ROBOT)
  char buildTree[PATH_MAX];
  if (realpath(RK_BUILD_TREE_DIRECTORY, buildTree) && directory == buildTree)
    candidates.push_back(RK_SOURCE_TREE_ROBOT);
#endif
  tried.clear();
  for (const std::string& candidate : candidates) {
    if (std::ifstream(candidate)) return candidate;
    tried += (tried.empty() ? "" : ", ") + candidate;
  }
  return std::string();
}

std::string robotName(const std::string& path) {
  const std::size_t slash = path.rfind('/');
  std::string name = slash == std::string::npos ? path : path.substr(slash + 1);
  const std::size_t dot = name.rfind('.');
  return dot == std::string::npos || dot == 0 ? name : name.substr(0, dot);
}

void reportRobotError(const std::string& error, const std::string& robotPath, const std::string& tipLink,
                      RkDiagnostics& out) {
  std::string file = robotPath, text = error;
  for (const std::string& candidate : {robotPath, RkSimulatedEndEffectorSets::fileFor(robotPath)}) {
    if (error.compare(0, candidate.size() + 2, candidate + ": ") == 0) {
      file = candidate;
      text = error.substr(candidate.size() + 2);
    }
  }
  const std::string ask = "name the tip link";
  if (tipLink.empty() && text.size() >= ask.size() &&
      text.compare(text.size() - ask.size(), ask.size(), ask) == 0)
    text += " with --tip LINK";
  out.error(file, 0, text);
}

}  // namespace RkToolPaths
