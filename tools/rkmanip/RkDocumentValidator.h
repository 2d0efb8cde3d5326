#pragma once
// rkmanip validate: reads a document of the vocabulary as run reads a task, lists every problem with its
// file and line, and checks that what was read writes and reads back to the same text.
#include <ostream>
#include <string>

struct RkValidateOptions {
  std::string documentPath;
  std::string robotPath;  // the robot a task is checked against
  std::string tipLink;
  std::string posesPath;  // the pose set a task's reference poses are checked against; empty for none
  bool strict = false;    // warnings count as problems
};

namespace RkDocumentValidator {
// 0 when the document is clean (warnings allowed unless strict) and round-trips; 1 when it has problems; 2
// when it, or the robot it is checked against, cannot be read at all.
int validate(const RkValidateOptions& options, std::ostream& out);
}  // namespace RkDocumentValidator
