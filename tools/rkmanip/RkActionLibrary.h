#pragma once
// A library of actions (a manipulationActionDirectory document) as rkmanip shows it: the action a path
// names, what the library holds near a path that names nothing, and the listing of every path in it.
#include <ostream>
#include <string>

class RkManipulationAction;
class RkManipulationActionDirectory;

namespace RkActionLibrary {
// The action at path, or null with one line in problem naming the path and the entries of the deepest
// directory of the library that exists on it.
const RkManipulationAction* find(const RkManipulationActionDirectory& library, const std::string& path,
                                 std::string& problem);
// Every directory (ending in "/") and action path, each directory before its contents and the actions of
// subdirectories before a directory's own, one a line, marked "directory" or "action" with its tag.
void list(const RkManipulationActionDirectory& library, std::ostream& out);
// rkmanip list: 0 after listing, 2 when the file cannot be read or holds no library.
int list(const std::string& path, std::ostream& out);
}  // namespace RkActionLibrary
