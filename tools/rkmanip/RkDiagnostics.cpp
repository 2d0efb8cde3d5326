#include "tools/rkmanip/RkDiagnostics.h"

#include <algorithm>

#include "foundation/RkPrint.h"
#include "xml/RkXmlReader.h"

void RkDiagnostics::error(const std::string& file, int line, const std::string& text) {
  m_findings.push_back({Severity::Error, file, line, text, false});
}

void RkDiagnostics::warning(const std::string& file, int line, const std::string& text) {
  m_findings.push_back({Severity::Warning, file, line, text, false});
}

void RkDiagnostics::library(const std::string& file, int line, const std::string& text) {
  m_libraryAt[{file, line}].push_back(m_findings.size());
  m_findings.push_back({Severity::Error, file, line, text, true});
}

void RkDiagnostics::add(const RkDiagnostics& other) {
  for (const Finding& finding : other.m_findings) {
    if (finding.fromLibrary) m_libraryAt[{finding.file, finding.line}].push_back(m_findings.size());
    m_findings.push_back(finding);
  }
}

int RkDiagnostics::errors() const {
  int count = 0;
  const Finding* previous = nullptr;
  for (const Finding& finding : m_findings) {
    const bool sameMessage = finding.fromLibrary && previous && previous->fromLibrary &&
                             previous->file == finding.file && previous->line == finding.line;
    if (finding.severity == Severity::Error && !sameMessage) ++count;
    previous = &finding;
  }
  return count;
}

int RkDiagnostics::warnings() const {
  return static_cast<int>(std::count_if(m_findings.begin(), m_findings.end(),
                                        [](const Finding& f) { return f.severity == Severity::Warning; }));
}

bool RkDiagnostics::hasLibraryMessageAt(const std::string& file, int line, const std::string& saying) const {
  const auto found = m_libraryAt.find({file, line});
  if (found == m_libraryAt.end()) return false;
  return std::any_of(found->second.begin(), found->second.end(), [&](std::size_t index) {
    return m_findings[index].text.find(saying) != std::string::npos;
  });
}

void RkDiagnostics::print(std::ostream& out) const {
  // Files in the order they first appear, lines in order within each; equal lines keep their order.
  std::vector<std::string> files;
  for (const Finding& finding : m_findings)
    if (std::find(files.begin(), files.end(), finding.file) == files.end()) files.push_back(finding.file);
  std::vector<const Finding*> sorted;
  for (const Finding& finding : m_findings) sorted.push_back(&finding);
  std::stable_sort(sorted.begin(), sorted.end(), [&](const Finding* a, const Finding* b) {
    const auto fileA = std::find(files.begin(), files.end(), a->file);
    const auto fileB = std::find(files.begin(), files.end(), b->file);
    return fileA != fileB ? fileA < fileB : a->line < b->line;
  });
  for (const Finding* finding : sorted) {
    const std::string place =
        finding->file + (finding->line > 0 ? ":" + std::to_string(finding->line) : "") + ":";
    std::string text = finding->text;
    if (finding->fromLibrary) {
      // A message that names its file and line already is shown as it is.
      if (text.find(place) == std::string::npos) text = place + " " + text;
    } else {
      text = place + (finding->severity == Severity::Error ? " error: " : " warning: ") + text;
    }
    out << text;
    if (text.empty() || text.back() != '\n') out << '\n';
  }
}

std::string RkDiagnostics::summary() const {
  const int e = errors(), w = warnings();
  if (e == 0 && w == 0) return "no problem";
  std::string text;
  if (e > 0) text = std::to_string(e) + (e == 1 ? " error" : " errors");
  if (w > 0) text += (text.empty() ? "" : " and ") + std::to_string(w) + (w == 1 ? " warning" : " warnings");
  return text;
}

RkDiagnostics::Capture::Capture(RkDiagnostics& diagnostics, const std::string& fallbackFile)
    : m_diagnostics(diagnostics), m_fallbackFile(fallbackFile), m_hold(&Capture::receive, this) {}

void RkDiagnostics::Capture::receive(int level, const char*, const char* text, void* context) {
  if (level > 4) return;
  Capture* capture = static_cast<Capture*>(context);
  const int line = RkXmlReader::replayLine();
  if (line > 0) {
    capture->m_diagnostics.library(RkXmlReader::replayFileName(), line, text);
  } else {
    capture->m_refusal = true;
    capture->m_diagnostics.library(capture->m_fallbackFile, 0, text);
  }
}
