#include "sequencing/RkManipulationTokens.h"

#include "xml/RkXmlTokens.h"

namespace RkManipulation {
namespace {

// Copies the namespace token and appends the local name.
RkToken makeToken(const char* localName) {
  RkToken token(ns);
  token += localName;
  return token;
}

}  // namespace

// Every token of the library is built in this one unit, the namespace token first; init_priority puts them
// before the library's other initialisers (static null objects, version strings).
__attribute__((init_priority(101))) const RkToken ns(RkXml::RkNamespaceUri);

#define RK_TOKEN(name, localName) \
  __attribute__((init_priority(101))) const RkToken name = makeToken(localName);
#define RK_PLAIN_TOKEN(name, localName) __attribute__((init_priority(101))) const RkToken name(localName);
#include "sequencing/RkManipulationTokenList.h"
#undef RK_TOKEN
#undef RK_PLAIN_TOKEN

}  // namespace RkManipulation
