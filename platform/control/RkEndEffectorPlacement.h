#pragma once
// Where one end effector is, or is to be: its frame in the frame the placement is given in.
//   <endEffectorPlacement><placement><translation>0.4 0 0.3</translation>
//   <orientation>1 0 0 0</orientation></placement></endEffectorPlacement>
#include "control/RkControlTokens.h"
#include "foundation/RkCoordinateSystemTransformation.h"
#include "xml/RkXmlCompoundType.h"
#include "xml/RkXmlConcreteClass.h"

class RkEndEffectorPlacement : public RkXmlConcreteClass<RkEndEffectorPlacement, RkXmlCompoundType,
                                                         RkControl::RkEndEffectorPlacementToken> {
 public:
  // The identity placement.
  RkEndEffectorPlacement() = default;
  explicit RkEndEffectorPlacement(const RkCoordinateSystemTransformation& placement)
      : m_placement(placement) {}

  const RkCoordinateSystemTransformation& placement() const { return m_placement; }
  void setPlacement(const RkCoordinateSystemTransformation& placement) { m_placement = placement; }

  // The placement a fraction s of the way from from to to: the position moves on the straight line and the
  // orientation on the shorter arc. Outside [0, 1] both extend at the same rate: the position along the
  // line, the orientation turning on about the same axis. A non-finite s gives from, with one printed line.
  static RkEndEffectorPlacement interpolation(const RkEndEffectorPlacement& from,
                                              const RkEndEffectorPlacement& to, RkReal s);

 protected:
  void registerComponents() override;

 private:
  RkCoordinateSystemTransformation m_placement;
};
