#pragma once
// What each class of the vocabulary is, in one line, by class name: the first sentence of its header's
// opening comment, gathered at build time (cmake/RkClassDescriptions.cmake). The schema's documentation.
#include <map>
#include <string>

namespace RkClassDescriptions {
const std::map<std::string, std::string>& byClassName();
}  // namespace RkClassDescriptions
