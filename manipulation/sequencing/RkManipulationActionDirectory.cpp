#include "sequencing/RkManipulationActionDirectory.h"

// Paths follow the version 3 grammar, in which a trailing separator yields a final "." element.
#define BOOST_FILESYSTEM_VERSION 3
#include <boost/filesystem/path.hpp>

namespace {

typedef boost::filesystem::path Path;

// The elements of path after the first, other than the skipped ones, joined by "/".
std::string joinedAfterFirst(const Path& path, bool skipDots) {
  std::string joined;
  auto element = path.begin();
  for (++element; element != path.end(); ++element) {
    if (skipDots && *element == ".") continue;
    if (!joined.empty()) joined += '/';
    joined += element->string();
  }
  return joined;
}

}  // namespace

RkBoolean RkManipulationActionDirectory::splitActionName(const std::string& path, std::string& head,
                                                         std::string& tail) {
  const Path split(path);
  if (split.empty() || split.has_root_path()) return false;
  const Path name = split.filename();
  if (name.empty() || name == "." || name == "..") return false;
  if (split.has_parent_path()) {
    head = split.begin()->string() + "/";
    tail = joinedAfterFirst(split, false);
  } else {
    head.clear();
    tail = path;
  }
  return true;
}

RkBoolean RkManipulationActionDirectory::splitDirectoryName(const std::string& path, std::string& head,
                                                            std::string& tail) {
  const Path split(path);
  if (split.empty() || split.has_root_path()) return false;
  const Path last = split.filename();
  if (last != "." && last != "/") return false;
  const std::string first = split.begin()->string() + "/";
  const std::string rest = joinedAfterFirst(split, true);
  if (!rest.empty() && rest != ".") {
    head = first;
    tail = rest + "/";
  } else {
    head.clear();
    tail = first;
  }
  return true;
}

void RkManipulationActionDirectory::clear() {
  m_subdirectoryMap.clear();
  m_actionMap.clear();
}

RkManipulationActionDirectory& RkManipulationActionDirectory::createSubdirectory(const std::string& key) {
  // operator[] inserts an empty directory only when the key is new.
  return m_subdirectoryMap.mapContainer()[key];
}

RkBoolean RkManipulationActionDirectory::add(const std::string& path, const RkManipulationAction& action) {
  std::string head, tail;
  if (!splitActionName(path, head, tail)) return false;
  if (!head.empty()) {
    createSubdirectory(head).add(tail, action);
    return true;
  }
  // Copied before the map changes, since action may live in this very directory.
  RkManipulationActionContainer container;
  container.setElement(action);
  m_actionMap.add(tail, container);
  return true;
}

RkBoolean RkManipulationActionDirectory::add(const std::string& path,
                                             const RkManipulationActionDirectory& directory) {
  std::string head, tail;
  if (!splitDirectoryName(path, head, tail)) return false;
  if (!head.empty()) {
    createSubdirectory(head).add(tail, directory);
    return true;
  }
  RkManipulationActionDirectory& target = createSubdirectory(tail);
  for (const std::string& actionPath : directory.actionListing()) {
    if (const RkManipulationAction* found = directory.action(actionPath)) target.add(actionPath, *found);
  }
  return true;
}

RkBoolean RkManipulationActionDirectory::remove(const std::string& path) {
  std::string head, tail;
  if (splitActionName(path, head, tail)) {
    if (head.empty()) return m_actionMap.erase(tail);
  } else if (splitDirectoryName(path, head, tail)) {
    if (head.empty()) return m_subdirectoryMap.erase(tail);
  } else {
    return false;
  }
  RkManipulationActionDirectory* below = m_subdirectoryMap.lookupPointer(head);
  return below && below->remove(tail);
}

const RkManipulationAction* RkManipulationActionDirectory::action(const std::string& path) const {
  std::string head, tail;
  if (!splitActionName(path, head, tail)) return nullptr;
  if (!head.empty()) {
    const RkManipulationActionDirectory* below = m_subdirectoryMap.find(head);
    return below ? below->action(tail) : nullptr;
  }
  const RkManipulationActionContainer* container = m_actionMap.find(tail);
  return container ? container->element() : nullptr;
}

const RkManipulationActionDirectory* RkManipulationActionDirectory::subdirectory(
    const std::string& path) const {
  std::string head, tail;
  if (!splitDirectoryName(path, head, tail)) return nullptr;
  if (!head.empty()) {
    const RkManipulationActionDirectory* below = m_subdirectoryMap.find(head);
    return below ? below->subdirectory(tail) : nullptr;
  }
  return m_subdirectoryMap.find(tail);
}

void RkManipulationActionDirectory::directoryListing(std::vector<std::string>& out,
                                                     const std::string& prefix) const {
  for (const auto& entry : m_subdirectoryMap.mapContainer()) {
    out.push_back(prefix + entry.first.value());
    entry.second.directoryListing(out, prefix + entry.first.value());
  }
}

std::vector<std::string> RkManipulationActionDirectory::directoryListing() const {
  std::vector<std::string> out;
  directoryListing(out, "");
  return out;
}

void RkManipulationActionDirectory::actionListing(std::vector<std::string>& out,
                                                  const std::string& prefix) const {
  for (const auto& entry : m_subdirectoryMap.mapContainer()) {
    entry.second.actionListing(out, prefix + entry.first.value());
  }
  for (const auto& entry : m_actionMap.mapContainer()) out.push_back(prefix + entry.first.value());
}

std::vector<std::string> RkManipulationActionDirectory::actionListing() const {
  std::vector<std::string> out;
  actionListing(out, "");
  return out;
}

std::vector<std::string> RkManipulationActionDirectory::subdirectoryListing() const {
  std::vector<std::string> out;
  for (const auto& entry : m_subdirectoryMap.mapContainer()) out.push_back(entry.first.value());
  return out;
}

std::vector<std::string> RkManipulationActionDirectory::subactionListing() const {
  std::vector<std::string> out;
  for (const auto& entry : m_actionMap.mapContainer()) out.push_back(entry.first.value());
  return out;
}
