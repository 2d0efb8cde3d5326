#pragma once
// rkmanip validate: reads a document of the vocabulary, reports every problem with its line, and checks that
// what was read writes and reads back to an equal object.
#include <ostream>
#include <string>

namespace RkDocumentValidator {
// 0 when the document is clean and round-trips, 1 when it has problems, 2 when it cannot be read at all.
int validate(const std::string& path, std::ostream& out);
}  // namespace RkDocumentValidator
