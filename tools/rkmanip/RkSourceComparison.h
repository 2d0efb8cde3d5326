#pragma once
// A document's source text beside the written form of the objects read from it, matched element by
// element: whatever of the source the objects do not hold is listed with its line, and any place in the
// written form leads back to its line in the source.
#include <map>
#include <set>
#include <string>
#include <string_view>
#include <vector>

#include "xml/RkToken.h"

struct _xmlDoc;
struct _xmlNode;

class RkSourceComparison {
 public:
  struct Difference {
    int line;
    std::string text;  // one sentence
    // Left out when a message the reader printed at the same line holds one of these texts (an empty text
    // matches any message), since that message then tells the same.
    std::vector<std::string> toldByReaderSaying;
  };

  // A place in the written form; one that the source lacks stands at the line of its nearest ancestor
  // that the source holds.
  class Place {
   public:
    // The index-th child element with the tag (a vector or map holds several "element"s).
    Place child(const RkToken& tag, std::size_t index = 0) const;
    // Every child element with the tag, in order.
    std::vector<Place> children(const RkToken& tag) const;
    int line() const;
    // Whether the source holds this place itself, not merely one of its ancestors.
    bool inSource() const;
    // The text of the source element, or empty.
    std::string sourceText() const;
    // Whether the source element holds something the objects do not.
    bool holdsUnread() const;

   private:
    friend class RkSourceComparison;
    Place(const RkSourceComparison* owner, _xmlNode* written, int line);
    const RkSourceComparison* m_owner;
    _xmlNode* m_written;
    int m_line;
  };

  RkSourceComparison() = default;
  ~RkSourceComparison();
  RkSourceComparison(const RkSourceComparison&) = delete;
  RkSourceComparison& operator=(const RkSourceComparison&) = delete;

  // Matches the two documents; false, with error set, when either cannot be parsed.
  bool compare(std::string_view source, std::string_view written, std::string& error);
  const std::vector<Difference>& differences() const { return m_differences; }
  // The root of the written form.
  Place root() const;

 private:
  void match(_xmlNode* source, _xmlNode* written);
  void matchText(_xmlNode* source, _xmlNode* written);
  void matchChildren(_xmlNode* source, _xmlNode* written);
  void report(_xmlNode* source, int line, std::string text, std::vector<std::string> toldByReaderSaying);

  _xmlDoc* m_source = nullptr;
  _xmlDoc* m_written = nullptr;
  std::map<const _xmlNode*, _xmlNode*> m_sourceOf;  // written element -> source element
  std::set<const _xmlNode*> m_holdsUnread;          // source elements with something not read
  std::vector<Difference> m_differences;
};
