#include "xml/RkToken.h"

#include <mutex>
#include <unordered_map>

struct RkToken::Entry {
  std::string text;
  std::size_t localOffset;  // where the local name starts
};

namespace {

struct InternTable {
  std::mutex mutex;
  std::unordered_map<std::string_view, const RkToken::Entry*> entries;
};

// Never destroyed: tokens in other libraries' static objects may outlive any destruction order.
InternTable& table() {
  static InternTable* instance = new InternTable;
  return *instance;
}

const RkToken::Entry* intern(std::string_view text) {
  if (text.empty()) return nullptr;
  InternTable& interned = table();
  std::lock_guard<std::mutex> lock(interned.mutex);
  auto found = interned.entries.find(text);
  if (found != interned.entries.end()) return found->second;
  auto* entry = new RkToken::Entry{std::string(text), 0};
  // A local name never holds '#' or '}': it follows the namespace URI (ending in '#') or the "{uri}" that
  // the reader puts before names of other namespaces.
  const std::size_t split = entry->text.find_last_of("#}");
  entry->localOffset = split == std::string::npos ? 0 : split + 1;
  interned.entries.emplace(std::string_view(entry->text), entry);
  return entry;
}

const std::string& emptyText() {
  static const std::string* empty = new std::string;
  return *empty;
}

}  // namespace

RkToken::RkToken(const char* text) : m_entry(intern(text ? std::string_view(text) : std::string_view())) {}

RkToken::RkToken(std::string_view text) : m_entry(intern(text)) {}

RkToken& RkToken::operator+=(std::string_view suffix) {
  std::string joined = text();
  joined.append(suffix);
  m_entry = intern(joined);
  return *this;
}

const std::string& RkToken::text() const {
  return m_entry ? m_entry->text : emptyText();
}

std::string_view RkToken::localName() const {
  if (!m_entry) return std::string_view();
  return std::string_view(m_entry->text).substr(m_entry->localOffset);
}

std::string_view RkToken::namespaceUri() const {
  if (!m_entry) return std::string_view();
  return std::string_view(m_entry->text).substr(0, m_entry->localOffset);
}

bool RkToken::operator<(const RkToken& other) const {
  return m_entry != other.m_entry && text() < other.text();
}
