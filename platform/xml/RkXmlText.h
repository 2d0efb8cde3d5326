#pragma once
// The text forms of basic values. Reals use the shortest text that reads back to the same bits ("nan",
// "inf", "-inf" included); booleans are "true"/"false" (and read "1"/"0"); a string that is empty or
// holds white space, a quote, a backslash, a control character or invalid UTF-8 is quoted with escapes.
#include <string>
#include <string_view>

#include "foundation/RkTypes.h"

namespace RkXmlText {

void format(RkReal value, std::string& out);
void format(RkU32 value, std::string& out);
void format(int value, std::string& out);
void format(RkBoolean value, std::string& out);
void format(const std::string& value, std::string& out);

// Each parse takes the whole text (surrounding white space allowed) and leaves value unchanged on failure.
bool parse(std::string_view text, RkReal& value);
bool parse(std::string_view text, RkU32& value);
bool parse(std::string_view text, int& value);
bool parse(std::string_view text, RkBoolean& value);
bool parse(std::string_view text, std::string& value);

// Parses exactly count reals separated by white space (vectors, quaternions).
bool parseReals(std::string_view text, RkReal* values, int count);

// The leading whole number of text as std::strtol reads it in base 10 (white space, a sign, digits up to the
// first other character; 0 when there are none; clamped to the range of long), without a copy of the text.
long leadingLong(std::string_view text);

// The text without leading and trailing white space.
std::string_view trim(std::string_view text);

// The name of the XML Schema simple type of each basic value, as RkXmlSchema declares them.
const char* schemaType(const RkReal*);
const char* schemaType(const RkU32*);
const char* schemaType(const int*);
const char* schemaType(const RkBoolean*);
const char* schemaType(const std::string*);

}  // namespace RkXmlText
