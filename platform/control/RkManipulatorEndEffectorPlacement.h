#pragma once
// The placements of all end effectors of one manipulator, entry i for end effector i of the active set.
// Entries are plain transformations, so controllers compose them without unwrapping:
//   <manipulatorEndEffectorPlacement><offsetTransformations count="1"><element>
//   <translation>0 0 0.1</translation><orientation>1 0 0 0</orientation>
//   </element></offsetTransformations></manipulatorEndEffectorPlacement>
#include <utility>

#include "common/RkCoordinateSystemTransformation.h"
#include "control/RkControlTokens.h"
#include "xml/RkXmlCompoundType.h"
#include "xml/RkXmlConcreteClass.h"
#include "xml/RkXmlVectorType.h"

class RkManipulatorEndEffectorPlacement
    : public RkXmlConcreteClass<RkManipulatorEndEffectorPlacement, RkXmlCompoundType,
                                RkControl::RkManipulatorEndEffectorPlacementToken> {
 public:
  typedef RkXmlVectorType<RkCoordinateSystemTransformation> TransformationVector;

  // Refuses indices from here on: a corrupt index must not make the list claim gigabytes.
  static constexpr RkU32 kMaxEndEffectorCount = 4096;

  RkManipulatorEndEffectorPlacement() = default;

  const TransformationVector& offsetTransformations() const { return m_offsetTransformations; }
  void setOffsetTransformations(const TransformationVector& transformations) {
    m_offsetTransformations = transformations;
  }
  void setOffsetTransformations(TransformationVector&& transformations) {
    m_offsetTransformations = std::move(transformations);
  }
  // Sets entry index, first growing the list with identities when it is shorter; false for an index at or
  // beyond kMaxEndEffectorCount.
  RkBoolean setOffsetInRelative(RkU32 index, const RkCoordinateSystemTransformation& placement);

  // An empty placement list, for callers that must return one by reference when they have none.
  static const RkManipulatorEndEffectorPlacement& nullObject();

 protected:
  void registerComponents() override;

 private:
  TransformationVector m_offsetTransformations;
};
