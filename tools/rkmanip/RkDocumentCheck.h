#pragma once
// Reads a document as the tool reads every file a person gives it, and lists every problem with its file
// and line: each message the reader prints, whatever of the source the objects read do not hold, a round
// trip that changes what is written, and the checks of meaning against the robot the document is for.
#include <functional>
#include <memory>
#include <string>

#include "tools/rkmanip/RkDiagnostics.h"
#include "tools/rkmanip/RkTaskChecks.h"
#include "xml/RkXmlObject.h"

class RkPoseSet;
class RkSimulatedTaskRunner;

namespace RkDocumentCheck {

// The robot the checks of meaning need, loaded on first use; null, with its problem reported, when it
// cannot be loaded.
typedef std::function<const RkSimulatedTaskRunner*()> RobotSource;

// The object read from path, or null when the document cannot be read at all (missing, not well-formed,
// refused, of no known root element). Findings go to out; a task's reference poses are looked up in poses.
// In a library of actions only the action at actionPath is checked for meaning, when one is named.
std::unique_ptr<RkXmlObject> read(const std::string& path, const RobotSource& robot,
                                  const std::string& robotName, RkDiagnostics& out,
                                  const RkPoseSource& poses = RkPoseSource(),
                                  const std::string& actionPath = std::string());

// The pose set given with --poses, read from source.path and checked as a task is, and set as source.poses;
// null without a path, and null with the reason in problem ("cannot be read", "holds a <...>, which is not a
// pose set") when the file cannot be read or holds something else.
std::unique_ptr<RkPoseSet> readPoseSet(RkPoseSource& source, RkDiagnostics& out, std::string& problem);

}  // namespace RkDocumentCheck
