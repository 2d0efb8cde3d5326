# Writes OUTPUT, a C++ table of what each class is in one line, taken from the headers in HEADERS (a
# |-separated list): a class's description is the first sentence of the comment that opens its header, up
# to the XML example it introduces. Run in script mode at build time, so the text is written only once.
#   cmake -DHEADERS=a.h|b.h -DOUTPUT=RkClassDescriptions.cpp -P RkClassDescriptions.cmake
string(REPLACE "|" ";" headers "${HEADERS}")
set(entries "")
foreach(header IN LISTS headers)
  get_filename_component(class "${header}" NAME_WE)
  file(READ "${header}" source)
  # Only a header that declares the class it is named after.
  if(NOT source MATCHES "\nclass ${class}[\n :]")
    continue()
  endif()
  # One list item a line; semicolons and brackets would split or join lines, so placeholders stand in.
  string(REPLACE ";" "@RK_SEMICOLON@" source "${source}")
  string(REPLACE "[" "@RK_OPEN@" source "${source}")
  string(REPLACE "]" "@RK_CLOSE@" source "${source}")
  string(REPLACE "\n" ";" lines "${source}")
  set(text "")
  set(started FALSE)
  foreach(line IN LISTS lines)
    if(line MATCHES "^#pragma once")
      continue()
    endif()
    # The comment's prose ends at its first example line (indented XML) or at the comment's end.
    if(NOT line MATCHES "^//" OR line MATCHES "^//   ")
      break()
    endif()
    string(REGEX REPLACE "^// ?" "" line "${line}")
    string(APPEND text " ${line}")
    set(started TRUE)
  endforeach()
  if(NOT started)
    continue()
  endif()
  string(STRIP "${text}" text)
  # The first sentence: up to a full stop followed by a blank, or the whole prose.
  string(REGEX MATCH "^([^.]|\\.[^ ])*\\." sentence "${text}")
  if(sentence STREQUAL "")
    set(sentence "${text}")
  endif()
  string(REGEX REPLACE "[.:]$" "" sentence "${sentence}")
  string(REPLACE "@RK_SEMICOLON@" ";" sentence "${sentence}")
  string(REPLACE "@RK_OPEN@" "[" sentence "${sentence}")
  string(REPLACE "@RK_CLOSE@" "]" sentence "${sentence}")
  string(REPLACE "\\" "\\\\" sentence "${sentence}")
  string(REPLACE "\"" "\\\"" sentence "${sentence}")
  string(APPEND entries "    {\"${class}\", \"${sentence}\"},\n")
endforeach()
set(content "// Generated from the headers' opening comments by cmake/RkClassDescriptions.cmake; do not edit.
#include \"tools/rkmanip/RkClassDescriptions.h\"

const std::map<std::string, std::string>& RkClassDescriptions::byClassName() {
  static const std::map<std::string, std::string> table = {
${entries}  };
  return table;
}
")
file(WRITE "${OUTPUT}" "${content}")
