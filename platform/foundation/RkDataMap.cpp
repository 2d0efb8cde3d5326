#include "foundation/RkDataMap.h"

namespace RkFoundCommon {
__attribute__((init_priority(101))) const RkToken RkDataMapToken = RkXml::qualifiedToken("dataMap");
}

RkBoolean RkDataMap::lookup(const std::string& key, RkReal& value) const {
  const RkXmlBasicType<RkReal>* found = find(key);
  if (!found) return false;
  value = found->value();
  return true;
}

void RkDataMap::setValue(const std::string& key, RkReal value) {
  auto& entries = mapContainer();
  const auto found = entries.find(key);
  if (found != entries.end()) {
    found->second = value;
  } else {
    entries.emplace(key, value);
  }
}
