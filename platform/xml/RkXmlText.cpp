#include "xml/RkXmlText.h"

#include <charconv>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>

namespace RkXmlText {
namespace {

bool isSpace(char c) {
  return c == ' ' || c == '\t' || c == '\n' || c == '\r';
}

// Length of the valid UTF-8 sequence starting at text[at], or 0 when it is not valid.
std::size_t utf8Length(std::string_view text, std::size_t at) {
  const unsigned char lead = static_cast<unsigned char>(text[at]);
  std::size_t length = 0;
  unsigned minimum = 0;
  unsigned code = 0;
  if (lead < 0x80) return 1;
  if ((lead & 0xE0) == 0xC0)
    length = 2, minimum = 0x80, code = lead & 0x1F;
  else if ((lead & 0xF0) == 0xE0)
    length = 3, minimum = 0x800, code = lead & 0x0F;
  else if ((lead & 0xF8) == 0xF0)
    length = 4, minimum = 0x10000, code = lead & 0x07;
  else
    return 0;
  if (at + length > text.size()) return 0;
  for (std::size_t i = 1; i < length; ++i) {
    const unsigned char next = static_cast<unsigned char>(text[at + i]);
    if ((next & 0xC0) != 0x80) return 0;
    code = (code << 6) | (next & 0x3F);
  }
  if (code < minimum || code > 0x10FFFF || (code >= 0xD800 && code <= 0xDFFF)) return 0;
  // Characters XML cannot carry.
  if (code == 0xFFFE || code == 0xFFFF) return 0;
  return length;
}

bool needsQuotes(std::string_view value) {
  if (value.empty()) return true;
  for (std::size_t at = 0; at < value.size();) {
    const unsigned char c = static_cast<unsigned char>(value[at]);
    if (c <= 0x20 || c == 0x7F || c == '"' || c == '\\') return true;
    const std::size_t length = utf8Length(value, at);
    if (length == 0) return true;
    at += length;
  }
  return false;
}

int hexDigit(char c) {
  if (c >= '0' && c <= '9') return c - '0';
  if (c >= 'a' && c <= 'f') return c - 'a' + 10;
  if (c >= 'A' && c <= 'F') return c - 'A' + 10;
  return -1;
}

}  // namespace

std::string_view trim(std::string_view text) {
  std::size_t begin = 0, end = text.size();
  while (begin < end && isSpace(text[begin])) ++begin;
  while (end > begin && isSpace(text[end - 1])) --end;
  return text.substr(begin, end - begin);
}

void format(RkReal value, std::string& out) {
  if (std::isnan(value)) {
    out += "nan";
    return;
  }
  if (std::isinf(value)) {
    out += value < 0 ? "-inf" : "inf";
    return;
  }
  char buffer[32];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
  out.append(buffer, result.ptr);
}

void format(RkU32 value, std::string& out) {
  char buffer[16];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
  out.append(buffer, result.ptr);
}

void format(int value, std::string& out) {
  char buffer[16];
  const auto result = std::to_chars(buffer, buffer + sizeof buffer, value);
  out.append(buffer, result.ptr);
}

void format(RkBoolean value, std::string& out) {
  out += value ? "true" : "false";
}

void format(const std::string& value, std::string& out) {
  if (!needsQuotes(value)) {
    out += value;
    return;
  }
  out += '"';
  for (std::size_t at = 0; at < value.size();) {
    const char c = value[at];
    const unsigned char byte = static_cast<unsigned char>(c);
    if (c == '"' || c == '\\') {
      out += '\\';
      out += c;
    } else if (c == '\n') {
      out += "\\n";
    } else if (c == '\t') {
      out += "\\t";
    } else if (c == '\r') {
      out += "\\r";
    } else if (byte < 0x20 || byte == 0x7F || (byte >= 0x80 && utf8Length(value, at) == 0)) {
      char escape[5];
      std::snprintf(escape, sizeof escape, "\\x%02X", byte);
      out += escape;
    } else {
      const std::size_t length = byte < 0x80 ? 1 : utf8Length(value, at);
      out.append(value, at, length);
      at += length;
      continue;
    }
    ++at;
  }
  out += '"';
}

bool parse(std::string_view text, RkReal& value) {
  text = trim(text);
  if (text.empty()) return false;
  if (text == "nan" || text == "-nan" || text == "NaN") {
    value = std::numeric_limits<RkReal>::quiet_NaN();
    return true;
  }
  if (text == "inf" || text == "INF" || text == "+inf") {
    value = std::numeric_limits<RkReal>::infinity();
    return true;
  }
  if (text == "-inf" || text == "-INF") {
    value = -std::numeric_limits<RkReal>::infinity();
    return true;
  }
  if (text.front() == '+') text.remove_prefix(1);
  RkReal parsed = 0.0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), parsed);
  if (result.ec != std::errc() || result.ptr != text.data() + text.size()) return false;
  value = parsed;
  return true;
}

bool parse(std::string_view text, RkU32& value) {
  text = trim(text);
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  RkU32 parsed = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), parsed);
  if (text.empty() || result.ec != std::errc() || result.ptr != text.data() + text.size()) return false;
  value = parsed;
  return true;
}

bool parse(std::string_view text, int& value) {
  text = trim(text);
  if (!text.empty() && text.front() == '+') text.remove_prefix(1);
  int parsed = 0;
  const auto result = std::from_chars(text.data(), text.data() + text.size(), parsed);
  if (text.empty() || result.ec != std::errc() || result.ptr != text.data() + text.size()) return false;
  value = parsed;
  return true;
}

bool parse(std::string_view text, RkBoolean& value) {
  text = trim(text);
  if (text == "true" || text == "1") {
    value = true;
    return true;
  }
  if (text == "false" || text == "0") {
    value = false;
    return true;
  }
  return false;
}

bool parse(std::string_view text, std::string& value) {
  text = trim(text);
  if (text.empty() || text.front() != '"') {
    value.assign(text);
    return true;
  }
  std::string parsed;
  std::size_t at = 1;
  while (at < text.size() && text[at] != '"') {
    char c = text[at++];
    if (c == '\\') {
      if (at >= text.size()) return false;
      const char escaped = text[at++];
      switch (escaped) {
        case 'n':
          c = '\n';
          break;
        case 't':
          c = '\t';
          break;
        case 'r':
          c = '\r';
          break;
        case '"':
        case '\\':
          c = escaped;
          break;
        case 'x': {
          if (at + 2 > text.size()) return false;
          const int high = hexDigit(text[at]), low = hexDigit(text[at + 1]);
          if (high < 0 || low < 0) return false;
          c = static_cast<char>(high * 16 + low);
          at += 2;
          break;
        }
        default:
          return false;
      }
    }
    parsed += c;
  }
  // The closing quote must end the text.
  if (at + 1 != text.size()) return false;
  value.swap(parsed);
  return true;
}

// Parses exactly count reals separated by white space.
bool parseReals(std::string_view text, RkReal* values, int count) {
  std::size_t at = 0;
  for (int i = 0; i < count; ++i) {
    while (at < text.size() && isSpace(text[at])) ++at;
    std::size_t end = at;
    while (end < text.size() && !isSpace(text[end])) ++end;
    if (end == at || !parse(text.substr(at, end - at), values[i])) return false;
    at = end;
  }
  return trim(text.substr(at)).empty();
}

const char* schemaType(const RkReal*) {
  return "rkReal";
}
const char* schemaType(const RkU32*) {
  return "xs:unsignedInt";
}
const char* schemaType(const int*) {
  return "xs:int";
}
const char* schemaType(const RkBoolean*) {
  return "xs:boolean";
}
const char* schemaType(const std::string*) {
  return "xs:string";
}

long leadingLong(std::string_view text) {
  // Plain digits, as written, read directly; anything else as strtol reads it.
  if (!text.empty() && text.size() <= 18) {
    long value = 0;
    std::size_t at = 0;
    while (at < text.size() && text[at] >= '0' && text[at] <= '9') value = value * 10 + (text[at++] - '0');
    if (at == text.size()) return value;
  }
  const std::string copy(text);
  return std::strtol(copy.c_str(), nullptr, 10);
}

}  // namespace RkXmlText
