#include "tools/rkmanip/RkSourceComparison.h"

#include <libxml/parser.h>
#include <libxml/tree.h>

#include <cmath>
#include <cstring>

#include "foundation/RkTypes.h"
#include "xml/RkXmlText.h"
#include "xml/RkXmlTokens.h"

namespace {

const char* const kSchemaInstance = "http://www.w3.org/2001/XMLSchema-instance";

std::string_view nameOf(const xmlNode* node) {
  return reinterpret_cast<const char*>(node->name);
}

std::string_view namespaceOf(const xmlNode* node) {
  return node->ns && node->ns->href ? reinterpret_cast<const char*>(node->ns->href) : "";
}

bool named(const xmlNode* node, const RkToken& tag) {
  return nameOf(node) == tag.localName() && namespaceOf(node) == tag.namespaceUri();
}

bool isText(const xmlNode* node) {
  return node->type == XML_TEXT_NODE || node->type == XML_CDATA_SECTION_NODE;
}

bool isBlank(std::string_view text) {
  return RkXmlText::trim(text).empty();
}

std::vector<xmlNode*> elementChildren(const xmlNode* node) {
  std::vector<xmlNode*> children;
  for (xmlNode* child = node->children; child; child = child->next)
    if (child->type == XML_ELEMENT_NODE) children.push_back(child);
  return children;
}

std::string textOf(const xmlNode* node) {
  std::string text;
  for (const xmlNode* child = node->children; child; child = child->next)
    if (isText(child) && child->content) text += reinterpret_cast<const char*>(child->content);
  return text;
}

int lineOf(const xmlNode* node) {
  return static_cast<int>(xmlGetLineNo(node));
}

// libxml2 gives a text node the line where it ends; this is the line of its first non-blank character.
int textLine(const xmlNode* node) {
  const std::string_view text = reinterpret_cast<const char*>(node->content);
  const std::size_t first = text.find_first_not_of(" \t\r\n");
  int after = 0;
  for (std::size_t i = first; i < text.size(); ++i) after += text[i] == '\n';
  return std::max(lineOf(node) - after, node->parent ? lineOf(node->parent) : 1);
}

// Text as a message quotes it: trimmed, control characters escaped, long text cut.
std::string quoted(std::string_view text) {
  text = RkXmlText::trim(text);
  std::string out = "\"";
  for (std::size_t i = 0; i < text.size(); ++i) {
    if (i == 40) {
      out += "...";
      break;
    }
    const unsigned char c = static_cast<unsigned char>(text[i]);
    if (c == '\n') {
      out += "\\n";
    } else if (c < 0x20 || c == 0x7f) {
      out += ' ';
    } else {
      out += static_cast<char>(c);
    }
  }
  return out + "\"";
}

std::string tagOf(const xmlNode* node) {
  return "<" + std::string(nameOf(node)) + ">";
}

// The items of a basic value's text: separated by blanks, a quoted item running to its closing quote.
std::vector<std::string_view> items(std::string_view text) {
  std::vector<std::string_view> out;
  std::size_t i = 0;
  while (true) {
    while (i < text.size() && std::strchr(" \t\r\n", text[i])) ++i;
    if (i >= text.size()) return out;
    const std::size_t start = i;
    if (text[i] == '"') {
      for (++i; i < text.size() && text[i] != '"'; ++i)
        if (text[i] == '\\') ++i;
      i = std::min(i + 1, text.size());
    } else {
      while (i < text.size() && !std::strchr(" \t\r\n", text[i])) ++i;
    }
    out.push_back(text.substr(start, i - start));
  }
}

bool sameItem(std::string_view a, std::string_view b) {
  if (a == b) return true;
  RkReal x = 0, y = 0;
  if (RkXmlText::parse(a, x) && RkXmlText::parse(b, y)) return x == y || (std::isnan(x) && std::isnan(y));
  RkBoolean p = false, q = false;
  if (RkXmlText::parse(a, p) && RkXmlText::parse(b, q)) return p == q;
  std::string s, t;
  return RkXmlText::parse(a, s) && RkXmlText::parse(b, t) && s == t;
}

// An orientation reads normalised: the source's quaternion is held when it points the same way.
bool sameOrientation(std::string_view source, std::string_view written) {
  RkReal a[4], b[4];
  if (!RkXmlText::parseReals(source, a, 4) || !RkXmlText::parseReals(written, b, 4)) return false;
  const RkReal length = std::sqrt(a[0] * a[0] + a[1] * a[1] + a[2] * a[2] + a[3] * a[3]);
  RkReal same = 0.0, opposite = 0.0;
  for (int i = 0; i < 4; ++i) {
    same = std::max(same, std::abs(a[i] / length - b[i]));
    opposite = std::max(opposite, std::abs(a[i] / length + b[i]));
  }
  return std::min(same, opposite) < 1e-9;
}

bool sameValue(const xmlNode* source, std::string_view a, std::string_view b) {
  if (nameOf(source) == "orientation") return sameOrientation(a, b);
  const std::vector<std::string_view> left = items(a), right = items(b);
  bool same = left.size() == right.size();
  for (std::size_t i = 0; same && i < left.size(); ++i) same = sameItem(left[i], right[i]);
  std::string s, t;
  return same || (RkXmlText::parse(a, s) && RkXmlText::parse(b, t) && s == t);
}

// The key of a map entry ("element" whose first child is "key"), parsed; false for anything else.
bool entryKey(const xmlNode* node, std::string& key) {
  if (!named(node, RkXml::RkElementToken)) return false;
  const std::vector<xmlNode*> children = elementChildren(node);
  if (children.empty() || !named(children.front(), RkXml::RkKeyToken)) return false;
  const std::string text = textOf(children.front());
  if (!RkXmlText::parse(text, key)) key = std::string(RkXmlText::trim(text));
  return true;
}

}  // namespace

RkSourceComparison::~RkSourceComparison() {
  if (m_source) xmlFreeDoc(m_source);
  if (m_written) xmlFreeDoc(m_written);
}

bool RkSourceComparison::compare(std::string_view source, std::string_view written, std::string& error) {
  // Both texts have passed the hardened reader already; nothing is loaded or substituted here either.
  const int options = XML_PARSE_NONET | XML_PARSE_BIG_LINES | XML_PARSE_NOERROR | XML_PARSE_NOWARNING;
  m_source = xmlReadMemory(source.data(), static_cast<int>(source.size()), nullptr, nullptr, options);
  m_written = xmlReadMemory(written.data(), static_cast<int>(written.size()), nullptr, nullptr, options);
  xmlNode* sourceRoot = m_source ? xmlDocGetRootElement(m_source) : nullptr;
  xmlNode* writtenRoot = m_written ? xmlDocGetRootElement(m_written) : nullptr;
  if (!sourceRoot || !writtenRoot) {
    error = sourceRoot ? "what was read could not be written back" : "the source could not be parsed again";
    return false;
  }
  match(sourceRoot, writtenRoot);
  return true;
}

void RkSourceComparison::report(xmlNode* source, int line, std::string text,
                                std::vector<std::string> toldByReaderSaying) {
  m_holdsUnread.insert(source);
  m_differences.push_back({line, std::move(text), std::move(toldByReaderSaying)});
}

void RkSourceComparison::match(xmlNode* source, xmlNode* written) {
  m_sourceOf[written] = source;
  for (const xmlAttr* attribute = source->properties; attribute; attribute = attribute->next) {
    const char* uri = attribute->ns ? reinterpret_cast<const char*>(attribute->ns->href) : nullptr;
    if (uri && std::strcmp(uri, kSchemaInstance) == 0) continue;
    if (!xmlHasNsProp(written, attribute->name, attribute->ns ? attribute->ns->href : nullptr)) {
      report(source, lineOf(source),
             "attribute " + std::string(reinterpret_cast<const char*>(attribute->name)) + " of " +
                 tagOf(source) + " was not read, so it has no effect; remove it",
             {});
    }
  }
  matchText(source, written);
  matchChildren(source, written);
}

void RkSourceComparison::matchText(xmlNode* source, xmlNode* written) {
  const std::string writtenText = textOf(written);
  if (!elementChildren(written).empty() || isBlank(writtenText)) {
    // The objects hold no text here: every non-blank text of the source is left over.
    for (xmlNode* child = source->children; child; child = child->next) {
      if (!isText(child) || isBlank(reinterpret_cast<const char*>(child->content))) continue;
      report(source, textLine(child),
             "text " + quoted(reinterpret_cast<const char*>(child->content)) + " in " + tagOf(source) +
                 " is not part of any value and was not read; remove it",
             elementChildren(source).empty() ? std::vector<std::string>{""} : std::vector<std::string>{});
    }
    return;
  }
  const std::string sourceText = textOf(source);
  if (!sameValue(source, sourceText, writtenText)) {
    report(source, lineOf(source),
           tagOf(source) + " holds " + quoted(sourceText) + ", which was read as " + quoted(writtenText) +
               "; write it in the form the element takes",
           {""});
  }
}

void RkSourceComparison::matchChildren(xmlNode* source, xmlNode* written) {
  const std::vector<xmlNode*> sources = elementChildren(source);
  std::vector<char> used(sources.size(), 0);
  // The source's children by name, in order, each list with a cursor at its first unused one; map entries
  // by key. Matching is then linear in the number of children.
  std::map<std::pair<std::string_view, std::string_view>, std::pair<std::vector<std::size_t>, std::size_t>>
      byName;
  std::map<std::string, std::vector<std::size_t>> byKey;
  std::string key;
  for (std::size_t i = 0; i < sources.size(); ++i) {
    byName[{namespaceOf(sources[i]), nameOf(sources[i])}].first.push_back(i);
    if (entryKey(sources[i], key)) byKey[key].push_back(i);
  }
  for (xmlNode* child : elementChildren(written)) {
    std::size_t found = sources.size();
    if (entryKey(child, key)) {
      // A later entry with the same key replaces an earlier one: the last is the one held.
      std::vector<std::size_t> same;
      for (std::size_t i : byKey[key])
        if (!used[i]) same.push_back(i);
      byKey[key].clear();
      if (!same.empty()) found = same.back();
      if (same.size() > 1) {
        std::string lines;
        for (std::size_t i = 0; i < same.size(); ++i) {
          used[same[i]] = 1;
          lines += (i == 0                 ? ""
                    : i + 1 == same.size() ? " and "
                                           : ", ") +
                   std::to_string(lineOf(sources[same[i]]));
        }
        report(source, lineOf(sources[same.front()]),
               "key " + quoted(key) + " of " + tagOf(source) + " appears at lines " + lines +
                   ", and only the entry at line " + std::to_string(lineOf(sources[found])) +
                   " is kept; rename or remove the others",
               {});
      }
    } else {
      const auto named = byName.find({namespaceOf(child), nameOf(child)});
      if (named != byName.end()) {
        auto& [list, cursor] = named->second;
        while (cursor < list.size() && used[list[cursor]]) ++cursor;
        if (cursor < list.size()) found = list[cursor];
      }
    }
    if (found == sources.size()) continue;
    used[found] = 1;
    match(sources[found], child);
  }
  for (std::size_t i = 0; i < sources.size(); ++i) {
    if (used[i]) continue;
    // The reader names an element it skips; an empty one is what any message at its line is about.
    const std::string name(nameOf(sources[i]));
    const bool empty = !sources[i]->children && !sources[i]->properties;
    report(source, lineOf(sources[i]),
           "element " + tagOf(sources[i]) + " in " + tagOf(source) +
               " was not read, so nothing in it has any effect; correct or remove it",
           empty ? std::vector<std::string>{""}
                 : std::vector<std::string>{"\"" + name + "\"", "#" + name + "\""});
  }
}

RkSourceComparison::Place RkSourceComparison::root() const {
  xmlNode* written = m_written ? xmlDocGetRootElement(m_written) : nullptr;
  return Place(this, written, 0);
}

RkSourceComparison::Place::Place(const RkSourceComparison* owner, xmlNode* written, int line)
    : m_owner(owner), m_written(written), m_line(line) {}

std::vector<RkSourceComparison::Place> RkSourceComparison::Place::children(const RkToken& tag) const {
  std::vector<Place> places;
  if (m_written) {
    for (xmlNode* child : elementChildren(m_written))
      if (named(child, tag)) places.push_back(Place(m_owner, child, line()));
  }
  return places;
}

RkSourceComparison::Place RkSourceComparison::Place::child(const RkToken& tag, std::size_t index) const {
  if (m_written) {
    for (xmlNode* child : elementChildren(m_written)) {
      if (named(child, tag) && index-- == 0) return Place(m_owner, child, line());
    }
  }
  return Place(m_owner, nullptr, line());
}

int RkSourceComparison::Place::line() const {
  for (const xmlNode* node = m_written; node && node->type == XML_ELEMENT_NODE; node = node->parent) {
    const auto found = m_owner->m_sourceOf.find(node);
    if (found != m_owner->m_sourceOf.end()) return lineOf(found->second);
  }
  return m_line;
}

bool RkSourceComparison::Place::inSource() const {
  return m_written && m_owner->m_sourceOf.count(m_written);
}

std::string RkSourceComparison::Place::sourceText() const {
  const auto found = m_written ? m_owner->m_sourceOf.find(m_written) : m_owner->m_sourceOf.end();
  return found == m_owner->m_sourceOf.end() ? std::string() : textOf(found->second);
}

bool RkSourceComparison::Place::holdsUnread() const {
  const auto found = m_written ? m_owner->m_sourceOf.find(m_written) : m_owner->m_sourceOf.end();
  return found != m_owner->m_sourceOf.end() && m_owner->m_holdsUnread.count(found->second);
}
