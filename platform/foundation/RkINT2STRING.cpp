#include "foundation/RkINT2STRING.h"

std::string RkINT2STRING(long long value) {
  return std::to_string(value);
}
