#include "xml/RkToken.h"

#include <mutex>

struct RkToken::Entry {
  std::string text;
  std::size_t localOffset;  // where the local name starts
  bool interned = true;     // false while only local tables hold it
  std::size_t tables = 0;   // how many local tables hold it

  explicit Entry(std::string_view name) : text(name) {
    // A local name never holds '#' or '}': it follows the namespace URI (ending in '#') or the "{uri}" that
    // the reader puts before names of other namespaces.
    const std::size_t split = text.find_last_of("#}");
    localOffset = split == std::string::npos ? 0 : split + 1;
  }
};

namespace {

struct InternTable {
  std::mutex mutex;
  std::unordered_map<std::string_view, RkToken::Entry*> entries;
  // Names that only local tables hold.
  std::unordered_map<std::string_view, RkToken::Entry*> held;
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
  RkToken::Entry* entry;
  auto held = interned.held.find(text);
  if (held != interned.held.end()) {
    // A document already uses the name: its token becomes the interned one, so both compare equal.
    entry = held->second;
    entry->interned = true;
    interned.held.erase(held);
  } else {
    entry = new RkToken::Entry(text);
  }
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

RkToken RkToken::find(std::string_view text) {
  if (text.empty()) return RkToken();
  InternTable& interned = table();
  std::lock_guard<std::mutex> lock(interned.mutex);
  auto found = interned.entries.find(text);
  return RkToken(found == interned.entries.end() ? nullptr : found->second);
}

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

RkToken::LocalTable::LocalTable() : m_bytes(0) {}

RkToken::LocalTable::~LocalTable() {
  InternTable& interned = table();
  std::lock_guard<std::mutex> lock(interned.mutex);
  for (const auto& [text, entry] : m_held) {
    if (--entry->tables > 0 || entry->interned) continue;
    interned.held.erase(text);
    delete entry;
  }
}

RkToken RkToken::LocalTable::token(std::string_view text) {
  if (text.empty()) return RkToken();
  const auto mine = m_held.find(text);
  if (mine != m_held.end()) return RkToken(mine->second);
  InternTable& interned = table();
  std::lock_guard<std::mutex> lock(interned.mutex);
  const auto found = interned.entries.find(text);
  if (found != interned.entries.end()) return RkToken(found->second);
  Entry* entry;
  const auto held = interned.held.find(text);
  if (held != interned.held.end()) {
    entry = held->second;
  } else {
    entry = new Entry(text);
    entry->interned = false;
    interned.held.emplace(std::string_view(entry->text), entry);
  }
  ++entry->tables;
  m_held.emplace(std::string_view(entry->text), entry);
  // The entry, its text and a node in each of the two maps.
  m_bytes += sizeof(Entry) + entry->text.capacity() + 12 * sizeof(void*);
  return RkToken(entry);
}
