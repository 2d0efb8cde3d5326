#include "tools/rkmanip/RkActionLibrary.h"

#include <memory>
#include <vector>

#include "sequencing/RkManipulationActionDirectory.h"
#include "tools/rkmanip/RkDiagnostics.h"
#include "xml/RkXmlReader.h"

namespace RkActionLibrary {
namespace {

std::string entries(const RkManipulationActionDirectory& directory) {
  std::string text;
  for (const std::string& key : directory.subdirectoryListing()) text += (text.empty() ? "" : ", ") + key;
  for (const std::string& name : directory.subactionListing()) text += (text.empty() ? "" : ", ") + name;
  return text.empty() ? "nothing" : text;
}

void listDirectory(const RkManipulationActionDirectory& directory, const std::string& prefix,
                   std::ostream& out) {
  for (const auto& entry : directory.subdirectoryMap().mapContainer()) {
    const std::string path = prefix + entry.first.value();
    out << "directory  " << path << "\n";
    listDirectory(entry.second, path, out);
  }
  for (const auto& entry : directory.actionMap().mapContainer()) {
    const RkManipulationAction* action = entry.second.element();
    out << "action     " << prefix << entry.first.value() << "  ("
        << (action ? std::string(action->token().localName()) : std::string("empty")) << ")\n";
  }
}

}  // namespace

const RkManipulationAction* find(const RkManipulationActionDirectory& library, const std::string& path,
                                 std::string& problem) {
  std::string head, tail;
  if (RkManipulationActionDirectory::splitActionName(path, head, tail)) {
    if (const RkManipulationAction* action = library.action(path)) return action;
  }
  // The deepest directory on the path: each leading part that ends in "/" and names a directory.
  const RkManipulationActionDirectory* deepest = &library;
  std::string where;
  for (std::size_t slash = path.find('/'); slash != std::string::npos; slash = path.find('/', slash + 1)) {
    const RkManipulationActionDirectory* below = library.subdirectory(path.substr(0, slash + 1));
    if (!below) break;
    deepest = below;
    where = path.substr(0, slash + 1);
  }
  problem = "the library holds no action at \"" + path + "\"; " +
            (where.empty() ? std::string("its top directory") : "its directory \"" + where + "\"") +
            " holds " + entries(*deepest);
  return nullptr;
}

void list(const RkManipulationActionDirectory& library, std::ostream& out) {
  listDirectory(library, "", out);
}

int list(const std::string& path, std::ostream& out) {
  RkDiagnostics diagnostics;
  RkManipulationActionDirectory library;
  bool read = false;
  {
    RkDiagnostics::Capture capture(diagnostics, path);
    read = RkXmlReader::readFile(path, library);
  }
  diagnostics.print(out);
  if (!read) {
    out << "rkmanip list: " << path << " cannot be read as a manipulationActionDirectory document\n";
    return 2;
  }
  list(library, out);
  return 0;
}

}  // namespace RkActionLibrary
