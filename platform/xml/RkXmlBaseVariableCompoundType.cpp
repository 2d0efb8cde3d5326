#include "xml/RkXmlBaseVariableCompoundType.h"

#include <dlfcn.h>
#include <limits.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cstdlib>
#include <cstring>
#include <mutex>

#include "foundation/RkPrint.h"
#include "xml/RkXmlReader.h"
#include "xml/RkXmlSchema.h"
#include "xml/RkXmlTokens.h"
#include "xml/RkXmlWriter.h"

struct RkXmlBaseVariableCompoundType::Family {
  bool built = false;
  std::vector<std::pair<RkToken, Creator>> creators;
};

namespace {

struct Registry {
  std::mutex mutex;
  std::map<RkToken, RkXmlBaseVariableCompoundType::Family*> families;
};

// Never destroyed, like the tokens it is keyed by.
Registry& registry() {
  static Registry* instance = new Registry;
  return *instance;
}

// The family being built on this thread, so that registerComponentCreators adds to it without locking again.
thread_local RkXmlBaseVariableCompoundType::Family* t_building = nullptr;

void addCreator(RkXmlBaseVariableCompoundType::Family& family, const RkToken& classToken,
                RkXmlBaseVariableCompoundType::Creator creator) {
  for (auto& entry : family.creators) {
    if (entry.first == classToken) {
      entry.second = creator;
      return;
    }
  }
  family.creators.emplace_back(classToken, creator);
}

RkXmlBaseVariableCompoundType::Family& familyLocked(Registry& known, const RkToken& containerToken) {
  auto*& family = known.families[containerToken];
  if (!family) family = new RkXmlBaseVariableCompoundType::Family;
  return *family;
}

}  // namespace

RkXmlBaseVariableCompoundType::Family& RkXmlBaseVariableCompoundType::family() const {
  // Families live for good, so each thread keeps where the ones it met last stand: looking one up by its
  // token's text under the lock for every element read would cost more than making the element.
  struct Remembered {
    RkToken token;
    Family* family;
  };
  thread_local Remembered remembered[16];
  const RkToken& own = token();
  Remembered& slot = remembered[(own.hash() >> 4) & 15];
  if (slot.family && slot.token == own) return *slot.family;
  Family& found = familyBuilt(own);
  slot = {own, &found};
  return found;
}

RkXmlBaseVariableCompoundType::Family& RkXmlBaseVariableCompoundType::familyBuilt(
    const RkToken& containerToken) const {
  Registry& known = registry();
  std::lock_guard<std::mutex> lock(known.mutex);
  Family& found = familyLocked(known, containerToken);
  if (!found.built) {
    found.built = true;
    t_building = &found;
    const_cast<RkXmlBaseVariableCompoundType*>(this)->registerComponentCreators();
    t_building = nullptr;
  }
  return found;
}

void RkXmlBaseVariableCompoundType::registerComponentCreator(const RkToken& classToken, Creator creator) {
  if (t_building) {
    addCreator(*t_building, classToken, creator);
    return;
  }
  Family& own = family();
  std::lock_guard<std::mutex> lock(registry().mutex);
  addCreator(own, classToken, creator);
}

void RkXmlBaseVariableCompoundType::registerFamilyCreator(const RkToken& containerToken,
                                                          const RkToken& classToken, Creator creator) {
  Registry& known = registry();
  std::lock_guard<std::mutex> lock(known.mutex);
  addCreator(familyLocked(known, containerToken), classToken, creator);
}

RkXmlObject* RkXmlBaseVariableCompoundType::newObjectFromToken(const RkToken& classToken) const {
  Family& own = family();
  Creator creator = nullptr;
  {
    std::lock_guard<std::mutex> lock(registry().mutex);
    for (const auto& entry : own.creators) {
      if (entry.first == classToken) creator = entry.second;
    }
  }
  return creator ? creator() : nullptr;
}

std::vector<std::pair<RkToken, RkXmlBaseVariableCompoundType::Creator>>
RkXmlBaseVariableCompoundType::creatorMap() const {
  Family& own = family();
  std::lock_guard<std::mutex> lock(registry().mutex);
  return own.creators;
}

RkBoolean RkXmlBaseVariableCompoundType::read(RkXmlReader& reader) {
  if (!RkXmlObject::read(reader)) return false;
  if (reader.nodeKind() == RkXmlNodeKind::EmptyElement) return true;
  const int childDepth = reader.depth() + 1;
  RkBoolean result = true;
  while (true) {
    const RkXmlNodeKind kind = reader.advance();
    if (kind == RkXmlNodeKind::Text) continue;
    if (kind != RkXmlNodeKind::StartElement && kind != RkXmlNodeKind::EmptyElement) break;
    const RkToken tag = reader.tag();
    result = readValueFromToken(tag, reader) && result;
    reader.finishElement(childDepth);
  }
  return result && !reader.failed();
}

RkBoolean RkXmlBaseVariableCompoundType::write(RkXmlWriter& writer) const {
  if (m_addLibraries.size() == 0) return true;
  writer.openElement(RkXml::RkAddLibrariesToken);
  const RkBoolean result = m_addLibraries.write(writer);
  writer.closeElement();
  return result;
}

void RkXmlBaseVariableCompoundType::writeSchema(RkXmlSchema& schema) const {
  schema.noteClass(*this);
  RkXmlObject::writeSchema(schema);
  schema.openElement(
      RkXml::RkAddLibrariesToken, RkXmlOccurrence::Optional,
      "plug-in libraries to load before the element is read, by bare name from RK_PLUGIN_PATH");
  m_addLibraries.writeSchema(schema);
  schema.closeElement();
  const auto creators = creatorMap();
  if (creators.empty()) return;
  schema.openChoice(RkXmlOccurrence::Optional);
  for (const auto& entry : creators) {
    RkXmlObject* prototype = entry.second();
    schema.openElement(entry.first, RkXmlOccurrence::Once);
    if (prototype) prototype->writeSchema(schema);
    schema.closeElement();
    delete prototype;
  }
  schema.closeChoice();
}

namespace {

// Why a plug-in file or directory is not safe to load from, or null: it must belong to root or to the user
// running the program, and no one else may write to it.
const char* unsafe(const char* path) {
  struct stat status;
  if (stat(path, &status) != 0) return "not readable";
  if (status.st_uid != 0 && status.st_uid != geteuid()) return "owned by neither root nor the running user";
  if (status.st_mode & (S_IWGRP | S_IWOTH)) return "group- or world-writable";
  return nullptr;
}

// Loads one library by bare name from the first plug-in directory that holds it, refusing files that
// resolve outside that directory and files or directories that others than their owner may change.
bool loadPlugin(const std::string& name, const std::string& searchPath) {
  const char* origin = "RkXmlBaseVariableCompoundType::processLibraries";
  const std::string shown = Rk::Print::escaped(name);
  if (name.empty() || name == "." || name == ".." || name.find('/') != std::string::npos) {
    Rk::Print::writeFrom(origin, 4, "%s: \"%s\" is not a bare library name; not loaded\n", origin,
                         shown.c_str());
    return false;
  }
  std::size_t begin = 0;
  while (begin <= searchPath.size()) {
    std::size_t end = searchPath.find(':', begin);
    if (end == std::string::npos) end = searchPath.size();
    const std::string directory = searchPath.substr(begin, end - begin);
    begin = end + 1;
    char realDirectory[PATH_MAX], realFile[PATH_MAX];
    if (directory.empty() || !realpath(directory.c_str(), realDirectory)) continue;
    const std::string candidate = directory + "/" + name;
    if (!realpath(candidate.c_str(), realFile)) continue;
    const std::string inside = std::string(realDirectory) + "/";
    if (std::string(realFile).compare(0, inside.size(), inside) != 0) {
      Rk::Print::writeFrom(origin, 4, "%s: %s resolves outside %s; not loaded\n", origin,
                           Rk::Print::escaped(candidate).c_str(), Rk::Print::escaped(realDirectory).c_str());
      return false;
    }
    struct stat status;
    if (stat(realFile, &status) != 0 || !S_ISREG(status.st_mode)) continue;
    // The listed directory, the directory the file really stands in, and the file itself.
    const std::string fileDirectory(realFile, std::strrchr(realFile, '/') - realFile);
    for (const char* path : {static_cast<const char*>(realDirectory), fileDirectory.c_str(),
                             static_cast<const char*>(realFile)}) {
      if (const char* reason = unsafe(path)) {
        Rk::Print::writeFrom(origin, 4, "%s: %s is %s; \"%s\" not loaded\n", origin,
                             Rk::Print::escaped(path).c_str(), reason, shown.c_str());
        return false;
      }
    }
    if (!dlopen(realFile, RTLD_NOW | RTLD_LOCAL)) {
      const char* reason = dlerror();
      Rk::Print::writeFrom(origin, 4, "%s: %s\n", origin,
                           Rk::Print::escaped(reason ? reason : realFile).c_str());
      return false;
    }
    return true;
  }
  Rk::Print::writeFrom(origin, 4, "%s: \"%s\" is in no directory of RK_PLUGIN_PATH; not loaded\n", origin,
                       shown.c_str());
  return false;
}

}  // namespace

RkBoolean RkXmlBaseVariableCompoundType::processLibraries() {
  if (m_addLibraries.size() == 0) return true;
  const char* searchPath = std::getenv("RK_PLUGIN_PATH");
  if (!searchPath || !*searchPath) {
    Rk::Print::write(
        4,
        "RkXmlBaseVariableCompoundType::processLibraries: RK_PLUGIN_PATH is not set, so no plug-in "
        "library is loaded (the document names %u, first \"%s\")\n",
        m_addLibraries.size(), Rk::Print::escaped(m_addLibraries[0].value()).c_str());
    return false;
  }
  RkBoolean result = true;
  for (RkU32 i = 0; i < m_addLibraries.size(); ++i) {
    result = loadPlugin(m_addLibraries[i].value(), searchPath) && result;
  }
  return result;
}
