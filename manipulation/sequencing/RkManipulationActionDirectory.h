#pragma once
// A library of actions kept like files in folders, addressed by relative paths: "pick" is an action of this
// directory, "grasps/pick" one of subdirectory "grasps/", and "grasps/top/" a directory path. Runs nothing.
//   <manipulationActionDirectory>
//     <subdirectoryMap><element><key>grasps/</key><value>
//       <actionMap><element><key>pick</key><value><manipulationSequence/></value></element></actionMap>
//     </value></element></subdirectoryMap>
//   </manipulationActionDirectory>
// Listings follow key order. No operation prints: a refused path gives false or null.
#include <string>
#include <vector>

#include "sequencing/RkManipulationActionContainer.h"
#include "sequencing/RkManipulationTokens.h"
#include "xml/RkXmlConcreteClass.h"
#include "xml/RkXmlMapType.h"

class RkManipulationActionDirectory
    : public RkXmlConcreteClass<RkManipulationActionDirectory, RkXmlCompoundType,
                                RkManipulation::RkManipulationActionDirectoryToken> {
 public:
  // Subdirectory keys end in "/"; action names hold none.
  typedef RkXmlMapType<RkXmlBasicType<std::string>, RkManipulationActionDirectory> SubdirectoryMap;
  typedef RkXmlMapType<RkXmlBasicType<std::string>, RkManipulationActionContainer> ActionMap;

  virtual RkBoolean empty() const { return !hasSubdirectories() && !hasActions(); }
  virtual void clear();
  // Stores a copy of action at an action path, creating the directories on the way; replaces an action of
  // the same path.
  virtual RkBoolean add(const std::string& path, const RkManipulationAction& action);
  // Merges the actions of directory into the directory at a directory path, creating it if needed.
  virtual RkBoolean add(const std::string& path, const RkManipulationActionDirectory& directory);
  // Removes the action at an action path, or the whole directory at a directory path.
  virtual RkBoolean remove(const std::string& path);
  virtual const RkManipulationAction* action(const std::string& path) const;
  virtual const RkManipulationActionDirectory* subdirectory(const std::string& path) const;

  bool hasActions() const { return m_actionMap.size() != 0; }
  bool hasSubdirectories() const { return m_subdirectoryMap.size() != 0; }
  // The subdirectory under key, inserted empty if there is none.
  RkManipulationActionDirectory& createSubdirectory(const std::string& key);

  // Every directory path below this one, each before its contents, each prefixed by prefix.
  void directoryListing(std::vector<std::string>& out, const std::string& prefix) const;
  std::vector<std::string> directoryListing() const;
  // Every action path below this one, those of subdirectories first, each prefixed by prefix.
  void actionListing(std::vector<std::string>& out, const std::string& prefix) const;
  std::vector<std::string> actionListing() const;
  // This directory's own subdirectory keys and action names.
  std::vector<std::string> subdirectoryListing() const;
  std::vector<std::string> subactionListing() const;

  // An action path: head is the subdirectory key to descend into (empty for this directory) and tail the
  // path to resolve there. False for an empty or rooted path or one ending in "/", "." or "..".
  static RkBoolean splitActionName(const std::string& path, std::string& head, std::string& tail);
  // A directory path, ending in "/": head and tail as above; a one-level path gives an empty head and the
  // key as tail. False for an empty or rooted path or one not ending in a separator or ".".
  static RkBoolean splitDirectoryName(const std::string& path, std::string& head, std::string& tail);

  const SubdirectoryMap& subdirectoryMap() const { return m_subdirectoryMap; }
  const ActionMap& actionMap() const { return m_actionMap; }

 protected:
  void registerComponents() override {
    registerComponent(RkManipulation::RkSubdirectoryMapToken, &m_subdirectoryMap,
                      "the directories inside this one, by name");
    registerComponent(RkManipulation::RkActionMapToken, &m_actionMap,
                      "the actions of this directory, by name");
  }

 private:
  SubdirectoryMap m_subdirectoryMap;
  ActionMap m_actionMap;
};
