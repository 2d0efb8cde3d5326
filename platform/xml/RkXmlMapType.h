#pragma once
// A dictionary of XML objects kept sorted by key, keys and values held by value:
//   <poseMap><element><key>home</key><value>...</value></element></poseMap>
#include <functional>
#include <map>
#include <typeinfo>

#include "foundation/RkINT2STRING.h"
#include "foundation/RkPrint.h"
#include "xml/RkXmlConcreteClass.h"
#include "xml/RkXmlObject.h"
#include "xml/RkXmlObjectVisitor.h"
#include "xml/RkXmlReader.h"
#include "xml/RkXmlSchema.h"
#include "xml/RkXmlTokens.h"
#include "xml/RkXmlWriter.h"

template <class K, class V>
class RkXmlMapType : public RkXmlConcreteClass<RkXmlMapType<K, V>, RkXmlObject, RkXml::RkMapTypeToken> {
 public:
  // Transparent ordering: a key can be found by its bare value (a name) without building a K.
  typedef std::map<K, V, std::less<>> Map;

  RkXmlMapType() = default;
  RkXmlMapType(const K& key, const V& value) { m_entries.emplace(key, value); }
  RkXmlMapType(const RkXmlMapType&) = default;
  RkXmlMapType& operator=(const RkXmlMapType&) = default;
  RkXmlMapType(RkXmlMapType&&) = default;
  RkXmlMapType& operator=(RkXmlMapType&&) = default;

  bool operator==(const RkXmlMapType& other) const {
    if (!RkXmlObject::operator==(other) || m_entries.size() != other.m_entries.size()) return false;
    for (auto a = m_entries.begin(), b = other.m_entries.begin(); a != m_entries.end(); ++a, ++b) {
      if (!(a->first == b->first) || !(a->second == b->second)) return false;
    }
    return true;
  }
  bool operator!=(const RkXmlMapType& other) const { return !(*this == other); }

  static RkXmlMapType nullObject() { return RkXmlMapType(); }
  void accept(RkXmlObjectVisitor* visitor) const override { visitor->visit(this); }

  virtual RkBoolean lookup(const K& key, V& value) const {
    const auto found = m_entries.find(key);
    if (found == m_entries.end()) return false;
    value = found->second;
    return true;
  }
  virtual const V* lookupPointer(const K& key) const { return find(key); }
  virtual V* lookupPointer(const K& key) {
    const auto found = m_entries.find(key);
    return found == m_entries.end() ? nullptr : &found->second;
  }
  // The value stored under a bare key value, or null; allocates nothing.
  template <class Key>
  const V* find(const Key& key) const {
    const auto found = m_entries.find(key);
    return found == m_entries.end() ? nullptr : &found->second;
  }
  // Inserts, or overwrites the value of a present key.
  virtual void add(const K& key, const V& value) {
    const auto found = m_entries.find(key);
    if (found == m_entries.end()) {
      m_entries.emplace(key, value);
    } else {
      found->second = value;
    }
  }
  virtual RkBoolean erase(const K& key) {
    const auto found = m_entries.find(key);
    if (found == m_entries.end()) return false;
    m_entries.erase(found);
    return true;
  }
  virtual void clear() { m_entries.clear(); }
  virtual const Map& mapContainer() const { return m_entries; }
  virtual Map& mapContainer() { return m_entries; }
  // Position of key in key order; false with index == size() when absent.
  virtual RkBoolean keyIndex(const K& key, RkU32& index) const {
    index = 0;
    for (const auto& entry : m_entries) {
      if (entry.first == key) return true;
      ++index;
    }
    return false;
  }
  virtual RkBoolean indexKey(const RkU32& index, K& key) const {
    if (index >= size()) return false;
    auto entry = m_entries.begin();
    std::advance(entry, index);
    key = entry->first;
    return true;
  }
  virtual RkU32 size() const { return static_cast<RkU32>(m_entries.size()); }

  RkBoolean write(RkXmlWriter& writer) const override {
    RkBoolean result = RkXmlObject::write(writer);
    for (const auto& entry : m_entries) {
      writer.openElement(RkXml::RkElementToken);
      writer.openElement(RkXml::RkKeyToken);
      result = entry.first.write(writer) && result;
      writer.closeElement();
      writer.openElement(RkXml::RkValueToken);
      result = entry.second.write(writer) && result;
      writer.closeElement();
      writer.closeElement();
    }
    return result;
  }

  // A later entry with the same key replaces the earlier one; a structural error keeps what was read.
  RkBoolean read(RkXmlReader& reader) override {
    const RkBoolean result = RkXmlObject::read(reader);
    m_entries.clear();
    if (!result) return false;
    if (reader.nodeKind() == RkXmlNodeKind::EmptyElement) return result;
    K key;
    const V defaultValue;
    while (true) {
      if (reader.advance() != RkXmlNodeKind::StartElement) return result;
      if (reader.tag() != RkXml::RkElementToken) {
        formatError(reader);
        if (!reader.failed()) {
          Rk::Print::write(4, "\tExpected %s but received %s.", RkXml::RkElementToken.c_str(),
                           reader.tag().c_str());
        }
        return false;
      }
      if (reader.advance() != RkXmlNodeKind::StartElement) return formatError(reader);
      key.read(reader);
      // An entry's node: the pair and the tree's links.
      if (!reader.charge(sizeof(typename Map::value_type) + 4 * sizeof(void*))) return false;
      V& value = m_entries[key];
      value = defaultValue;
      const RkXmlNodeKind kind = reader.advance();
      if (kind == RkXmlNodeKind::StartElement) {
        value.read(reader);
      } else if (kind != RkXmlNodeKind::EmptyElement) {
        return formatError(reader);
      }
      if (reader.advance() != RkXmlNodeKind::EndElement) return formatError(reader);
    }
  }

  void writeSchema(RkXmlSchema& schema) const override {
    RkXmlObject::writeSchema(schema);
    schema.openElement(RkXml::RkElementToken, RkXmlOccurrence::Many, "one entry of the map");
    schema.openElement(RkXml::RkKeyToken, RkXmlOccurrence::Once, "the name of the entry, unique in the map");
    K().writeSchema(schema);
    schema.closeElement();
    schema.openElement(RkXml::RkValueToken, RkXmlOccurrence::Once, "what the entry holds");
    V().writeSchema(schema);
    schema.closeElement();
    schema.closeElement();
  }

 private:
  static RkBoolean formatError(RkXmlReader& reader) {
    if (!reader.failed()) {
      Rk::Print::writeFrom(
          __PRETTY_FUNCTION__, 4,
          "RkXmlMapType Error: file not valid.\n\tKey map format not correct.\n\tFile: %s\n\tLine: %d",
          reader.fileName().c_str(), reader.lineNumber());
    }
    return false;
  }

  Map m_entries;
};

template <class K, class V>
void RkXmlObjectVisitor::visit(const RkXmlMapType<K, V>* map) {
  m_currentObject = map;
  m_pathStrings.clear();
  m_pathStrings.push_back(typeid(const RkXmlMapType<K, V>*).name());
  m_pathStrings.push_back(m_currentToken.text() + " (" + RkINT2STRING(map->size()) + ")");
  if (shouldDescend(map) && mayEnter()) {
    for (const auto& entry : map->mapContainer()) {
      m_currentToken = RkXml::RkKeyToken;
      entry.first.accept(this);
      m_currentToken = RkXml::RkValueToken;
      entry.second.accept(this);
    }
  }
  closeObject(map);
}
