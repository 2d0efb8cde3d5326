#pragma once
// An interned name: tokens with the same text share one entry, so equality is a pointer comparison.
// Element names are a namespace URI (ending in '#') followed by a local name; names of a namespace that
// does not end in '#' are written "{uri}local", so they can never be mistaken for the toolkit's.
#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_map>

class RkToken {
 public:
  struct Entry;
  class LocalTable;

  // The empty token; constant-initialised, so it is usable before any initialiser has run.
  constexpr RkToken() : m_entry(nullptr) {}
  explicit RkToken(const char* text);
  explicit RkToken(std::string_view text);
  explicit RkToken(const std::string& text) : RkToken(std::string_view(text)) {}
  // The interned token of text if one exists, else the empty token; interns nothing.
  static RkToken find(std::string_view text);

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
  explicit RkToken(const Entry* entry) : m_entry(entry) {}
  const Entry* m_entry;
};

// The names a document uses that no token has, held while the table lives without growing the interned
// table for good. The token of such a name is shared by every live table, becomes the interned token if
// the name is interned meanwhile (a plug-in or a class token built late), and is freed with the last table
// that holds it otherwise.
class RkToken::LocalTable {
 public:
  LocalTable();
  ~LocalTable();
  LocalTable(const LocalTable&) = delete;
  LocalTable& operator=(const LocalTable&) = delete;

  // The token of text: the interned one when it exists, else one held by this table.
  RkToken token(std::string_view text);
  // An estimate of the bytes this table made others hold, for memory caps.
  std::size_t bytes() const { return m_bytes; }

 private:
  std::unordered_map<std::string_view, Entry*> m_held;
  std::size_t m_bytes;
};

namespace std {
template <>
struct hash<RkToken> {
  std::size_t operator()(const RkToken& token) const { return token.hash(); }
};
}  // namespace std
