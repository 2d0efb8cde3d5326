#pragma once
// The problems found while a document, and the robot it runs on, are read and checked: each names its file
// and line. The library's own messages keep their text; the tool's are one sentence each.
#include <map>
#include <ostream>
#include <string>
#include <utility>
#include <vector>

#include "foundation/RkPrint.h"

class RkDiagnostics {
 public:
  enum class Severity { Warning, Error };
  struct Finding {
    Severity severity;
    std::string file;
    int line;  // 0 for the file as a whole
    std::string text;
    bool fromLibrary;
  };

  void error(const std::string& file, int line, const std::string& text);
  void warning(const std::string& file, int line, const std::string& text);
  // A message the library printed while file was read, at the line where it arose.
  void library(const std::string& file, int line, const std::string& text);
  // Appends every finding of other.
  void add(const RkDiagnostics& other);

  // Library messages printed together at one line count as one problem.
  int errors() const;
  int warnings() const;
  // Whether a library message printed at the line holds the text (any message, for an empty text).
  bool hasLibraryMessageAt(const std::string& file, int line, const std::string& saying = "") const;
  // Every finding, by file and line, each ending in a line feed.
  void print(std::ostream& out) const;
  // "2 errors and 1 warning", "1 error", "no problem".
  std::string summary() const;

  // Collects what Rk::Print prints while it lives, at levels up to 4, as library messages; one printed
  // outside a document's replay belongs to fallbackFile as a whole.
  class Capture {
   public:
    Capture(RkDiagnostics& diagnostics, const std::string& fallbackFile);
    // Whether a message was printed outside a replay: a document refused whole, or a file not opened.
    bool refusal() const { return m_refusal; }

   private:
    static void receive(int level, const char* origin, const char* text, void* context);
    RkDiagnostics& m_diagnostics;
    std::string m_fallbackFile;
    bool m_refusal = false;
    Rk::Print::ThreadSink m_hold;
  };

 private:
  std::vector<Finding> m_findings;
  std::map<std::pair<std::string, int>, std::vector<std::size_t>> m_libraryAt;  // file and line -> findings
};
