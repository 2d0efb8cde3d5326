#include "control/RkControlTokens.h"

#include "xml/RkXmlTokens.h"

namespace RkControl {

// Built before the other initialisers of the libraries that use them.
#define RK_TOKEN(name, localName) \
  __attribute__((init_priority(101))) const RkToken name = RkXml::qualifiedToken(localName);
#define RK_PLAIN_TOKEN(name, localName) __attribute__((init_priority(101))) const RkToken name(localName);
#include "control/RkControlTokenList.h"
#undef RK_TOKEN
#undef RK_PLAIN_TOKEN

}  // namespace RkControl
