#pragma once
// Named real values, such as the parameter a parametric frame publishes for its offsets:
//   <standardManipulationFrame>...<dataMap><element><key>height</key><value>0.25</value></element></dataMap>
//   </standardManipulationFrame>
#include <string>

#include "xml/RkXmlBasicType.h"
#include "xml/RkXmlConcreteClass.h"
#include "xml/RkXmlMapType.h"

namespace RkFoundCommon {
extern const RkToken RkDataMapToken;
}

class RkDataMap
    : public RkXmlConcreteClass<RkDataMap, RkXmlMapType<RkXmlBasicType<std::string>, RkXmlBasicType<RkReal>>,
                                RkFoundCommon::RkDataMapToken> {
 public:
  typedef RkXmlMapType<RkXmlBasicType<std::string>, RkXmlBasicType<RkReal>> Base;
  using Base::lookup;

  // Writes the value of key into value and returns true, or returns false when key is absent. Real-time safe.
  RkBoolean lookup(const std::string& key, RkReal& value) const;
  // Sets the value of key; allocates only when key is new.
  void setValue(const std::string& key, RkReal value);

  bool operator==(const RkDataMap& other) const { return Base::operator==(other); }
  bool operator!=(const RkDataMap& other) const { return !(*this == other); }
};
