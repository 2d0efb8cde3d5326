#pragma once
// The XML vocabulary of the manipulator part: one token per element name, in the toolkit namespace, built at
// load time before the other initialisers of the libraries that use them.
#include "xml/RkToken.h"

namespace RkManipulator {

#define RK_TOKEN(name, localName) extern const RkToken name;
#define RK_PLAIN_TOKEN(name, localName) extern const RkToken name;
#include "manipulator/RkManipulatorTokenList.h"
#undef RK_TOKEN
#undef RK_PLAIN_TOKEN

}  // namespace RkManipulator
