#pragma once
// An interned name: tokens with the same text share one entry, so equality is a pointer comparison.
// Element names are a namespace URI (ending in '#') followed by a local name; names of a namespace that
// does not end in '#' are written "{uri}local", so they can never be mistaken for the toolkit's.
#include <cstddef>
#include <string>
#include <string_view>

class RkToken {
 public:
  struct Entry;

  // The empty token; constant-initialised, so it is usable before any initialiser has run.
  constexpr RkToken() : m_entry(nullptr) {}
  explicit RkToken(const char* text);
  explicit RkToken(std::string_view text);
  explicit RkToken(const std::string& text) : RkToken(std::string_view(text)) {}

  // Appends text, giving the token for the longer text (namespace token += local name).
  RkToken& operator+=(std::string_view suffix);

  const std::string& text() const;
  const char* c_str() const { return text().c_str(); }
  operator const std::string&() const { return text(); }
  // The part after the namespace: the element name a document shows.
  std::string_view localName() const;
  // The namespace part, empty for an unqualified token.
  std::string_view namespaceUri() const;
  bool empty() const { return m_entry == nullptr; }
  std::size_t hash() const { return std::hash<const void*>()(m_entry); }

  bool operator==(const RkToken& other) const { return m_entry == other.m_entry; }
  bool operator!=(const RkToken& other) const { return m_entry != other.m_entry; }
  // Orders by text, so maps keyed by tokens iterate the same way in every run.
  bool operator<(const RkToken& other) const;

 private:
  const Entry* m_entry;
};

namespace std {
template <>
struct hash<RkToken> {
  std::size_t operator()(const RkToken& token) const { return token.hash(); }
};
}  // namespace std
