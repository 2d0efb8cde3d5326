# Writes the bytes of INPUT into OUTPUT as a C++ array NAME and its length NAME_size, so that the tool
# carries the file inside it. Run with cmake -DINPUT=... -DOUTPUT=... -DNAME=... -P EmbedText.cmake.
file(READ "${INPUT}" content HEX)
string(LENGTH "${content}" digits)
math(EXPR size "${digits} / 2")
string(REGEX REPLACE "([0-9a-f][0-9a-f])" "0x\\1," bytes "${content}")
string(REGEX REPLACE "(0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,0x..,)"
       "\\1\n" bytes "${bytes}")
file(WRITE "${OUTPUT}.new" "// Generated from ${INPUT}; do not edit.\n#include <cstddef>\n"
     "extern const unsigned char ${NAME}[] = {\n${bytes}0x00};\nextern const std::size_t ${NAME}_size = ${size};\n")
file(COPY_FILE "${OUTPUT}.new" "${OUTPUT}" ONLY_IF_DIFFERENT)
file(REMOVE "${OUTPUT}.new")
