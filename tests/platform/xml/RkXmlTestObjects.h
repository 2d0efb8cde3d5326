#pragma once
// Test classes shared by the XML tests, the reader fuzzer and the XML benchmarks. Header-only.
//
//   RkTestLeaf, RkTestOtherLeaf  plain compounds of basic values (the second one with an attribute);
//   RkTestLeafContainer          holds one compound, either leaf;
//   RkTestShape                  an abstract family base, with RkTestCircle and RkTestPolygon;
//   RkTestShapeContainer         holds one shape; a plug-in may add classes to its family;
//   RkTestHolder                 the usual document root: vectors, maps and containers nested in each other.
//
// Fields are public, as befits test fixtures. RkTestHolder::sample(n) builds a deterministic holder whose
// size grows linearly with n, for round trips, seed documents and benchmarks.
#include <string>

#include "xml/RkXmlBasicType.h"
#include "xml/RkXmlCompoundType.h"
#include "xml/RkXmlConcreteClass.h"
#include "xml/RkXmlFamilyContainer.h"
#include "xml/RkXmlMapType.h"
#include "xml/RkXmlTokens.h"
#include "xml/RkXmlVariableElementType.h"
#include "xml/RkXmlVectorType.h"

// Every element name the test classes use, built once.
struct RkTestTokens {
  const RkToken length = RkXml::qualifiedToken("length");
  const RkToken name = RkXml::qualifiedToken("name");
  const RkToken count = RkXml::qualifiedToken("count");
  const RkToken label = RkXml::qualifiedToken("label");
  const RkToken enabled = RkXml::qualifiedToken("enabled");
  const RkToken offset = RkXml::qualifiedToken("offset");
  const RkToken values = RkXml::qualifiedToken("values");
  const RkToken radius = RkXml::qualifiedToken("radius");
  const RkToken sides = RkXml::qualifiedToken("sides");
  const RkToken title = RkXml::qualifiedToken("title");
  const RkToken names = RkXml::qualifiedToken("names");
  const RkToken leaves = RkXml::qualifiedToken("leaves");
  const RkToken others = RkXml::qualifiedToken("others");
  const RkToken shape = RkXml::qualifiedToken("shape");
  const RkToken choice = RkXml::qualifiedToken("choice");
  const RkToken nested = RkXml::qualifiedToken("nested");

  static const RkTestTokens& get() {
    static const RkTestTokens tokens;
    return tokens;
  }
};

inline const RkToken RkTestLeafToken = RkXml::qualifiedToken("testLeaf");

class RkTestLeaf : public RkXmlConcreteClass<RkTestLeaf, RkXmlCompoundType, RkTestLeafToken> {
 public:
  RkTestLeaf() = default;
  RkTestLeaf(RkReal length, const std::string& name, RkU32 count)
      : m_length(length), m_name(name), m_count(count) {}

  RkXmlBasicType<RkReal> m_length;
  RkXmlBasicType<std::string> m_name;
  RkXmlBasicType<RkU32> m_count;

 protected:
  void registerComponents() override {
    const RkTestTokens& tokens = RkTestTokens::get();
    registerComponent(tokens.length, &m_length);
    registerComponent(tokens.name, &m_name);
    registerComponent(tokens.count, &m_count);
  }
};

inline const RkToken RkTestOtherLeafToken = RkXml::qualifiedToken("testOtherLeaf");

class RkTestOtherLeaf : public RkXmlConcreteClass<RkTestOtherLeaf, RkXmlCompoundType, RkTestOtherLeafToken> {
 public:
  RkXmlBasicType<std::string> m_label;  // an attribute
  RkXmlBasicType<RkBoolean> m_enabled;
  RkXmlBasicType<int> m_offset;
  RkXmlVectorType<RkXmlBasicType<RkReal>> m_values;

 protected:
  void registerComponents() override {
    const RkTestTokens& tokens = RkTestTokens::get();
    registerAttributeComponent(tokens.label, &m_label);
    registerComponent(tokens.enabled, &m_enabled);
    registerComponent(tokens.offset, &m_offset);
    registerComponent(tokens.values, &m_values);
  }
};

// Holds either leaf class.
inline const RkToken RkTestLeafContainerToken = RkXml::qualifiedToken("testLeafContainer");

class RkTestLeafContainer
    : public RkXmlFamilyContainer<RkTestLeafContainer, RkXmlCompoundType, RkTestLeafContainerToken> {
 public:
 protected:
  void registerComponentCreators() override {
    registerComponentCreator(RkTestLeaf::classToken(), &RkTestLeaf::creator);
    registerComponentCreator(RkTestOtherLeaf::classToken(), &RkTestOtherLeaf::creator);
  }
};

// The base of the shape family; only its concrete classes are ever made.
class RkTestShape : public RkXmlCompoundType {
 public:
  bool operator==(const RkTestShape&) const { return true; }
};

inline const RkToken RkTestCircleToken = RkXml::qualifiedToken("testCircle");

class RkTestCircle : public RkXmlConcreteClass<RkTestCircle, RkTestShape, RkTestCircleToken> {
 public:
  explicit RkTestCircle(RkReal radius = 1.0) : m_radius(radius) {}

  RkXmlBasicType<RkReal> m_radius;

 protected:
  void registerComponents() override { registerComponent(RkTestTokens::get().radius, &m_radius); }
};

inline const RkToken RkTestPolygonToken = RkXml::qualifiedToken("testPolygon");

class RkTestPolygon : public RkXmlConcreteClass<RkTestPolygon, RkTestShape, RkTestPolygonToken> {
 public:
  explicit RkTestPolygon(RkU32 sides = 3, RkReal length = 1.0, const std::string& name = "")
      : m_sides(sides), m_length(length), m_name(name) {}

  RkXmlBasicType<RkU32> m_sides;
  RkXmlBasicType<RkReal> m_length;
  RkXmlBasicType<std::string> m_name;

 protected:
  void registerComponents() override {
    const RkTestTokens& tokens = RkTestTokens::get();
    registerComponent(tokens.sides, &m_sides);
    registerComponent(tokens.length, &m_length);
    registerComponent(tokens.name, &m_name);
  }
};

inline const RkToken RkTestShapeContainerToken = RkXml::qualifiedToken("testShapeContainer");

class RkTestShapeContainer
    : public RkXmlFamilyContainer<RkTestShapeContainer, RkTestShape, RkTestShapeContainerToken> {
 public:
  RkTestShapeContainer() = default;
  explicit RkTestShapeContainer(const RkTestShape& shape) { setElement(shape); }

 protected:
  void registerComponentCreators() override {
    registerComponentCreator(RkTestCircle::classToken(), &RkTestCircle::creator);
    registerComponentCreator(RkTestPolygon::classToken(), &RkTestPolygon::creator);
  }
};

inline const RkToken RkTestHolderToken = RkXml::qualifiedToken("testHolder");

class RkTestHolder : public RkXmlConcreteClass<RkTestHolder, RkXmlCompoundType, RkTestHolderToken> {
 public:
  typedef RkXmlBasicType<std::string> Name;
  typedef RkXmlVectorType<RkTestShapeContainer> ShapeVector;
  typedef RkXmlMapType<Name, ShapeVector> ShapeMap;

  // A holder with every field filled: entries names, leaves and others, and entries maps of two shape
  // lists each. Strings include ones that must be quoted or escaped.
  static RkTestHolder sample(RkU32 entries) {
    static const char* const kWords[] = {"plain", "two words", "a & b < c", "say \"hi\"", "tab\there", ""};
    const auto word = [](RkU32 i) { return std::string(kWords[i % 6]) + std::to_string(i); };
    RkTestHolder holder;
    holder.m_title = "sample of " + std::to_string(entries);
    holder.m_shape.setElement(RkTestPolygon(6, 0.5, "hexagon"));
    holder.m_choice.setElement(RkTestLeaf(2.5, "chosen leaf", 7));
    for (RkU32 i = 0; i < entries; ++i) {
      holder.m_names.pushBack(Name(word(i)));
      holder.m_leaves.add(Name(word(i)), RkTestLeaf(0.125 * i - 3.0, word(i + 1), i * 7919u));
      RkTestOtherLeaf other;
      other.m_label = word(i + 2);
      other.m_enabled = i % 2 == 0;
      other.m_offset = -static_cast<int>(i);
      for (RkU32 k = 0; k < 4; ++k) other.m_values.pushBack(RkXmlBasicType<RkReal>(i * 0.1 + k * 1e-3));
      holder.m_others.pushBack(other);
      ShapeMap map;
      for (RkU32 k = 0; k < 2; ++k) {
        ShapeVector shapes;
        shapes.pushBack(RkTestShapeContainer(RkTestCircle(0.25 * (i + k))));
        shapes.pushBack(RkTestShapeContainer());
        shapes.pushBack(RkTestShapeContainer(RkTestPolygon(3 + k, 1.5 * i, word(i + k))));
        map.add(Name(word(i + k)), shapes);
      }
      holder.m_nested.pushBack(map);
    }
    return holder;
  }

  Name m_title;
  RkXmlVectorType<Name> m_names;
  RkXmlMapType<Name, RkTestLeaf> m_leaves;
  RkXmlVectorType<RkTestOtherLeaf> m_others;
  RkTestShapeContainer m_shape;
  RkTestLeafContainer m_choice;
  RkXmlVectorType<ShapeMap> m_nested;

 protected:
  void registerComponents() override {
    const RkTestTokens& tokens = RkTestTokens::get();
    registerComponent(tokens.title, &m_title);
    registerComponent(tokens.names, &m_names);
    registerComponent(tokens.leaves, &m_leaves);
    registerComponent(tokens.others, &m_others);
    registerComponent(tokens.shape, &m_shape);
    registerComponent(tokens.choice, &m_choice);
    registerComponent(tokens.nested, &m_nested);
  }
};
