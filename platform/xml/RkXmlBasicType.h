#pragma once
// A basic value (RkReal, RkU32, RkBoolean, int, std::string) as an XML object: character data of its
// element, or one item of a group. Converts to and from its value.
#include <ostream>
#include <string>
#include <type_traits>

#include "xml/RkXmlText.h"
#include "xml/RkXmlTextType.h"
#include "xml/RkXmlTokens.h"

namespace RkXmlText {
// Equal values; for reals, two NaNs are the same value.
template <class T>
bool sameValue(const T& a, const T& b) {
  return a == b;
}
inline bool sameValue(const RkReal& a, const RkReal& b) {
  return a == b || (a != a && b != b);
}

inline const char* typeName(const RkReal*) {
  return "real";
}
inline const char* typeName(const RkU32*) {
  return "unsignedInt";
}
inline const char* typeName(const int*) {
  return "int";
}
inline const char* typeName(const RkBoolean*) {
  return "boolean";
}
inline const char* typeName(const std::string*) {
  return "string";
}
inline const char* description(const RkReal*) {
  return "a real number";
}
inline const char* description(const RkU32*) {
  return "an unsigned integer";
}
inline const char* description(const int*) {
  return "an integer";
}
inline const char* description(const RkBoolean*) {
  return "true or false";
}
inline const char* description(const std::string*) {
  return "a string";
}
}  // namespace RkXmlText

template <class T>
class RkXmlBasicType : public RkXmlTextType {
 public:
  RkXmlBasicType() : m_value() {}
  RkXmlBasicType(const T& value) : m_value(value) {}
  RkXmlBasicType& operator=(const T& value) {
    m_value = value;
    return *this;
  }

  const T& value() const { return m_value; }
  void setValue(const T& value) { m_value = value; }
  operator const T&() const { return m_value; }

  bool operator==(const RkXmlBasicType& other) const { return RkXmlText::sameValue(m_value, other.m_value); }
  bool operator!=(const RkXmlBasicType& other) const { return !(*this == other); }
  bool operator<(const RkXmlBasicType& other) const { return m_value < other.m_value; }
  // Comparisons with a bare value, so ordered maps keyed by basic types find plain values.
  friend bool operator<(const RkXmlBasicType& a, const T& b) { return a.m_value < b; }
  friend bool operator<(const T& a, const RkXmlBasicType& b) { return a < b.m_value; }

  RkBoolean equality(const RkXmlObject* other) const override {
    const RkXmlBasicType* same = dynamic_cast<const RkXmlBasicType*>(other);
    return same && *this == *same;
  }
  RkXmlObject* newObject() const override { return new RkXmlBasicType; }
  RkXmlObject* clone() const override { return new RkXmlBasicType(*this); }
  const RkToken& token() const override { return classToken(); }
  static const RkToken& classToken() {
    static const RkToken token = RkXml::qualifiedToken(RkXmlText::typeName(static_cast<const T*>(nullptr)));
    return token;
  }
  RkBoolean isBasicType() const override { return true; }

  void formatText(std::string& out) const override { RkXmlText::format(m_value, out); }
  RkBoolean parseText(std::string_view text) override { return RkXmlText::parse(text, m_value); }
  const char* textDescription() const override {
    return RkXmlText::description(static_cast<const T*>(nullptr));
  }
  const char* schemaTypeName() const override {
    return RkXmlText::schemaType(static_cast<const T*>(nullptr));
  }

  // The value's text form, for lexical casts and messages.
  friend std::ostream& operator<<(std::ostream& stream, const RkXmlBasicType& basic) {
    std::string text;
    if constexpr (std::is_same<T, std::string>::value) {
      text = basic.m_value;
    } else {
      RkXmlText::format(basic.m_value, text);
    }
    return stream << text;
  }

 private:
  T m_value;
};
