#pragma once
// rkmanip show: a task read as run reads it, printed as an indented outline or as a Graphviz digraph of the
// same tree, with the nominal duration of each part.
#include <ostream>
#include <string>

struct RkTaskShowOptions {
  std::string taskPath;
  std::string actionPath;  // in a library of actions, the one action to show; empty shows the library
  std::string posesPath;   // the pose set named poses are shown resolved from; empty for none
  bool dot = false;        // a Graphviz digraph instead of the outline
};

namespace RkTaskShow {
// 0 after showing; 2, with the problems on err, when the task or pose set cannot be read or the action path
// names nothing. Problems of a document that reads go to err, and it is shown as read.
int show(const RkTaskShowOptions& options, std::ostream& out, std::ostream& err);
}  // namespace RkTaskShow
