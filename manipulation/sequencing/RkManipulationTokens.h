#pragma once
// The XML vocabulary of the library: one token per element name, in the toolkit namespace, built once at
// load time before any other initialiser of the library runs.
#include <string>

#include "sequencing/RkManipulationVersion.h"
#include "xml/RkToken.h"

namespace RkManipulation {

// The namespace token; every qualified token is its text followed by a local name.
extern const RkToken ns;

#define RK_TOKEN(name, localName) extern const RkToken name;
#define RK_PLAIN_TOKEN(name, localName) extern const RkToken name;
#include "sequencing/RkManipulationTokenList.h"
#undef RK_TOKEN
#undef RK_PLAIN_TOKEN

}  // namespace RkManipulation
