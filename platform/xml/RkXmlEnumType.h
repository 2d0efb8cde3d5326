#pragma once
// An enumerated setting written as one of the strings registered for its values, for example a frame
// type written "primaryFrame" for 0 and "dhFrame" for 1. A value without a string is written as a number.
#include <initializer_list>
#include <utility>
#include <vector>

#include "xml/RkXmlSchema.h"
#include "xml/RkXmlText.h"
#include "xml/RkXmlTextType.h"
#include "xml/RkXmlTokens.h"

template <class T>
class RkXmlEnumType : public RkXmlTextType {
 public:
  RkXmlEnumType() : m_value() {}
  explicit RkXmlEnumType(T value) : m_value(value) {}
  RkXmlEnumType(T value, std::initializer_list<std::pair<T, RkToken>> texts)
      : m_value(value), m_texts(texts) {}

  // The string written for value; a later registration of the same value replaces the string.
  void registerValue(T value, const RkToken& text) {
    for (auto& entry : m_texts) {
      if (entry.first == value) {
        entry.second = text;
        return;
      }
    }
    m_texts.emplace_back(value, text);
  }

  T value() const { return m_value; }
  void setValue(T value) { m_value = value; }
  operator T() const { return m_value; }

  // Compares values only: the string table belongs to the field, not to its state.
  bool operator==(const RkXmlEnumType& other) const { return m_value == other.m_value; }
  bool operator!=(const RkXmlEnumType& other) const { return !(*this == other); }

  RkBoolean equality(const RkXmlObject* other) const override {
    const RkXmlEnumType* same = dynamic_cast<const RkXmlEnumType*>(other);
    return same && *this == *same;
  }
  RkXmlObject* newObject() const override {
    RkXmlEnumType* made = new RkXmlEnumType(*this);
    made->m_value = T();
    return made;
  }
  RkXmlObject* clone() const override { return new RkXmlEnumType(*this); }
  const RkToken& token() const override { return classToken(); }
  static const RkToken& classToken() {
    static const RkToken token = RkXml::qualifiedToken("enumeration");
    return token;
  }

  void formatText(std::string& out) const override {
    for (const auto& entry : m_texts) {
      if (entry.first == m_value) {
        out += entry.second.text();
        return;
      }
    }
    RkXmlText::format(static_cast<int>(m_value), out);
  }
  RkBoolean parseText(std::string_view text) override {
    text = RkXmlText::trim(text);
    for (const auto& entry : m_texts) {
      if (text == entry.second.text()) {
        m_value = entry.first;
        return true;
      }
    }
    int number = 0;
    if (!RkXmlText::parse(text, number)) return false;
    m_value = static_cast<T>(number);
    return true;
  }
  const char* textDescription() const override { return "one of the setting's names"; }
  const char* schemaTypeName() const override { return "xs:string"; }
  void writeSchema(RkXmlSchema& schema) const override {
    std::vector<std::string> names;
    for (const auto& entry : m_texts) names.push_back(entry.second.text());
    schema.textEnumeration(names);
  }

 private:
  T m_value;
  std::vector<std::pair<T, RkToken>> m_texts;
};
