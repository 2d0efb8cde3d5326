#pragma once
// Helpers of the reader tests: the one-line refusal check and a private temporary directory.
#include <gtest/gtest.h>
#include <stdlib.h>

#include <cctype>
#include <filesystem>
#include <fstream>
#include <string>

#include "foundation/RkPrint.h"

// Checks the one line a refused document prints: level 4, "RkXmlReader::read error: NAME:LINE: REASON\n".
// A line of 0 accepts any positive line, -1 also line 0 (a file refused before it is parsed); the reason
// must contain reasonPart.
inline ::testing::AssertionResult refusedOnce(const Rk::Print::Capture& capture, const std::string& name,
                                              int line = 0, const std::string& reasonPart = "") {
  const auto& lines = capture.lines();
  if (lines.size() != 1)
    return ::testing::AssertionFailure() << lines.size() << " lines:\n" << capture.text();
  const std::string& text = lines[0].text;
  const std::string prefix = "RkXmlReader::read error: " + name + ":";
  if (lines[0].level != 4) return ::testing::AssertionFailure() << "level " << lines[0].level << ": " << text;
  if (text.compare(0, prefix.size(), prefix) != 0 || text.back() != '\n' ||
      text.find('\n') != text.size() - 1) {
    return ::testing::AssertionFailure() << "not one line naming " << name << ": " << text;
  }
  std::size_t end = prefix.size();
  while (end < text.size() && std::isdigit(static_cast<unsigned char>(text[end]))) ++end;
  const int named = end > prefix.size() ? std::stoi(text.substr(prefix.size(), end - prefix.size())) : -1;
  if (named < 0 || (line >= 0 && named <= 0) || (line > 0 && named != line)) {
    return ::testing::AssertionFailure() << "expected line " << line << ": " << text;
  }
  const std::string reason = text.substr(end);
  if (reason.size() < 4 || reason.compare(0, 2, ": ") != 0 || reason.find(reasonPart) == std::string::npos) {
    return ::testing::AssertionFailure() << "expected a reason with \"" << reasonPart << "\": " << text;
  }
  return ::testing::AssertionSuccess();
}

// A private directory under the system's temporary directory, removed with everything in it.
class TemporaryDirectory {
 public:
  TemporaryDirectory() {
    std::string pattern = (std::filesystem::temp_directory_path() / "rkXmlReaderXXXXXX").string();
    if (mkdtemp(pattern.data())) m_path = pattern;
  }
  ~TemporaryDirectory() {
    std::error_code ignored;
    if (!m_path.empty()) std::filesystem::remove_all(m_path, ignored);
  }
  TemporaryDirectory(const TemporaryDirectory&) = delete;
  TemporaryDirectory& operator=(const TemporaryDirectory&) = delete;

  const std::string& path() const { return m_path; }
  std::string file(const std::string& name, const std::string& content) const {
    const std::string path = m_path + "/" + name;
    std::ofstream(path, std::ios::binary) << content;
    return path;
  }

 private:
  std::string m_path;
};
