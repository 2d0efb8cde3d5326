#include "tools/rkmanip/RkDocumentValidator.h"

#include <memory>

#include "sequencing/RkPoseSet.h"
#include "simulation/RkSimulatedTaskRunner.h"
#include "tools/rkmanip/RkDocumentCheck.h"
#include "tools/rkmanip/RkToolPaths.h"

namespace RkDocumentValidator {

int validate(const RkValidateOptions& options, std::ostream& out) {
  RkDiagnostics diagnostics;
  RkSimulatedTaskRunner runner;
  bool robotTried = false, robotLoaded = false;
  // Only a document with frames needs the robot, so that any other document validates without one.
  const RkDocumentCheck::RobotSource robot = [&]() -> const RkSimulatedTaskRunner* {
    if (!robotTried) {
      robotTried = true;
      std::string error;
      RkDiagnostics::Capture capture(diagnostics, options.robotPath);
      robotLoaded = runner.loadRobot(options.robotPath, options.tipLink, error);
      if (!robotLoaded) RkToolPaths::reportRobotError(error, options.robotPath, options.tipLink, diagnostics);
    }
    return robotLoaded ? &runner : nullptr;
  };
  RkPoseSource poses;
  poses.path = options.posesPath;
  std::string problem;
  const std::unique_ptr<RkPoseSet> poseSet = RkDocumentCheck::readPoseSet(poses, diagnostics, problem);
  if (!problem.empty()) {
    diagnostics.print(out);
    out << options.posesPath << ": " << problem << "\n";
    return 2;
  }
  std::unique_ptr<RkXmlObject> document = RkDocumentCheck::read(
      options.documentPath, robot, RkToolPaths::robotName(options.robotPath), diagnostics, poses);
  diagnostics.print(out);
  if (!document || (robotTried && !robotLoaded)) {
    out << options.documentPath << ": cannot be "
        << (document ? "checked, since the robot cannot be loaded\n" : "read\n");
    return 2;
  }
  const std::string what = std::string(document->token().localName());
  if (diagnostics.errors() > 0 || (options.strict && diagnostics.warnings() > 0)) {
    out << options.documentPath << ": " << diagnostics.summary()
        << (diagnostics.errors() == 0 ? ", which --strict counts as problems\n" : "\n");
    return 1;
  }
  out << options.documentPath << ": valid " << what << ", round trip exact"
      << (diagnostics.warnings() > 0 ? "; " + diagnostics.summary() : std::string()) << "\n";
  return 0;
}

}  // namespace RkDocumentValidator
