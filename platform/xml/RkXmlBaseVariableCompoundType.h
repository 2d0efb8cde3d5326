#pragma once
// The base of the single-element polymorphic containers: it knows, per container class, which concrete
// classes may stand in it (creators keyed by class token), and the plug-in libraries a document names.
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "xml/RkXmlBasicType.h"
#include "xml/RkXmlObject.h"
#include "xml/RkXmlVectorType.h"

class RkXmlBaseVariableCompoundType : public RkXmlObject {
 public:
  typedef RkXmlObject* (*Creator)();
  typedef RkXmlVectorType<RkXmlBasicType<std::string>> LibraryList;

  RkXmlBaseVariableCompoundType() = default;
  RkXmlBaseVariableCompoundType(const RkXmlBaseVariableCompoundType&) = default;
  RkXmlBaseVariableCompoundType& operator=(const RkXmlBaseVariableCompoundType&) = default;
  RkXmlBaseVariableCompoundType(RkXmlBaseVariableCompoundType&&) noexcept = default;
  RkXmlBaseVariableCompoundType& operator=(RkXmlBaseVariableCompoundType&&) noexcept = default;
  bool operator==(const RkXmlBaseVariableCompoundType& other) const {
    return m_addLibraries == other.m_addLibraries;
  }
  bool operator!=(const RkXmlBaseVariableCompoundType& other) const { return !(*this == other); }

  // Walks the child elements, handing each to readValueFromToken; a child it does not take is skipped.
  RkBoolean read(RkXmlReader& reader) override;
  // Writes the library list when it is not empty.
  RkBoolean write(RkXmlWriter& writer) const override;
  // The library list, then one of the registered classes.
  void writeSchema(RkXmlSchema& schema) const override;

  // Reads the child element named tag; false when it could not be taken.
  virtual RkBoolean readValueFromToken(const RkToken& tag, RkXmlReader& reader) = 0;

  // Enters a creator under a class token for every container of this class.
  void registerComponentCreator(const RkToken& classToken, Creator creator);
  // Enters a creator for the containers whose token is containerToken; plug-in libraries call it when loaded.
  static void registerFamilyCreator(const RkToken& containerToken, const RkToken& classToken,
                                    Creator creator);
  // A new object of the class registered under classToken, or null.
  RkXmlObject* newObjectFromToken(const RkToken& classToken) const;
  // The creators of this container class, in registration order.
  std::vector<std::pair<RkToken, Creator>> creatorMap() const;

  const LibraryList& addLibraries() const { return m_addLibraries; }
  void setAddLibraries(const LibraryList& libraries) { m_addLibraries = libraries; }
  // Loads the listed libraries from the directories of RK_PLUGIN_PATH only; false if one was not loaded.
  RkBoolean processLibraries();

 protected:
  // Registers the creators of the container class; called once per class, before the first look-up.
  virtual void registerComponentCreators() = 0;
  LibraryList& libraryList() { return m_addLibraries; }

 public:
  // The creators of one container class; public only so the registry can name it.
  struct Family;

 private:
  Family& family() const;
  // The family of the containers named containerToken, its creators registered; takes the registry's lock.
  Family& familyBuilt(const RkToken& containerToken) const;

  LibraryList m_addLibraries;
};
